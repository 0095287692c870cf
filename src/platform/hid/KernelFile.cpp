// SPDX-License-Identifier: MIT
#include "platform/hid/KernelFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace kestrin::platform::hid {

namespace {

/// Neither a descriptor nor a page of /sys is longer.
constexpr std::size_t kLongestFile = 4096;

/// The bytes of the UTF-8 character at the front of `text`, 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xC2 && first <= 0xDF   ? 2
                             : (first & 0xF0) == 0xE0         ? 3
                             : first >= 0xF0 && first <= 0xF4 ? 4
                                                              : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  // Too long for what they say, halves of pairs, and beyond the last character.
  const bool isNone = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F) ||
                      (first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F);
  return isNone ? 0 : length;
}

}  // namespace

std::optional<std::string> ReadKernelFile(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return std::nullopt;
  std::string content;
  std::array<char, kLongestFile> block{};
  ssize_t count = 0;
  do {
    count = ::read(file, block.data(), block.size());
    if (count > 0) content.append(block.data(), static_cast<std::size_t>(count));
  } while ((count > 0 && content.size() <= kLongestFile) || (count < 0 && errno == EINTR));
  ::close(file);
  if (count != 0) return std::nullopt;
  return content;
}

std::string ReadKernelLine(const std::filesystem::path& path) {
  std::string text = ReadKernelFile(path).value_or("");
  if (text.ends_with('\n')) text.pop_back();
  return Utf8Of(text);
}

std::string Utf8Of(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    result += length == 0 ? "\xEF\xBF\xBD" : text.substr(0, length);
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return result;
}

}  // namespace kestrin::platform::hid
