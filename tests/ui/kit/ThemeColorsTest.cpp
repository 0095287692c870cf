// SPDX-License-Identifier: MIT
#include "ui/kit/ThemeColors.h"

#include <gtest/gtest.h>

#include <QPalette>
#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <string>

#include "support/Contrast.h"

namespace kestrin::ui::kit {
namespace {

constexpr double kReadable = 4.5;
constexpr double kSeen = 3.0;

const std::initializer_list<ColorRole> kTexts = {ColorRole::Text, ColorRole::Soft, ColorRole::Ok, ColorRole::Warning,
                                                 ColorRole::Error};
const std::initializer_list<ColorRole> kGrounds = {ColorRole::Background, ColorRole::Card, ColorRole::AccentSoft,
                                                   ColorRole::Selection};

TEST(ContrastFormula, GivesTheKnownValuesOfTheGuidelines) {
  EXPECT_DOUBLE_EQ(Contrast(Qt::black, Qt::white), 21.0);
  EXPECT_DOUBLE_EQ(Contrast(Qt::white, Qt::white), 1.0);
  // #767676 is known as the lightest grey that is readable on white.
  EXPECT_GE(Contrast(QColor(0x76, 0x76, 0x76), Qt::white), kReadable);
  EXPECT_LT(Contrast(QColor(0x77, 0x77, 0x77), Qt::white), kReadable);
}

struct SchemeRow {
  const char* name;
  Scheme scheme;
};

void PrintTo(const SchemeRow& row, std::ostream* out) { *out << row.name; }

class ThemeColors : public testing::TestWithParam<SchemeRow> {
 protected:
  [[nodiscard]] QColor Color(ColorRole role) const { return ColorOf(role, m_palette); }

