// SPDX-License-Identifier: MIT
#pragma once

#include "ui/kit/SpecialFolders.h"

namespace kestrin::platform::desktop {

/// The folders and drives as the desktop names them.
class DesktopFolders final : public ui::kit::SpecialFolders {
 public:
  [[nodiscard]] std::filesystem::path Desktop() const override;
  [[nodiscard]] std::filesystem::path Documents() const override;
  [[nodiscard]] std::vector<ui::kit::Drive> Drives() const override;
};

}  // namespace kestrin::platform::desktop
