// SPDX-License-Identifier: MIT
#include "platform/desktop/CompiledHelp.h"

// Stands in for CompiledHelp.cpp where the library that reads help files is not there.
namespace kestrin::platform::desktop {

struct CompiledHelp::Archive {};

CompiledHelp::CompiledHelp(const std::filesystem::path&)
    : m_problem(
          "This program was built without the part that reads its help file. The same pages are in the folder "
          "assets/help of its source and open in any web browser.") {}

const char* CompiledHelp::Library() { return ""; }

CompiledHelp::~CompiledHelp() = default;

std::optional<std::string> CompiledHelp::Page(const std::string&) const { return std::nullopt; }

std::optional<std::string> CompiledHelp::PlaceOf(std::uint32_t) const { return std::nullopt; }

std::vector<ui::help::HelpEntry> CompiledHelp::Contents() const { return {}; }

std::vector<std::string> CompiledHelp::Pages() const { return {}; }

}  // namespace kestrin::platform::desktop
