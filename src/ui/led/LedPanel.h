#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <string>

#include "core/ledsetup/LedSetup.h"
#include "core/ledsetup/LedSetupView.h"

class QBoxLayout;
class QLabel;
class QPushButton;

namespace kestrin::core::base {
class Disk;
}
namespace kestrin::ui::kit {
class Dialogs;
class Pictures;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::led {

class DriverFrame;
class PickColorFrame;
class PulseFrame;

/// `frmLED`, "LED DRIVER SETUP": LED type, overdrive and light pulses of an LED driver board. The panel shows and asks;
/// what its buttons do is LedSetup's.
class LedPanel : public QWidget, private core::ledsetup::LedSetupView {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = "LED DRIVER SETUP";

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

  /// An LED driver has come online: reads and shows what it holds. False when that failed, see LastFailure() and
  /// Problem().
  [[nodiscard]] bool InitLedDrivers();
  [[nodiscard]] core::ledsetup::LedSetup::Failure LastFailure() const { return m_setup.LastFailure(); }
  [[nodiscard]] const std::string& Problem() const { return m_setup.Problem(); }
  /// Another text whenever the catalogue's file has changed.
  [[nodiscard]] std::string CatalogueStamp() const { return m_setup.CatalogueStamp(); }
  /// Whether the window may be closed: asks when pulses would be lost that were neither sent nor saved.
  [[nodiscard]] bool MayClose();
  /// Whether an LED driver is online: the buttons that talk to it can be used then.
  void SetOnline(bool online);

 signals:
  /// The board failed a command.
  void boardFailed();
  /// Short news for the help line.
  void news(const QString& text);

 private:
  void AddHead(QBoxLayout& layout);
  void AddPulses(QBoxLayout& layout);
  void Connect();
  [[nodiscard]] QPushButton* MakeFileButton(const char* name, const QString& text, const QString& purpose,
                                            const char* picture);
  void SetTabOrder();

  void OpenFile();
  void SaveFile();
  void UpdateLED();
  void SendPulse();
  void SendFoc();
  /// News of a pulse that was sent; a warning instead when the board cannot hold it as it is.
  void ShowSent(const core::led::LED_Pulse& pulse, const QString& text);
  void StepTime(core::led::TimeBox box, int steps);
  void StepRepeat(int steps);
  void ShowShapes();
  /// Shows what of the pulses was not sent.
  void ShowUnsent();
  [[nodiscard]] bool MayLose(const QString& question, const QString& advice);
  void ShowPickerLight();
  void ShowNotice(const QString& text);

  void ClearTypes() override;
  void AppendType(const std::string& name) override;
  void SelectType(std::size_t index) override;
  void SetChannelLabelColor(int channel, core::led::Color color) override;
  void SetOverdriveMaximum(std::int32_t percent) override;
  void SetOverdrive(std::int32_t percent) override;
  [[nodiscard]] std::int32_t Overdrive() const override;
  void SetOverdriveLabel(const std::string& text) override;
  [[nodiscard]] std::string OverdriveLabel() const override;
  void SetTimeText(core::led::TimeBox box, const std::string& text) override;
  [[nodiscard]] std::string TimeText(core::led::TimeBox box) const override;
  void SetRepeatText(const std::string& text) override;
  [[nodiscard]] std::string RepeatText() const override;
  void ShowPulses() override;
  void ShowPicker(bool visible) override;
  [[nodiscard]] bool IsPickerShown() const override;
  void ShowLevelRow(int channel, bool visible) override;
  void SetLevelLabelColor(int channel, core::led::Color color) override;
  void SetLevel(int channel, std::int16_t level) override;
  [[nodiscard]] std::int16_t Level(int channel) const override;
  void EnablePickColor(bool enabled) override;
  [[nodiscard]] bool ColorFidelity() const override;
  [[nodiscard]] std::optional<core::led::Color> AskColor(core::led::Color preset) override;
  [[nodiscard]] core::led::Color GetSysColor(std::int32_t number) const override;
  [[nodiscard]] bool Confirm(const std::string& question, const std::string& detail) override;
  void ShowCritical(const std::string& text, const std::string& detail) override;
  void ShowInformation(const std::string& text, const std::string& detail) override;
  void GoOffline() override;

  Surroundings m_around;
  core::ledsetup::LedSetup m_setup;
  QLabel* m_notice = nullptr;
  QPushButton* m_bringBack = nullptr;
  QPushButton* m_open = nullptr;
  QPushButton* m_save = nullptr;
  DriverFrame* m_driver = nullptr;
  PulseFrame* m_idle = nullptr;
  PulseFrame* m_foc = nullptr;
  PickColorFrame* m_picker = nullptr;
  /// The button that the picker was opened with last.
  QWidget* m_opener = nullptr;
};

}  // namespace kestrin::ui::led
