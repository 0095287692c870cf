// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include "core/sound/SlotKind.h"

class QPalette;

namespace kestrin::ui::kit {

/// What a colour is for. Text, Soft, Ok, Warning and Error are readable (4.5 : 1 and more) on Background, Card,
/// AccentSoft and Selection; Accent is readable on the first three of them.
enum class ColorRole {
  Background,  ///< ground of windows
  Card,        ///< ground of cards, lists and input fields
  Line,        ///< lines round cards, grooves; ornament only
  Outline,     ///< edges that must be seen: radio buttons, check boxes, input fields
  Text,        ///< text that is read first
  Soft,        ///< captions, hints, figures beside a name
  Accent,      ///< the one accent: focus, what is chosen, the main button
  AccentSoft,  ///< quiet ground in the accent's hue
  AccentText,  ///< text on Accent
  Selection,   ///< ground of selected rows
  Ok,          ///< it went well; a board is there
  Warning,     ///< look here
  Error,       ///< it failed
};

/// The colour for `role` that belongs to the scheme of `palette`. A widget passes its own palette()
/// while it paints and so follows a change of the scheme without being told.
[[nodiscard]] QColor ColorOf(ColorRole role, const QPalette& palette);

/// The colour that marks a slot wherever it is shown; it stands out 3 : 1 and more from Background, Card and Line.
[[nodiscard]] QColor SlotColor(core::sound::SlotKind slot, const QPalette& palette);

/// Whether light text on dark ground is wanted by the palette.
[[nodiscard]] bool IsDark(const QPalette& palette);

/// Whether the palette is one of high contrast: pure black on pure white, or the other way round. Widgets paint nothing
/// translucent then.
[[nodiscard]] bool IsHighContrast(const QPalette& palette);

/// How the whole program is coloured.
struct Scheme {
  bool isDark = false;
  bool isHighContrast = false;
  /// The desktop's accent colour. Where something could not be made out with it, one of its hue that is darker in a
  /// light scheme and lighter in a dark one stands in for it; none, or a grey like that, leaves the program's own.
  QColor accent{};
};

/// The application's palette of that scheme, with disabled colours, links, hints and tool tips. PlaceholderText is
/// Soft, BrightText is Error and Link is Accent, so that a label takes these colours by its foreground role.
[[nodiscard]] QPalette PaletteOf(const Scheme& scheme);

}  // namespace kestrin::ui::kit
