// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/Result.h"

namespace kestrin::core::device {

/// Reads and shows what a board holds. The session says when; how, those know who have the pages for it.
class BoardReader {
 public:
  virtual ~BoardReader() = default;

  /// A sound board is online: its detection parameters are to be read and shown.
  virtual void ReadAccData() = 0;
  /// An LED driver is online: its LED type, configuration and pulses are to be read and shown. Fails with
  /// FailureKind::NoAnswer when the board did not answer, with another kind when the catalogue of LED types is not good
  /// for the board.
  virtual base::Result<> InitLedDrivers() = 0;
  /// Another text whenever the catalogue of LED types has changed.
  [[nodiscard]] virtual std::string CatalogueStamp() = 0;
};

}  // namespace kestrin::core::device
