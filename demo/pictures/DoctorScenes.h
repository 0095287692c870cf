// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <string>

#include "demo/pictures/Scenes.h"

namespace kestrin::demo {

// The connection doctor over the window: what keeps the program from a board, one picture for each.

[[nodiscard]] QPixmap TakeDoctorNoBoard(const Place& place, const std::string& board);
[[nodiscard]] QPixmap TakeDoctorNotPermitted(const Place& place, const std::string& board);
/// The question before the rule is written.
[[nodiscard]] QPixmap TakeDoctorConsent(const Place& place, const std::string& board);
[[nodiscard]] QPixmap TakeDoctorInUse(const Place& place, const std::string& board);
/// The board takes what it is asked and keeps silent.
[[nodiscard]] QPixmap TakeDoctorHung(const Place& place, const std::string& board);
[[nodiscard]] QPixmap TakeDoctorHealthy(const Place& place, const std::string& board);
/// The same with things that were noticed beside.
[[nodiscard]] QPixmap TakeDoctorRemarks(const Place& place, const std::string& board);

}  // namespace kestrin::demo
