// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "base/Result.h"
#include "device/TLS.h"
#include "led/LedCatalogue.h"
#include "led/PulseContent.h"
#include "led/PulseTimes.h"
#include "ledsetup/KnownPulses.h"
#include "ledsetup/LedSetupState.h"
#include "ledsetup/LedSetupView.h"

namespace kestrin::core::base {
class Disk;
}

namespace kestrin::core::ledsetup {

/// Everything that the LED setup panel does: reads what an LED driver board holds, chooses LED type and overdrive,
/// edits the idle and the flash-on-clash pulse, previews and sends them, loads and saves them as files. One method for
/// each thing that the person can do there; what is set is the state, and the view only shows it.
class LedSetup {
 public:
  /// The board that commands go to; nullptr when there is none, which every command takes as a failure.
  using BoardLookup = std::function<device::TLS*()>;

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

  /// `programFolder` is where the catalogue stands. The view must outlive the setup.
  LedSetup(const std::filesystem::path& programFolder, BoardLookup board, LedSetupView& view);

  /// What is set.
  [[nodiscard]] const LedSetupState& State() const { return m_state; }

  // --- Reading the LED settings ---

  /// Reads the catalogue and what the board is set to, and shows both: types, fitted type, overdrive, pulses. Fails,
  /// without a message, with NoAnswer when the board does not answer, and with NotValid when the catalogue cannot be
  /// read, is not valid or does not have the board's LED type. Pulses of the panel that would be lost by that are
  /// set aside.
  base::Result<> InitLedDrivers();
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
  void OverdriveMoved(std::int32_t percent);
  /// `btnUpdateLED`: asks, then writes LED type and overdrive to the board and reads its settings again. True when the
  /// board has accepted them; how reading ended is in the state.
  bool UpdateLED();

  // --- Colour picker ---

  /// `btnPulseHigh`, `btnPulseLow`, `btnFocHigh`.
  void EditPulseHigh() { OpenPicker(led::kIdlePulse, true); }
  void EditPulseLow() { OpenPicker(led::kIdlePulse, false); }
  void EditFocHigh() { OpenPicker(led::kFocPulse, true); }
  /// `SliderLedSet` of a channel, 1 .. 4, was moved; a level outside 0 .. 255 counts as the nearest one.
  void LevelMoved(int channel, std::int32_t level);
  /// `ColorFidelity` was ticked or not.
  void ColorFidelity(bool checked) { m_state.picker.ColorFidelity = checked; }
  /// `PickColor`: sets the red, the green and the blue level from the colour dialog; with `ColorFidelity` so that equal
  /// components give equal luminance.
  void PickColor();
  /// `PickColorApply`: shows the levels on the blade. The pulses stay as they are.
  void PickColorApply();
  /// `PickColorOK`: stores the levels in the edited pulse. Nothing is sent.
  void PickColorOK();
  /// `PickColorCancel`.
  void PickColorCancel() { ClosePicker(); }

  // --- Pulses ---

  /// The person types into a time box, which says that number of seconds now.
  void TimeTyped(led::TimeBox box, double seconds);
  /// An arrow key was pressed in it: so many steps of it up, or down when negative.
  void TimeStepped(led::TimeBox box, int steps);
  /// It has lost the focus.
  void TimeBoxLeft(led::TimeBox box);
  /// The same of the repeat box.
  void RepeatTyped(double number);
  void RepeatStepped(int steps);
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
  [[nodiscard]] bool HasUnsaved() const { return m_known.WouldBeLost(m_state.Shown()); }
  /// Whether pulses like that were shown when a board came online, whose own have taken their place.
  [[nodiscard]] bool HasSetAside() const { return m_setAside.has_value(); }
  /// Shows the pulses that were set aside. Those that the panel shows take their place if they would be lost.
  void BringBack();

 private:
  enum class Unsaved { SetAside, Drop };

  void ReadAndShow(Unsaved unsaved);
  base::Result<> ReadSettings(Unsaved unsaved);
  base::Result<> ReadPulses();
  base::Result<> AskBoard(const std::function<bool(device::TLS&)>& question);
  /// Fills the list of types and chooses the one with the board's code.
  base::Result<> FillTypes(std::int32_t boardCode);
  /// Takes an LED type of the catalogue; `overDrive` is lowered to what it bears.
  void UseDriver(const led::LED_Driver& type, double voltage, std::int32_t& overDrive);
  /// Whether the board accepts `command`; goes offline when not.
  bool Command(const std::function<bool(device::TLS&)>& command);
  bool Send(std::int32_t pulseId, const led::LED_Pulse& pulse);

  void OpenPicker(std::int32_t pulseId, bool high);
  void ClosePicker();
  void SetLevel(int channel, std::int32_t level);
  void SetTime(led::TimeBox box, double seconds);
  void SetRepetitions(double number);
  void Show(LedSetupPart part) { m_view.Show(part, m_state); }

  led::LedCatalogue m_catalogue;
  BoardLookup m_board;
  LedSetupView& m_view;
  LedSetupState m_state;
  /// What the colour dialog answered last.
  led::Color m_pickedColor = led::kWhite;
  KnownPulses m_known;
  std::optional<led::Pulses> m_setAside;
};

}  // namespace kestrin::core::ledsetup
