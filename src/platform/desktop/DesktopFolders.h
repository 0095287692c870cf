#pragma once

#include "app/SpecialFolders.h"

namespace kestrin::desktop {

/// The folders and drives as the desktop names them.
class DesktopFolders final : public app::SpecialFolders {
 public:
  [[nodiscard]] std::filesystem::path Desktop() const override;
  [[nodiscard]] std::filesystem::path Documents() const override;
  [[nodiscard]] std::vector<app::Drive> Drives() const override;
};

}  // namespace kestrin::desktop
