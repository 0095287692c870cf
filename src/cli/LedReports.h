// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/Report.h"
#include "core/led/LED_Driver.h"
#include "core/led/LED_Pulse.h"

namespace kestrin::cli {

/// A pulse as a document: levels, times in milliseconds, repetitions.
[[nodiscard]] Document DocumentOf(const core::led::LED_Pulse& pulse);
/// Both pulses for people.
[[nodiscard]] std::string TextOfPulses(const core::led::LED_Pulse& idle, const core::led::LED_Pulse& foc);
/// A pulse with the counts of its four channels, as it is sent.
[[nodiscard]] Report ReportOfSentPulse(const std::string& name, const core::led::LED_Pulse& pulse);

/// The counts of the levels of the first channels. Throws CommandFailure when there are more levels than channels.
[[nodiscard]] Report ReportOfCounts(const core::led::LED_Driver& driver, const std::vector<std::int32_t>& levels);

}  // namespace kestrin::cli
