// SPDX-License-Identifier: MIT
#include "update/UpdateAnswer.h"

#include <algorithm>

#include "base/Text.h"
#include "update/UpdateUtils.h"

namespace kestrin::core::update {

namespace {

constexpr const char* kEmptyAnswer = "Update failed! Connection error. Please try again later.";
constexpr const char* kRefused = "Update failed! The server refused the request. Please try again later.";
constexpr const char* kOneLine = "Error : 0001 Update failed! Please try again later.";
constexpr const char* kNoVerdict = "Error : 0002 Update failed! Please try again later.";
constexpr const char* kOldClient = "Update stopped. Please install a new version of this app.";

/// How many lines UpdateUtils::SliceText() would give.
std::size_t CountLines(std::string_view text) {
  if (text.empty()) return 0;
  std::size_t lines = 1;
  for (std::size_t at = text.find(base::kLineEnd); at != text.npos;
       at = text.find(base::kLineEnd, at + base::kLineEnd.size()))
    ++lines;
  return lines;
}

}  // namespace

std::optional<UpdateAnswer::Lines> UpdateAnswer::Read(std::string_view text) {
  // Far more lines than any font or catalogue has: millions of empty ones would take minutes and all memory.
  if (CountLines(text) > kMostLines) return std::nullopt;
  return UpdateUtils::SliceText(text);
}

std::string UpdateAnswer::Warning(std::span<const std::string> lines) {
  if (lines.empty()) return kEmptyAnswer;
  if (UpdateUtils::ExtractPair(lines[0]) != Association{"status", "OK"}) return kRefused;
  if (lines.size() == 1) return kOneLine;
  const Association verdict = UpdateUtils::ExtractPair(lines[1]);
  if (verdict.Name != "clientv") return kNoVerdict;
  if (verdict.Value != "1") return kOldClient;
  return "";
}

std::span<const std::string> UpdateAnswer::Payload(std::span<const std::string> lines) {
  return lines.subspan(std::min(kFirstPayloadLine, lines.size()));
}

std::span<const std::string> UpdateAnswer::Items(std::span<const std::string> lines) {
  const std::span<const std::string> items = Payload(lines);
  return items.size() > 1 ? items : std::span<const std::string>{};
}

}  // namespace kestrin::core::update
