#include "ui/kit/ThemeColors.h"

#include <QPalette>
#include <array>

namespace kestrin::ui::kit {
namespace {

/// One colour in both schemes.
struct Pair {
  QRgb light;
  QRgb dark;

  [[nodiscard]] QColor In(bool isDark) const { return QColor(isDark ? dark : light); }
};

// In the order of ColorRole.
constexpr std::array<Pair, 13> kColors{{
    {0xfff4f5f7, 0xff1b1e24},  // Background
    {0xffffffff, 0xff242830},  // Card
    {0xffdcdfe4, 0xff363c47},  // Line
    {0xff7f8997, 0xff747e8c},  // Outline
    {0xff1d2129, 0xffe8eaee},  // Text
    {0xff566070, 0xffaab2c0},  // Soft
    {0xff1560cf, 0xff5b9cff},  // Accent
    {0xffe6f0fe, 0xff22324d},  // AccentSoft
    {0xffffffff, 0xff10151d},  // AccentText
    {0xffd5e4fd, 0xff2b4064},  // Selection
    {0xff0f7350, 0xff3fc493},  // Ok
    {0xff8f5500, 0xfff0a63a},  // Warning
    {0xffb92c2c, 0xffff8a8a},  // Error
}};

// By the slots' numbers, from 1.
constexpr std::array<Pair, 7> kSlotColors{{
    {0xff6c5ce7, 0xff9d90ff},  // Boot
    {0xff1769e0, 0xff5b9cff},  // PwrOn
    {0xff0b87a3, 0xff36bdd9},  // PwrOff
    {0xffb56a00, 0xfff0a63a},  // Motion
    {0xffcc3d3d, 0xffff7a7a},  // Impact
    {0xff9b3fb5, 0xffd083e6},  // Lockup
    {0xff12805c, 0xff3fc493},  // Idle
}};

QColor InScheme(ColorRole role, bool dark) { return kColors.at(static_cast<std::size_t>(role)).In(dark); }

QColor Mixed(const QColor& one, const QColor& other, float share) {
  const auto mix = [share](float a, float b) { return a * share + b * (1 - share); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

}  // namespace

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::Window).lightness() <
         palette.color(QPalette::Active, QPalette::WindowText).lightness();
}

QColor ColorOf(ColorRole role, const QPalette& palette) { return InScheme(role, IsDark(palette)); }

QColor SlotColor(core::sound::SlotKind slot, const QPalette& palette) {
  return kSlotColors.at(static_cast<std::size_t>(slot) - 1).In(IsDark(palette));
}

QPalette PaletteOf(bool dark) {
  const auto color = [dark](ColorRole role) { return InScheme(role, dark); };
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

  const QColor faded = Mixed(text, color(ColorRole::Background), 0.45F);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText, QPalette::HighlightedText,
        QPalette::PlaceholderText, QPalette::Link}) {
    palette.setColor(QPalette::Disabled, role, faded);
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, line);
  palette.setColor(QPalette::Disabled, QPalette::Base, color(ColorRole::Background));
  return palette;
}

}  // namespace kestrin::ui::kit
