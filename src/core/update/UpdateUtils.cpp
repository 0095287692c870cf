// SPDX-License-Identifier: MIT
#include "update/UpdateUtils.h"

#include "base/PathText.h"
#include "base/Text.h"
#include "update/FontFiles.h"
#include "update/FontStore.h"
#include "update/UpdateAnswer.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSoundEnding = ".lsu";

std::string ConfigurationName(const std::string& item) { return item + FontFiles::kConfigurationEnding; }

}  // namespace

fs::path UpdateUtils::ConfigurationOf(const std::string& item) const {
  return m_store.FolderOf(item) / base::PathOf(ConfigurationName(item));
}

std::vector<std::string> UpdateUtils::SliceText(std::string_view text) {
  if (text.empty()) return {};
  const std::vector<std::string_view> pieces = base::Split(text, base::kLineEnd);
  return {pieces.begin(), pieces.end()};
}

Association UpdateUtils::ExtractPair(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == line.npos || colon == 0) return {};
  return {std::string(line.substr(0, colon)), std::string(line.substr(colon + 1))};
}

bool UpdateUtils::NamesSound(std::string_view line) {
  for (std::size_t at = 0; at + kSoundEnding.size() <= line.size(); ++at)
    if (base::EqualsIgnoringCase(line.substr(at, kSoundEnding.size()), kSoundEnding)) return true;
  return false;
}

bool UpdateUtils::FontExists(const std::string& item) const { return m_store.Has(item); }

bool UpdateUtils::FontExistsAndCompleted(const std::string& item) const {
  return FontExists(item) && m_store.Has(item, FontFiles::kCompleteMarker);
}

base::Result<> UpdateUtils::CreateFont(const std::string& item) const { return m_store.MakeFolder(item); }

base::Result<> UpdateUtils::CompleteFont(const std::string& item) const {
  return m_store.Write(item, FontFiles::kCompleteMarker, "");
}

base::Result<> UpdateUtils::WriteDescriptor(const std::string& item, std::span<const std::string> lines) const {
  const std::string folder = base::TextOf(m_store.FolderOf(item) / "");
  std::string descriptor;
  std::string configuration;
  for (const std::string& line : UpdateAnswer::Payload(lines)) {
    descriptor.append(line).append(base::kLineEnd);
    if (NamesSound(line)) configuration += folder;
    configuration.append(line).append(base::kLineEnd);
  }
  base::Result<> written = m_store.Write(item, FontFiles::kDescriptor, descriptor);
  return written ? m_store.Write(item, ConfigurationName(item), configuration) : written;
}

bool UpdateUtils::FontItemExists(const std::string& item, const std::string& fileName) const {
  return m_store.Has(item, fileName);
}

}  // namespace kestrin::core::update
