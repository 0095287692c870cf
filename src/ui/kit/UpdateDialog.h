// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class QWidget;

namespace kestrin::ui::kit {

/// The port to the dialog that fetches sounds from the Internet.
class UpdateDialog {
 public:
  virtual ~UpdateDialog() = default;
  /// The program starts: what is needed later may be made ready. No waiting here.
  virtual void Initialise() = 0;
  /// Shows the dialog over the window, fetches the fonts for the board of that serial number in it, and returns when
  /// it is closed: the sets of the new fonts, none when there are none or not all could be fetched.
  [[nodiscard]] virtual std::vector<std::filesystem::path> Open(QWidget& window, const std::string& serialNumber) = 0;
  /// Closes the dialog and ends what runs in it; Open() still has to return. Without an open dialog it does nothing.
  virtual void Cancel() = 0;
  /// The program ends.
  virtual void Unload() = 0;
};

}  // namespace kestrin::ui::kit
