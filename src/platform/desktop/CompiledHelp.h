// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/help/HelpContextTable.h"
#include "ui/help/HelpSource.h"

namespace kestrin::platform::desktop {

/// The help file "kestrinusb.chm": pages, contents and context numbers, read by chmlib. Where the program was built
/// without that library, every file is a problem that says so.
///
/// A file that does not bear its seal (ui/help/HelpSeal.h) is reported as damaged and not read any further.
class CompiledHelp : public ui::help::HelpSource {
 public:
  /// The name of the library that reads it, which does not tell its version; "" where this build has none.
  [[nodiscard]] static const char* Library();
  static constexpr const char* kFileName = "kestrinusb.chm";

  /// Opens the file; what is wrong with it is in `Problem`.
  explicit CompiledHelp(const std::filesystem::path& file);
  ~CompiledHelp() override;
  CompiledHelp(const CompiledHelp&) = delete;
  CompiledHelp& operator=(const CompiledHelp&) = delete;

  [[nodiscard]] std::string Problem() const override { return m_problem; }
  [[nodiscard]] std::optional<std::string> Page(const std::string& path) const override;
  [[nodiscard]] std::optional<std::string> PlaceOf(std::uint32_t context) const override;
  [[nodiscard]] std::vector<ui::help::HelpEntry> Contents() const override;
  [[nodiscard]] std::vector<std::string> Pages() const override;

 private:
  struct Archive;

  std::string m_problem;
  std::unique_ptr<Archive> m_archive;
  ui::help::HelpContextTable m_contexts;
};

}  // namespace kestrin::platform::desktop
