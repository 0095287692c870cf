// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <string>

#include "core/ledsetup/LedSetup.h"
#include "core/ledsetup/LedSetupView.h"

class QBoxLayout;

namespace kestrin::core::base {
class Disk;
}
namespace kestrin::ui::kit {
class Dialogs;
class Pictures;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::led {

class DriverFrame;
class LedHead;
class PickColorFrame;
class PulseFrame;

/// `frmLED`, "LED DRIVER SETUP": LED type, overdrive and light pulses of an LED driver board. The panel shows and asks;
/// what its buttons do is LedSetup's.
class LedPanel : public QWidget, private core::ledsetup::LedSetupView {
  Q_OBJECT

 public:
  /// Runs an action as soon as nothing else talks to the board, and keeps others away until it is done.
  using Runner = std::function<void(std::function<void()>)>;

  /// What the panel reaches the rest of the program through. Everything must outlive the panel.
  struct Surroundings {
    const kit::Pictures& pictures;
    kit::Dialogs& dialogs;
    /// Settings files are written to it.
    core::base::Disk& disk;
    /// Where the catalogue stands and where file dialogs start.
    std::filesystem::path programFolder;
    core::ledsetup::LedSetup::BoardLookup board;
    Runner run;
  };

  explicit LedPanel(const Surroundings& surroundings, QWidget* parent = nullptr);

  /// An LED driver has come online: reads and shows what it holds. Fails as LedSetup::InitLedDrivers() does.
  core::base::Result<> InitLedDrivers();
  /// What is set here.
  [[nodiscard]] const core::ledsetup::LedSetupState& State() const { return m_setup.State(); }
  /// Another text whenever the catalogue's file has changed.
  [[nodiscard]] std::string CatalogueStamp() const { return m_setup.CatalogueStamp(); }
  /// Opens a settings file as soon as nothing else talks to the board; asks before pulses are lost.
  void OpenPath(const std::filesystem::path& path);
  /// Whether the window may be closed: asks when pulses would be lost that were neither sent nor saved.
  [[nodiscard]] bool MayClose();
  /// Whether an LED driver is online: the buttons that talk to it can be used then.
  void SetOnline(bool online);

 signals:
  /// Other pulses are shown, or those of another LED type.
  void pulsesShown();
  /// The board failed a command.
  void boardFailed();
  /// Short news for the help line.
  void news(const QString& text);

 private:
  void AddPulses(QBoxLayout& layout);
  void Connect();
  void ConnectPulses();
  void SetTabOrder();

  void OpenFile();
  void Load(const std::filesystem::path& path);
  void SaveFile();
  void UpdateLED();
  void SendPulse();
  void SendFoc();
  /// News of a pulse that was sent; a warning instead when the board cannot hold it as it is.
  void TellSent(const core::led::LED_Pulse& pulse, const QString& text);
  [[nodiscard]] bool MayLose(const QString& question, const QString& advice);
  void ShowPulses(const core::ledsetup::LedSetupState& state);
  void ShowPicker(const core::ledsetup::LedSetupState& state);

  void Show(core::ledsetup::LedSetupPart part, const core::ledsetup::LedSetupState& state) override;
  [[nodiscard]] std::optional<core::led::Color> AskColor(core::led::Color preset) override;
  [[nodiscard]] bool Confirm(const std::string& question, const std::string& detail) override;
  void ShowCritical(const std::string& text, const std::string& detail) override;
  void ShowInformation(const std::string& text, const std::string& detail) override;
  void GoOffline() override;

  Surroundings m_around;
  core::ledsetup::LedSetup m_setup;
  LedHead* m_head = nullptr;
  DriverFrame* m_driver = nullptr;
  PulseFrame* m_idle = nullptr;
  PulseFrame* m_foc = nullptr;
  PickColorFrame* m_picker = nullptr;
};

}  // namespace kestrin::ui::led
