#pragma once

#include <QPointer>
#include <filesystem>
#include <string>
#include <vector>

#include "app/UpdateDialog.h"
#include "update/UpdateManager.h"

namespace kestrin::base {
class Disk;
}
namespace kestrin::update {
class TransferControl;
namespace ui {
class updateForm;
}
}  // namespace kestrin::update

namespace kestrin::app {

class CommandGate;

/// The update of sound fonts in its dialog. While the dialog is open nothing else starts.
class FontUpdate final : public UpdateDialog {
 public:
  /// `server` is HOST or HOST:PORT. The control, the disk and the gate, whose pump the control calls, must outlive this
  /// object.
  FontUpdate(update::TransferControl& inetConnector, const std::string& server,
             const std::filesystem::path& fontsFolder, base::Disk& disk, CommandGate& gate);
  ~FontUpdate() override;

  void Initialise() override;
  [[nodiscard]] std::vector<std::filesystem::path> Open(QWidget& window, const std::string& serialNumber) override;
  void Cancel() override;
  void Unload() override;

 private:
  update::TransferControl& m_inetConnector;
  CommandGate& m_gate;
  update::UpdateManager m_manager;
  /// It belongs to the window once it has been shown over it.
  QPointer<update::ui::updateForm> m_form;
};

}  // namespace kestrin::app
