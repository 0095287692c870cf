// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kestrin::platform::hid {

/// The content of a file of the kernel's; nothing when it cannot be read to its end. (The standard library's streams
/// throw when a device goes while they read.)
[[nodiscard]] std::optional<std::string> ReadKernelFile(const std::filesystem::path& path);

/// The one line that such a file holds, as UTF-8 and without its end; "" when it cannot be read.
[[nodiscard]] std::string ReadKernelLine(const std::filesystem::path& path);

/// A device may call itself anything: what is no UTF-8 becomes the character that stands for such.
[[nodiscard]] std::string Utf8Of(std::string_view text);

}  // namespace kestrin::platform::hid
