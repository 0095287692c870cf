// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "ui/kit/SpecialFolders.h"

namespace kestrin::ui::window {

/// The desktop's folders, with the folder of the fonts, and that of the examples where it is there, as more places
/// where browsing for sounds can start.
class FoldersWithFonts final : public kit::SpecialFolders {
  Q_DECLARE_TR_FUNCTIONS(kestrin::ui::window::FoldersWithFonts)

 public:
  /// `folders` must outlive this object.
  FoldersWithFonts(const kit::SpecialFolders& folders, std::filesystem::path fonts, std::filesystem::path examples = {})
      : m_folders(folders), m_fonts(std::move(fonts)), m_examples(std::move(examples)) {}

  [[nodiscard]] std::filesystem::path Desktop() const override { return m_folders.Desktop(); }
  [[nodiscard]] std::filesystem::path Documents() const override { return m_folders.Documents(); }
  [[nodiscard]] std::vector<kit::Drive> Drives() const override {
    std::vector<kit::Drive> drives = m_folders.Drives();
    drives.push_back({tr("Sound fonts").toStdString(), m_fonts});
    if (std::error_code ignored; std::filesystem::is_directory(m_examples, ignored))
      drives.push_back({tr("Examples").toStdString(), m_examples});
    return drives;
  }

 private:
  const kit::SpecialFolders& m_folders;
  std::filesystem::path m_fonts;
  std::filesystem::path m_examples;
};

}  // namespace kestrin::ui::window
