#include "ui/kit/ThemeColors.h"

#include <gtest/gtest.h>

#include <QPalette>

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

class ThemeColors : public testing::TestWithParam<bool> {
 protected:
  [[nodiscard]] QColor Color(ColorRole role) const { return ColorOf(role, m_palette); }

  QPalette m_palette = PaletteOf(GetParam());
};

INSTANTIATE_TEST_SUITE_P(BothSchemes, ThemeColors, testing::Bool(),
                         [](const auto& scheme) { return scheme.param ? "Dark" : "Light"; });

TEST_P(ThemeColors, TheSchemeOfAPaletteIsKnownAgain) { EXPECT_EQ(IsDark(m_palette), GetParam()); }

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
