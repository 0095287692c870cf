// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <vector>

namespace kestrin::platform::desktop {

/// The folder with what comes with the programs: pictures, help, LED catalogue and examples. Both programs find it by
/// this one rule, given the folder that they stand in: that folder where the data lies beside them (a build, Windows, a
/// copy that is carried around), else the folder for such data of the place that they were installed into, such as
/// "/usr/share/kestrin" for "/usr/bin". A tree that is moved as a whole keeps working. Where the data is nowhere it is
/// the folder of the programs, empty when that is unknown.
[[nodiscard]] std::filesystem::path ProgramFolderOf(const std::filesystem::path& executableFolder);

/// The folders in which a system keeps the programs of everybody, each with its data beside it: the one that Windows
/// names in `ProgramFiles` and `ProgramW6432`; none on other systems, which keep data apart.
[[nodiscard]] std::vector<std::filesystem::path> FoldersOfEverybodysPrograms();

/// The folders into which the program may write what it fetches and makes, the best one first: the program folder,
/// then what is this person's own. A program folder apart from the programs, or with them somewhere in `everybodys`,
/// belongs to whoever installed them, and what they did not put there would stay behind when they remove it; it is left
/// out, whoever the person is. Never empty; `dataFolder` may be, where the system names none.
[[nodiscard]] std::vector<std::filesystem::path> FoldersToWriteIn(
    const std::filesystem::path& programFolder, const std::filesystem::path& executableFolder,
    const std::filesystem::path& dataFolder,
    const std::vector<std::filesystem::path>& everybodys = FoldersOfEverybodysPrograms());

}  // namespace kestrin::platform::desktop
