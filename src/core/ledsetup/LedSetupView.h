#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "led/Color.h"
#include "led/PulseTimes.h"

namespace kestrin::core::ledsetup {

/// The controls of the LED setup panel as LedSetup sees them: what it shows there and what it reads from there. Setting
/// a control from here is no action of the person: it must not come back as one. Channels are counted from 1 to 4.
class LedSetupView {
 public:
  virtual ~LedSetupView() = default;

  // --- Driver configuration ---

  /// `LEDcombo`: no entries.
  virtual void ClearTypes() = 0;
  /// `LEDcombo`: one more entry at the end.
  virtual void AppendType(const std::string& name) = 0;
  /// `LEDcombo`: entry `index` (from 0) is the chosen one.
  virtual void SelectType(std::size_t index) = 0;
  /// `labelLED`(channel): its text colour; 0 (black) for a channel that is not used.
  virtual void SetChannelLabelColor(int channel, led::Color color) = 0;
  /// `OverdriveSlider`: its largest value in percent.
  virtual void SetOverdriveMaximum(std::int32_t percent) = 0;
  virtual void SetOverdrive(std::int32_t percent) = 0;
  [[nodiscard]] virtual std::int32_t Overdrive() const = 0;
  /// `OverdriveLabel`: "120%".
  virtual void SetOverdriveLabel(const std::string& text) = 0;
  [[nodiscard]] virtual std::string OverdriveLabel() const = 0;

  // --- Pulses ---

  /// The text of `IdleTON` ... `FocTOFF`.
  virtual void SetTimeText(led::TimeBox box, const std::string& text) = 0;
  [[nodiscard]] virtual std::string TimeText(led::TimeBox box) const = 0;
  /// The text of `focNREP`.
  virtual void SetRepeatText(const std::string& text) = 0;
  [[nodiscard]] virtual std::string RepeatText() const = 0;
  /// The levels of a pulse or the LED type have changed: pictures of them are out of date.
  virtual void ShowPulses() = 0;

  // --- Colour picker ---

  /// `PickColor_frame`.
  virtual void ShowPicker(bool visible) = 0;
  [[nodiscard]] virtual bool IsPickerShown() const = 0;
  /// `LabelLedSet`, `SliderLedSet` and `ValueLedSet` of a channel.
  virtual void ShowLevelRow(int channel, bool visible) = 0;
  /// `LabelLedSet`(channel): its text colour.
  virtual void SetLevelLabelColor(int channel, led::Color color) = 0;
  /// `SliderLedSet`(channel), and the number in `ValueLedSet`(channel).
  virtual void SetLevel(int channel, std::int16_t level) = 0;
  [[nodiscard]] virtual std::int16_t Level(int channel) const = 0;
  /// `PickColor` and `ColorFidelity`.
  virtual void EnablePickColor(bool enabled) = 0;
  [[nodiscard]] virtual bool ColorFidelity() const = 0;
  /// The platform's colour dialog, preset to `preset`; empty when it was cancelled.
  [[nodiscard]] virtual std::optional<led::Color> AskColor(led::Color preset) = 0;
  /// The platform's palette, for a dialog that answers with a system colour: see SysToRGB().
  [[nodiscard]] virtual led::Color GetSysColor(std::int32_t number) const = 0;

  // --- Messages ---

  /// Asks with OK and Cancel; true for OK. Lines of the question are separated by CR LF; `detail` is "" or says what
  /// else comes of it.
  [[nodiscard]] virtual bool Confirm(const std::string& question, const std::string& detail) = 0;
  /// A critical message with OK; `detail` says what exactly is wrong.
  virtual void ShowCritical(const std::string& text, const std::string& detail) = 0;
  /// A message with OK; `detail` says what exactly is wrong.
  virtual void ShowInformation(const std::string& text, const std::string& detail) = 0;

  // --- The rest of the program ---

  /// The board failed a command: the session is to go offline. May come twice in one action.
  virtual void GoOffline() = 0;
};

}  // namespace kestrin::core::ledsetup
