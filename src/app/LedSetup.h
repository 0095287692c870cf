#pragma once

#include <string>

#include "device/TLS.h"

class QWidget;

namespace kestrin::app {

/// The port to everything that belongs to LED driver boards.
class LedSetup {
 public:
  virtual ~LedSetup() = default;
  /// What `frmLED` holds. Made by the first call; belongs to `parent`.
  [[nodiscard]] virtual QWidget* MakeFrame(QWidget& parent) = 0;
  /// An LED driver is online: reads the LED types and what the board is set to. False when the catalogue is not valid.
  [[nodiscard]] virtual bool InitLedDrivers(device::TLS& board) = 0;
  /// Another text whenever the catalogue's file has changed.
  [[nodiscard]] virtual std::string CatalogueStamp() const = 0;
};

}  // namespace kestrin::app
