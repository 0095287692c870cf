// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <filesystem>
#include <string>
#include <vector>

#include "core/update/UpdateManager.h"
#include "ui/kit/UpdateDialog.h"

namespace kestrin::core::base {
class Disk;
}
namespace kestrin::core::update {
class TransferControl;
}
namespace kestrin::ui::update {
class updateForm;
}

namespace kestrin::ui::kit {
class CommandGate;
}

namespace kestrin::ui::window {

/// The update of sound fonts in its dialog. While the dialog is open nothing else starts.
class FontUpdate final : public kit::UpdateDialog {
 public:
  /// `server` is HOST or HOST:PORT. The control, the disk and the gate, whose pump the control calls, must outlive this
  /// object.
  FontUpdate(core::update::TransferControl& inetConnector, const std::string& server,
             const std::filesystem::path& fontsFolder, core::base::Disk& disk, kit::CommandGate& gate);
  ~FontUpdate() override;

  void Initialise() override;
  [[nodiscard]] std::vector<std::filesystem::path> Open(QWidget& window, const std::string& serialNumber) override;
  void Cancel() override;
  void Unload() override;

 private:
  core::update::TransferControl& m_inetConnector;
  kit::CommandGate& m_gate;
  core::update::UpdateManager m_manager;
  /// It belongs to the window once it has been shown over it.
  QPointer<update::updateForm> m_form;
};

}  // namespace kestrin::ui::window
