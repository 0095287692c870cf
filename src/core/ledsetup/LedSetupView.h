// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "led/Color.h"
#include "ledsetup/LedSetupState.h"

namespace kestrin::core::ledsetup {

/// What of the LED setup panel is to be shown anew.
enum class LedSetupPart {
  Types,       ///< `LEDcombo`: the types and the chosen one
  Channels,    ///< `labelLED`: the colours of the output channels
  Overdrive,   ///< `OverdriveSlider` and `OverdriveLabel`
  IdleTimes,   ///< `IdleTON` ... `IdleTFALL`
  FocTimes,    ///< `FocTON`, `FocTOFF` and `focNREP`
  Pulses,      ///< pictures of the pulses, and what of them was not sent; no box
  Picker,      ///< `PickColor_frame` was opened, with its rows and levels, or closed
  PickerRows,  ///< the rows of the open picker: the LED type is another one
  Levels,      ///< `SliderLedSet` and `ValueLedSet`
};

/// Shows the LED setup panel and asks for LedSetup. What it shows comes from the state and from nowhere else; what the
/// person does goes to LedSetup, which then says what has changed.
class LedSetupView {
 public:
  virtual ~LedSetupView() = default;

  /// That part has changed. Showing it is no action of the person and must not come back as one.
  virtual void Show(LedSetupPart part, const LedSetupState& state) = 0;
  /// The platform's colour dialog, preset to `preset`; empty when it was cancelled. The answer is no system colour.
  [[nodiscard]] virtual std::optional<led::Color> AskColor(led::Color preset) = 0;
  /// Asks with OK and Cancel; true for OK. Lines of the question are separated by CR LF; `detail` is "" or says what
  /// else comes of it.
  [[nodiscard]] virtual bool Confirm(const std::string& question, const std::string& detail) = 0;
  /// A critical message with OK; `detail` says what exactly is wrong.
  virtual void ShowCritical(const std::string& text, const std::string& detail) = 0;
  /// A message with OK; `detail` says what exactly is wrong.
  virtual void ShowInformation(const std::string& text, const std::string& detail) = 0;
  /// The board failed a command: the session is to go offline. May come twice in one action.
  virtual void GoOffline() = 0;
};

}  // namespace kestrin::core::ledsetup
