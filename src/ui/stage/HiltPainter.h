// SPDX-License-Identifier: MIT
#pragma once

class QPainter;

namespace kestrin::ui::stage {

class SaberPlace;
struct Shine;

/// Paints the hilt of a saber: metal with rings, a grip, a button that shines in the blade's colour, and the light that
/// the blade throws on it.
class HiltPainter {
 public:
  static void Paint(QPainter& painter, const SaberPlace& place, const Shine& shine);
};

}  // namespace kestrin::ui::stage
