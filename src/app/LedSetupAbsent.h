#pragma once

#include "app/LedSetup.h"

namespace kestrin::app {

/// Stands where the setup of LED drivers belongs: says what board is connected, and that it cannot be set up here.
class LedSetupAbsent final : public LedSetup {
 public:
  [[nodiscard]] QWidget* MakeFrame(QWidget& parent) override;
  [[nodiscard]] bool InitLedDrivers(device::TLS& board) override;
  [[nodiscard]] std::string CatalogueStamp() const override { return ""; }
};

}  // namespace kestrin::app