  QPalette m_palette = PaletteOf(GetParam().scheme);
};

// Each accent is one that can be used in its scheme: an orange, a green, a red and a yellow.
const SchemeRow kSchemes[] = {
    {"Light", {false, false, {}}},
    {"Dark", {true, false, {}}},
    {"LightHighContrast", {false, true, {}}},
    {"DarkHighContrast", {true, true, {}}},
    {"LightWithAccent", {false, false, QColor(0x9a, 0x3c, 0x00)}},
    {"DarkWithAccent", {true, false, QColor(0x6b, 0xd0, 0x8a)}},
    {"LightHighContrastWithAccent", {false, true, QColor(0x80, 0x00, 0x00)}},
    {"DarkHighContrastWithAccent", {true, true, QColor(0xff, 0xff, 0x00)}},
};

INSTANTIATE_TEST_SUITE_P(Schemes, ThemeColors, testing::ValuesIn(kSchemes),
                         [](const auto& row) { return row.param.name; });

TEST_P(ThemeColors, TheSchemeOfAPaletteIsKnownAgain) {
  EXPECT_EQ(IsDark(m_palette), GetParam().scheme.isDark);
  EXPECT_EQ(IsHighContrast(m_palette), GetParam().scheme.isHighContrast);
}

TEST_P(ThemeColors, ADesktopsAccentIsTakenWhereAllCanBeMadeOutWithIt) {
  const QColor accent = GetParam().scheme.accent;
  if (accent.isValid()) {
    EXPECT_EQ(Color(ColorRole::Accent), accent);
    return;
  }
  const QColor own = Color(ColorRole::Accent);
  // As light as the grounds, as dark as they are, and in between: on one of the two sides it fails.
  for (const QColor& useless : {Color(ColorRole::Background), Color(ColorRole::Card), Color(ColorRole::Line)}) {
    Scheme scheme = GetParam().scheme;
    scheme.accent = useless;
    EXPECT_EQ(ColorOf(ColorRole::Accent, PaletteOf(scheme)), own) << useless.name().toStdString();
    EXPECT_EQ(PaletteOf(scheme), m_palette) << useless.name().toStdString();
  }
}

// The accents that desktops have of themselves: five blues and two oranges, and what people choose.
const QRgb kDesktopAccents[] = {0xff0078d4, 0xff3584e4, 0xff3daee9, 0xff308cc6, 0xff007aff,
                                0xffe95420, 0xff005fb8, 0xffe66100, 0xff2ec27e, 0xff9141ac};

/// How far two colours lie apart on the circle of hues, in degrees.
int HueApart(const QColor& one, const QColor& other) {
  const int apart = std::abs(one.hslHue() - other.hslHue());
  return std::min(apart, 360 - apart);
}

TEST(ThemeAccent, OfADesktopKeepsItsHueAndIsMadeOutEverywhere) {
  for (const bool isDark : {false, true}) {
    for (const QColor wanted : kDesktopAccents) {
      const QPalette palette = PaletteOf({isDark, false, wanted});
      const QColor accent = ColorOf(ColorRole::Accent, palette);
      const std::string which = wanted.name().toStdString() + (isDark ? " dark" : " light");
      EXPECT_LE(HueApart(accent, wanted), 3) << which << accent.name().toStdString();
      EXPECT_NEAR(accent.hslSaturationF(), wanted.hslSaturationF(), 0.05) << which;
      // No further than it must: never to the other side.
      if (isDark)
        EXPECT_GE(accent.lightness(), wanted.lightness()) << which;
      else
        EXPECT_LE(accent.lightness(), wanted.lightness()) << which;
      const auto contrast = [&palette, &accent](ColorRole role) { return Contrast(ColorOf(role, palette), accent); };
      for (const ColorRole ground : {ColorRole::Background, ColorRole::Card, ColorRole::AccentSoft})
        EXPECT_GE(contrast(ground), kReadable) << which << static_cast<int>(ground);
      EXPECT_GE(contrast(ColorRole::AccentText), kReadable) << which;
      EXPECT_GE(contrast(ColorRole::Selection), kSeen) << which;
      for (const ColorRole text : kTexts)
        for (const ColorRole ground : kGrounds)
          EXPECT_GE(Contrast(ColorOf(text, palette), ColorOf(ground, palette)), kReadable)
              << which << static_cast<int>(text) << " on " << static_cast<int>(ground);
    }
  }
}

TEST(ThemeAccent, OfNoHueLeavesTheProgramsOwn) {
  for (const bool isDark : {false, true})
    EXPECT_EQ(PaletteOf({isDark, false, QColor(0x80, 0x80, 0x80)}), PaletteOf({isDark, false, {}})) << isDark;
}

TEST(ThemeAccent, GroundsInItsHueFollowIt) {
  const QPalette green = PaletteOf({true, false, QColor(0x6b, 0xd0, 0x8a)});
  const QPalette own = PaletteOf({true, false, {}});
  const auto howGreen = [](const QColor& color) { return color.green() - color.blue(); };
  for (const ColorRole ground : {ColorRole::AccentSoft, ColorRole::Selection})
    EXPECT_GT(howGreen(ColorOf(ground, green)), howGreen(ColorOf(ground, own)) + 10) << static_cast<int>(ground);
}

TEST(ThemeAccent, PalettesOfOthersHaveTheProgramsOwn) {
  EXPECT_EQ(ColorOf(ColorRole::Accent, QPalette(QColor(0xee, 0xee, 0xee))), ColorOf(ColorRole::Accent, PaletteOf({})));
}

struct PaletteRow {
  QColor ground;
  QColor text;
  bool isHighContrast;
};

TEST(HighContrast, IsPureBlackAndWhiteEitherWay) {
  const PaletteRow rows[] = {
      {Qt::black, Qt::white, true},
      {Qt::white, Qt::black, true},
      {Qt::white, QColor(0x1d, 0x21, 0x29), false},
      {QColor(0xef, 0xef, 0xef), Qt::black, false},
      {QColor(1, 0, 0), Qt::white, false},
  };
  for (const PaletteRow& row : rows) {
    QPalette palette;
    palette.setColor(QPalette::Window, row.ground);
    palette.setColor(QPalette::WindowText, row.text);
    EXPECT_EQ(IsHighContrast(palette), row.isHighContrast) << row.ground.name().toStdString();
  }
}

TEST(HighContrast, NothingStepsBackAndEveryLineIsSeen) {
  for (const bool isDark : {false, true}) {
    const QPalette palette = PaletteOf({isDark, true, {}});
    const QColor ground = ColorOf(ColorRole::Background, palette);
    EXPECT_DOUBLE_EQ(Contrast(ColorOf(ColorRole::Soft, palette), ground), 21.0);
    EXPECT_DOUBLE_EQ(Contrast(ColorOf(ColorRole::Outline, palette), ground), 21.0);
    for (const ColorRole role : {ColorRole::Line, ColorRole::Selection})
      EXPECT_GE(Contrast(ColorOf(role, palette), ground), kSeen) << isDark << static_cast<int>(role);
    EXPECT_GE(Contrast(ColorOf(ColorRole::Accent, palette), ColorOf(ColorRole::Line, palette)), kSeen) << isDark;
    EXPECT_GE(Contrast(palette.color(QPalette::Disabled, QPalette::WindowText), ground), kReadable) << isDark;
  }
}

TEST_P(ThemeColors, EveryTextIsReadableOnEveryGround) {
  for (const ColorRole text : kTexts) {
    for (const ColorRole ground : kGrounds) {
      EXPECT_GE(Contrast(Color(text), Color(ground)), kReadable)
          << "text " << static_cast<int>(text) << " on ground " << static_cast<int>(ground);
    }
  }
}

TEST_P(ThemeColors, LinksAndTheMainButtonAreReadable) {
  for (const ColorRole ground : {ColorRole::Background, ColorRole::Card, ColorRole::AccentSoft}) {
    EXPECT_GE(Contrast(Color(ColorRole::Accent), Color(ground)), kReadable) << static_cast<int>(ground);
  }
  EXPECT_GE(Contrast(Color(ColorRole::AccentText), Color(ColorRole::Accent)), kReadable);
}

TEST_P(ThemeColors, TextOnAGrooveIsReadable) {
  EXPECT_GE(Contrast(Color(ColorRole::Text), Color(ColorRole::Line)), kReadable);
}

TEST_P(ThemeColors, TheFocusRingIsSeenOnEveryGround) {
  for (const ColorRole ground : kGrounds) {
    EXPECT_GE(Contrast(Color(ColorRole::Accent), Color(ground)), kSeen) << static_cast<int>(ground);
  }
}

TEST_P(ThemeColors, EdgesOfControlsAreSeen) {
  for (const ColorRole ground : {ColorRole::Background, ColorRole::Card}) {
    EXPECT_GE(Contrast(Color(ColorRole::Outline), Color(ground)), kSeen) << static_cast<int>(ground);
  }
}

TEST_P(ThemeColors, EverySlotHasAColourOfItsOwnThatIsSeen) {
  for (const core::sound::Slot& slot : core::sound::kSlots) {
    const QColor color = SlotColor(slot.kind, m_palette);
    for (const ColorRole ground : {ColorRole::Background, ColorRole::Card, ColorRole::Line}) {
      EXPECT_GE(Contrast(color, Color(ground)), kSeen) << slot.name << " on " << static_cast<int>(ground);
    }
    for (const core::sound::Slot& other : core::sound::kSlots) {
      if (other.kind == slot.kind) continue;
      EXPECT_NE(color, SlotColor(other.kind, m_palette)) << slot.name << " and " << other.name;
    }
  }
}

TEST_P(ThemeColors, ThePaletteCarriesTheRoles) {
  EXPECT_EQ(m_palette.color(QPalette::Window), Color(ColorRole::Background));
  EXPECT_EQ(m_palette.color(QPalette::WindowText), Color(ColorRole::Text));
  EXPECT_EQ(m_palette.color(QPalette::Base), Color(ColorRole::Card));
  EXPECT_EQ(m_palette.color(QPalette::PlaceholderText), Color(ColorRole::Soft));
  EXPECT_EQ(m_palette.color(QPalette::BrightText), Color(ColorRole::Error));
  EXPECT_EQ(m_palette.color(QPalette::Link), Color(ColorRole::Accent));
  EXPECT_EQ(m_palette.color(QPalette::Highlight), Color(ColorRole::Selection));
}

TEST_P(ThemeColors, EveryPairOfThePaletteIsReadable) {
  const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
      {QPalette::WindowText, QPalette::Window},         {QPalette::Text, QPalette::Base},
      {QPalette::Text, QPalette::AlternateBase},        {QPalette::ButtonText, QPalette::Button},
      {QPalette::PlaceholderText, QPalette::Base},      {QPalette::ToolTipText, QPalette::ToolTipBase},
      {QPalette::HighlightedText, QPalette::Highlight}, {QPalette::Link, QPalette::Base},
      {QPalette::LinkVisited, QPalette::Base},          {QPalette::BrightText, QPalette::Window}};
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    for (const auto& [text, ground] : pairs) {
      EXPECT_GE(Contrast(m_palette.color(group, text), m_palette.color(group, ground)), kReadable)
          << "roles " << text << " and " << ground << " of group " << group;
    }
  }
}

TEST_P(ThemeColors, DisabledTextStepsBackButCanBeMadeOut) {
  const QColor ground = m_palette.color(QPalette::Window);
  const double disabled = Contrast(m_palette.color(QPalette::Disabled, QPalette::WindowText), ground);
  EXPECT_LT(disabled, Contrast(m_palette.color(QPalette::Active, QPalette::WindowText), ground) / 2);
  EXPECT_GE(disabled, 2.0);
}

}  // namespace
}  // namespace kestrin::ui::kit
