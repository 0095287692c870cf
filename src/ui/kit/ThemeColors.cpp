// SPDX-License-Identifier: MIT
#include "ui/kit/ThemeColors.h"

#include <QPalette>
#include <algorithm>
#include <array>
#include <cmath>

namespace kestrin::ui::kit {
namespace {

/// One colour in every scheme.
struct Shades {
  QRgb light;
  QRgb dark;
  QRgb lightContrast;
  QRgb darkContrast;

  [[nodiscard]] QColor In(const Scheme& scheme) const {
    return scheme.isHighContrast ? QColor(scheme.isDark ? darkContrast : lightContrast)
                                 : QColor(scheme.isDark ? dark : light);
  }
};

// In the order of ColorRole. With high contrast nothing steps back, and what was ornament can be seen.
constexpr std::array<Shades, 13> kColors{{
    {0xfff4f5f7, 0xff1b1e24, 0xffffffff, 0xff000000},  // Background
    {0xffffffff, 0xff242830, 0xffffffff, 0xff000000},  // Card
    {0xffdcdfe4, 0xff363c47, 0xff8f8f8f, 0xff5c5c5c},  // Line
    {0xff7f8997, 0xff747e8c, 0xff000000, 0xffffffff},  // Outline
    {0xff1d2129, 0xffe8eaee, 0xff000000, 0xffffffff},  // Text
    {0xff566070, 0xffaab2c0, 0xff000000, 0xffffffff},  // Soft
    {0xff1560cf, 0xff5b9cff, 0xff003099, 0xff7db8ff},  // Accent
    {0xffe6f0fe, 0xff22324d, 0xffcfe0ff, 0xff00264d},  // AccentSoft
    {0xffffffff, 0xff10151d, 0xffffffff, 0xff000000},  // AccentText
    {0xffd5e4fd, 0xff2b4064, 0xff5f8fe8, 0xff0058b8},  // Selection
    {0xff0f7350, 0xff3fc493, 0xff00301d, 0xff5cf0b0},  // Ok
    {0xff8f5500, 0xfff0a63a, 0xff461e00, 0xffffd65c},  // Warning
    {0xffb92c2c, 0xffff8a8a, 0xff5a0000, 0xffffc4c4},  // Error
}};

// By the slots' numbers, from 1.
constexpr std::array<Shades, 7> kSlotColors{{
    {0xff6c5ce7, 0xff9d90ff, 0xff3b2aa8, 0xffc9c0ff},  // Boot
    {0xff1769e0, 0xff5b9cff, 0xff003a8c, 0xff8cc0ff},  // PwrOn
    {0xff0b87a3, 0xff36bdd9, 0xff004a5c, 0xff5fd8f0},  // PwrOff
    {0xffb56a00, 0xfff0a63a, 0xff5c3300, 0xffffc266},  // Motion
    {0xffcc3d3d, 0xffff7a7a, 0xff8c0000, 0xffffadad},  // Impact
    {0xff9b3fb5, 0xffd083e6, 0xff6a1b80, 0xffecb8f7},  // Lockup
    {0xff12805c, 0xff3fc493, 0xff004d33, 0xff6fe0b4},  // Idle
}};

// By the Web Content Accessibility Guidelines: what is read, and what is only seen.
constexpr double kReadable = 4.5;
constexpr double kSeen = 3.0;

/// What has less of it is a grey.
constexpr float kLeastSaturation = 0.2F;
/// Each try of an accent is lighter or darker by so much.
constexpr float kLightnessStep = 0.01F;

QColor InScheme(ColorRole role, const Scheme& scheme) { return kColors.at(static_cast<std::size_t>(role)).In(scheme); }

/// As the screen has it: rounded to the steps of a channel.
QColor AsShown(const QColor& color) { return QColor(color.rgb()); }

QColor Mixed(const QColor& one, const QColor& other, float share) {
  const auto mix = [share](float a, float b) { return a * share + b * (1 - share); };
  return AsShown(QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                                  mix(one.blueF(), other.blueF())));
}

double Luminance(const QColor& color) {
  const auto linear = [](float share) {
    return share <= 0.04045F ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double ContrastOf(const QColor& one, const QColor& other) {
  const double first = Luminance(one);
  const double second = Luminance(other);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

/// The colour in a scheme with an accent of the desktop's, if it has one: the grounds in the accent's hue follow it.
QColor InAccent(ColorRole role, const Scheme& scheme) {
  QColor own = InScheme(role, scheme);
  if (!scheme.accent.isValid()) return own;
  switch (role) {
    case ColorRole::Accent:
      return scheme.accent;
    case ColorRole::AccentText: {
      const QColor other = InScheme(role, {!scheme.isDark, scheme.isHighContrast, {}});
      return ContrastOf(own, scheme.accent) >= ContrastOf(other, scheme.accent) ? own : other;
    }
    case ColorRole::AccentSoft:
      return scheme.isHighContrast ? own : Mixed(scheme.accent, InScheme(ColorRole::Card, scheme), 0.1F);
    case ColorRole::Selection:
      return scheme.isHighContrast ? own : Mixed(scheme.accent, InScheme(ColorRole::Card, scheme), 0.15F);
    default:
      return own;
  }
}

/// Whether all that is painted in the accent, and on its grounds, can be made out.
bool IsUsableAccent(const Scheme& scheme) {
  if (!scheme.accent.isValid()) return false;
  const auto contrast = [&scheme](ColorRole one, ColorRole other) {
    return ContrastOf(InAccent(one, scheme), InAccent(other, scheme));
  };
  for (const ColorRole ground : {ColorRole::Background, ColorRole::Card, ColorRole::AccentSoft, ColorRole::AccentText})
    if (contrast(ColorRole::Accent, ground) < kReadable) return false;
  for (const ColorRole text : {ColorRole::Text, ColorRole::Soft, ColorRole::Ok, ColorRole::Warning, ColorRole::Error})
    for (const ColorRole ground : {ColorRole::AccentSoft, ColorRole::Selection})
      if (contrast(text, ground) < kReadable) return false;
  return contrast(ColorRole::Accent, ColorRole::Selection) >= kSeen;
}

/// The scheme with its accent as light as it must be, and with none where none of its lightnesses will do. The hue is
/// what the person knows the accent by; a grey has none, which would only look like a missing colour.
Scheme WithUsableAccent(Scheme scheme) {
  if (!scheme.accent.isValid() || IsUsableAccent(scheme)) return scheme;
  const QColor wanted = scheme.accent.toHsl();
  scheme.accent = QColor();
  if (wanted.hslSaturationF() < kLeastSaturation) return scheme;
  const float step = scheme.isDark ? kLightnessStep : -kLightnessStep;
  for (float lightness = wanted.lightnessF() + step; lightness > 0 && lightness < 1; lightness += step) {
    Scheme shifted = scheme;
    shifted.accent = AsShown(QColor::fromHslF(wanted.hslHueF(), wanted.hslSaturationF(), lightness));
    if (IsUsableAccent(shifted)) return shifted;
  }
  return scheme;
}

/// What PaletteOf() has made the palette of. The accent stands under both kinds of links there; in palettes of others
/// these differ.
Scheme SchemeOf(const QPalette& palette) {
  Scheme scheme{IsDark(palette), IsHighContrast(palette), {}};
  const QColor& accent = palette.color(QPalette::Active, QPalette::Link);
  const bool isOurs = accent == palette.color(QPalette::Active, QPalette::LinkVisited);
  if (isOurs && accent != InScheme(ColorRole::Accent, scheme)) scheme.accent = accent;
  return scheme;
}

}  // namespace

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::Window).lightness() <
         palette.color(QPalette::Active, QPalette::WindowText).lightness();
}

bool IsHighContrast(const QPalette& palette) {
  const QRgb ground = palette.color(QPalette::Active, QPalette::Window).rgb();
  const QRgb text = palette.color(QPalette::Active, QPalette::WindowText).rgb();
  const QRgb black = QColor(Qt::black).rgb();
  const QRgb white = QColor(Qt::white).rgb();
  return (ground == black && text == white) || (ground == white && text == black);
}

QColor ColorOf(ColorRole role, const QPalette& palette) { return InAccent(role, SchemeOf(palette)); }

QColor SlotColor(core::sound::SlotKind slot, const QPalette& palette) {
  return kSlotColors.at(static_cast<std::size_t>(slot) - 1).In(SchemeOf(palette));
}

QPalette PaletteOf(const Scheme& wanted) {
  const Scheme scheme = WithUsableAccent(wanted);
  const auto color = [&scheme](ColorRole role) { return InAccent(role, scheme); };
  const QColor text = color(ColorRole::Text);
  const QColor card = color(ColorRole::Card);
  const QColor line = color(ColorRole::Line);

  QPalette palette;
  palette.setColor(QPalette::Window, color(ColorRole::Background));
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, card);
  palette.setColor(QPalette::AlternateBase, color(ColorRole::Background));
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, color(ColorRole::Soft));
  palette.setColor(QPalette::Button, card);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::BrightText, color(ColorRole::Error));
  palette.setColor(QPalette::ToolTipBase, card);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Link, color(ColorRole::Accent));
  palette.setColor(QPalette::LinkVisited, color(ColorRole::Accent));
  palette.setColor(QPalette::Highlight, color(ColorRole::Selection));
  palette.setColor(QPalette::HighlightedText, text);
  palette.setColor(QPalette::Light, card);
  palette.setColor(QPalette::Midlight, card);
  palette.setColor(QPalette::Mid, line);
  palette.setColor(QPalette::Dark, color(ColorRole::Outline));
  palette.setColor(QPalette::Shadow, Mixed(Qt::black, line, 0.5F));

  const QColor faded = Mixed(text, color(ColorRole::Background), scheme.isHighContrast ? 0.55F : 0.45F);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText, QPalette::HighlightedText,
        QPalette::PlaceholderText, QPalette::Link}) {
    palette.setColor(QPalette::Disabled, role, faded);
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight,
                   scheme.isHighContrast ? color(ColorRole::Background) : line);
  palette.setColor(QPalette::Disabled, QPalette::Base, color(ColorRole::Background));
  return palette;
}

}  // namespace kestrin::ui::kit
