#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "device/TLS.h"
#include "led/LED_Driver.h"
#include "led/LED_Pulse.h"
#include "led/LedCatalogue.h"
#include "led/PulseContent.h"
#include "led/PulseTimes.h"
#include "ledsetup/LedSetupView.h"

namespace kestrin::core::base {
class Disk;
}

namespace kestrin::core::ledsetup {

/// Everything that the LED setup panel does: reads what an LED driver board holds, chooses LED type and overdrive,
/// edits the idle and the flash-on-clash pulse, previews and sends them, loads and saves them as files. One method for
/// each thing that the person can do there; the view only shows.
class LedSetup {
 public:
  /// The board that commands go to; nullptr when there is none, which every command takes as a failure.
  using BoardLookup = std::function<device::TLS*()>;

  /// Why InitLedDrivers() failed.
  enum class Failure { None, Board, Catalogue };

  /// What UpdateLED() asks before anything is sent.
  static constexpr const char* kWarning =
      "WARNING: Setting a different LED than actually installed may damage the LED and driver\r\n"
      "Are you sure you want to continue ?";
  /// The details of that question while the panel shows pulses that were not sent.
  static constexpr const char* kUnsentPulses =
      "Afterwards the page shows the pulses that the board holds: those that you have not sent are gone. Send or save "
      "them before if you want to keep them.";
  /// The supply voltage that is written to boards, whatever they reported.
  static constexpr double kVoltage = 6.0;
  /// What the board calls its pulses.
  static constexpr std::int32_t kIdlePulse = 0;
  static constexpr std::int32_t kFocPulse = 1;

  /// `programFolder` is where the catalogue stands. The view must outlive the setup.
  LedSetup(const std::filesystem::path& programFolder, BoardLookup board, LedSetupView& view);

  // --- Reading the LED settings ---

  /// Reads the catalogue and what the board is set to, and shows both: types, fitted type, overdrive, pulses. False
  /// when the board does not answer, the catalogue is not valid, or it does not have the board's LED type; shows no
  /// message then. Pulses of the panel that would be lost by that are set aside.
  [[nodiscard]] bool InitLedDrivers();
  /// What the last InitLedDrivers() failed at.
  [[nodiscard]] Failure LastFailure() const { return m_failure; }
  /// The details, for the person; "" when the last InitLedDrivers() succeeded.
  [[nodiscard]] const std::string& Problem() const { return m_problem; }
  /// Another text whenever the catalogue's file has changed.
  [[nodiscard]] std::string CatalogueStamp() const { return m_catalogue.Stamp(); }

  /// Makes the catalogue's LED type of that name the current one and shows it. `voltage` is in volts, `overDrive` in
  /// percent; it is lowered to what drives the type's strongest channel fully. A name that the catalogue does not have
  /// changes nothing but the channel labels, which turn black. False, with a message, when the type's record is not
  /// valid or there is no catalogue.
  [[nodiscard]] bool SelectLED(const std::string& LEDName, double voltage, std::int32_t overDrive);

  // --- Driver configuration ---

  /// Another entry of `LEDcombo` was chosen. Nothing is sent.
  void ChooseType(const std::string& LEDName);
  /// `OverdriveSlider` was moved. Takes effect with UpdateLED().
  void OverdriveMoved();
  /// `btnUpdateLED`: asks, then writes LED type and overdrive to the board and reads its settings again. True when the
  /// board has accepted them.
  bool UpdateLED();

  // --- Colour picker ---

  /// `btnPulseHigh`, `btnPulseLow`, `btnFocHigh`.
  void EditPulseHigh() { OpenPicker(&m_idlePulse, true); }
  void EditPulseLow() { OpenPicker(&m_idlePulse, false); }
  void EditFocHigh() { OpenPicker(&m_focPulse, true); }
  /// `PickColor`: sets the red, the green and the blue level from the colour dialog; with `ColorFidelity` so that equal
  /// components give equal luminance.
  void PickColor();
  /// `PickColorApply`: shows the levels on the blade. The pulses stay as they are.
  void PickColorApply();
  /// `PickColorOK`: stores the levels in the edited pulse. Nothing is sent.
  void PickColorOK();
  /// `PickColorCancel`.
  void PickColorCancel();

