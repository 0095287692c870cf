#pragma once

class QWidget;

namespace kestrin::app {

/// The port to the dialog that fetches sounds from the Internet.
class UpdateDialog {
 public:
  virtual ~UpdateDialog() = default;
  /// The program starts: what is needed later may be made ready. No waiting here.
  virtual void Initialise() = 0;
  /// Shows the dialog over the window.
  virtual void Open(QWidget& window) = 0;
  /// The program ends.
  virtual void Unload() = 0;
};

}  // namespace kestrin::app
