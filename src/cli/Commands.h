// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "cli/Command.h"

namespace kestrin::cli {

/// The commands, in the order in which the help lists them.
[[nodiscard]] std::vector<std::unique_ptr<Command>> AllCommands();

/// What the help says about a group of commands ("sound", "config", ...).
[[nodiscard]] std::string_view GroupDescription(std::string_view group);

// Each is defined in the file of its command, commands/<Name>Command.cpp.
[[nodiscard]] std::unique_ptr<Command> MakeDevicesCommand();
[[nodiscard]] std::unique_ptr<Command> MakeInfoCommand();
[[nodiscard]] std::unique_ptr<Command> MakeDoctorCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSoundInfoCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSoundCodeCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSoundWavCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSoundImportCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigMakeCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigShowCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigMapCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigLevelCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigDiffCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigPackCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConfigUnpackCommand();
[[nodiscard]] std::unique_ptr<Command> MakeDownloadCommand();
[[nodiscard]] std::unique_ptr<Command> MakeVerifyCommand();
[[nodiscard]] std::unique_ptr<Command> MakeBoardCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSaberPlayCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSaberRenderCommand();
[[nodiscard]] std::unique_ptr<Command> MakeAccelGetCommand();
[[nodiscard]] std::unique_ptr<Command> MakeAccelSetCommand();
[[nodiscard]] std::unique_ptr<Command> MakeAccelDefaultsCommand();
[[nodiscard]] std::unique_ptr<Command> MakeAccelRestoreCommand();
[[nodiscard]] std::unique_ptr<Command> MakeAccelWatchCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedTypesCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedStatusCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedCountsCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedConfigCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedPreviewCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedSettingsCommand();
[[nodiscard]] std::unique_ptr<Command> MakeLedSendCommand();
[[nodiscard]] std::unique_ptr<Command> MakeFontsUpdateCommand();
[[nodiscard]] std::unique_ptr<Command> MakeFontsListCommand();
[[nodiscard]] std::unique_ptr<Command> MakeFontsServeCommand();

}  // namespace kestrin::cli