  // --- Pulses ---

  /// A time box has lost the focus.
  void TimeBoxLeft(led::TimeBox box);
  /// The repeat box has lost the focus.
  void RepeatBoxLeft();
  /// `btnSendPulse`, `btnSendFoc`: sends the pulse as the panel shows it, and starts it. False when the board failed.
  bool SendPulse();
  bool SendFoc();

  // --- Settings files ---

  /// Fills both pulses from an LED settings file and shows them. False, with a message, when it is not valid; what was
  /// read until then stays.
  bool LoadSettings(const std::filesystem::path& file);
  /// Writes both pulses as the panel shows them. False, with a message, when the file cannot be written.
  bool SaveSettings(const std::filesystem::path& file, base::Disk& disk);

  // --- What would be lost ---

  /// Whether what the panel shows of that pulse is what the board told of it or was sent last.
  [[nodiscard]] bool IsSent(std::int32_t pulseId) const;
  /// Whether the panel shows a pulse that neither the board nor a settings file has as it is.
  [[nodiscard]] bool HasUnsaved() const;
  /// Whether pulses like that were shown when a board came online, whose own have taken their place.
  [[nodiscard]] bool HasSetAside() const { return m_setAside.has_value(); }
  /// Shows the pulses that were set aside. Those that the panel shows take their place if they would be lost.
  void BringBack();

  // --- What is set ---

  [[nodiscard]] const led::LED_Driver& CurrentDriver() const { return m_currentDriver; }
  [[nodiscard]] const led::LED_Pulse& IdlePulse() const { return m_idlePulse; }
  [[nodiscard]] const led::LED_Pulse& FocPulse() const { return m_focPulse; }
  /// The pulse that the picker is for, nullptr before it was first opened, and whether for its high level.
  [[nodiscard]] const led::LED_Pulse* EditedPulse() const { return m_editedPulse; }
  [[nodiscard]] bool EditHigh() const { return m_editHigh; }

 private:
  /// Both pulses, by their number.
  using Pulses = std::array<led::PulseContent, 2>;
  enum class Unsaved { SetAside, Drop };

  [[nodiscard]] bool ReadAndShow(Unsaved unsaved);
  [[nodiscard]] bool ReadSettings(Unsaved unsaved);
  [[nodiscard]] bool ReadPulses();
  [[nodiscard]] bool AskBoard(const std::function<bool(device::TLS&)>& question);
  [[nodiscard]] bool FailInit(Failure failure, const std::string& problem);
  /// Fills the list of types; `selected` becomes the name of the board's.
  [[nodiscard]] bool FillTypes(std::int32_t boardCode, std::string& selected);
  void UseDriver(double voltage, std::int32_t& overDrive);
  /// Whether the board accepts `command`; goes offline when not.
  bool Command(const std::function<bool(device::TLS&)>& command);
  bool Send(std::int32_t pulseId, const led::LED_Pulse& pulse);
  /// Channels that the current LED type has, 0 .. 4.
  [[nodiscard]] int Channels() const;

  void OpenPicker(led::LED_Pulse* pulse, bool high);
  void ShowPickerRows();
  void ShowIdlePulse();
  void ShowFocPulse();
  void BuildIdlePulse();
  void BuildFocPulse();
  /// What the panel shows.
  [[nodiscard]] Pulses Shown() const;
  void Show(const Pulses& pulses);

  led::LedCatalogue m_catalogue;
  BoardLookup m_board;
  LedSetupView& m_view;
  led::LED_Driver m_currentDriver;
  led::LED_Pulse m_idlePulse;
  led::LED_Pulse m_focPulse;
  led::LED_Pulse* m_editedPulse = nullptr;
  bool m_editHigh = false;
  led::Color m_pickedColor = led::kWhite;
  /// What the board told or was sent last, and what of that it holds as it is: it cuts times that are too long.
  Pulses m_sent;
  std::array<std::optional<led::PulseContent>, 2> m_onBoard{led::PulseContent{}, led::PulseContent{}};
  /// What a settings file holds.
  std::optional<Pulses> m_inFile;
  std::optional<Pulses> m_setAside;
  Failure m_failure = Failure::None;
  std::string m_problem;
};

}  // namespace kestrin::core::ledsetup
