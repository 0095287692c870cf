// SPDX-License-Identifier: MIT
#include "platform/net/AnswerHead.h"

#include <algorithm>
#include <charconv>

#include "core/base/Text.h"

namespace kestrin::platform::net {

namespace {

constexpr std::size_t kLongestHead = 65536;

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

}  // namespace

bool AnswerHead::Add(std::string_view line) {
  m_size += line.size();
  if (m_size > kLongestHead) return false;
  // Behind a body that comes in pieces there may be more headers; they are none of the head.
  if (m_complete) return true;
  line = Trimmed(line);
  constexpr std::string_view kVersion = "HTTP/";
  if (line.starts_with(kVersion)) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string_view code = Trimmed(line.substr(blank));
    m_version = line.substr(0, blank);
    m_status = 0;
    std::from_chars(code.data(), code.data() + code.size(), m_status);
    m_values.clear();
  } else if (line.empty()) {
    m_complete = m_status == 101 || m_status < 100 || m_status > 199;
  } else if (const std::size_t colon = line.find(':'); colon != line.npos) {
    m_values.emplace_back(Trimmed(line.substr(0, colon)), Trimmed(line.substr(colon + 1)));
  }
  return true;
}

std::string AnswerHead::Value(std::string_view name) const {
  for (const auto& [header, value] : m_values)
    if (core::base::EqualsIgnoringCase(header, name)) return value;
  return "";
}

std::optional<std::int64_t> AnswerHead::Length() const {
  const std::string text = Value("Content-Length");
  std::int64_t length = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, length);
  if (error != std::errc{} || stop != end || length < 0) return std::nullopt;
  return length;
}

bool AnswerHead::IsSound() const {
  constexpr std::string_view kLength = "Content-Length";
  const std::string length = Value(kLength);
  const bool oneLength = std::all_of(m_values.begin(), m_values.end(), [&](const auto& value) {
    return !core::base::EqualsIgnoringCase(value.first, kLength) || value.second == length;
  });
  const std::string coding = Value("Transfer-Encoding");
  return m_status >= 200 && m_status <= 299 && oneLength &&
         (coding.empty() || core::base::EqualsIgnoringCase(coding, "chunked"));
}

bool AnswerHead::AnnouncesClose() const {
  const std::string connection = Value("Connection");
  return core::base::EqualsIgnoringCase(connection, "close") ||
         (m_version == "HTTP/1.0" && !core::base::EqualsIgnoringCase(connection, "keep-alive"));
}

}  // namespace kestrin::platform::net
