#include "ui/led/SystemColor.h"

#include <QPalette>
#include <array>
#include <cstddef>

namespace kestrin::ui::led {

namespace {

struct Place {
  QPalette::ColorRole role;
  QPalette::ColorGroup group = QPalette::Active;
};

/// By the numbers.
constexpr std::array<Place, 31> kPlaces{{
    {QPalette::Midlight},                             // 0 scroll bar
    {QPalette::Window},                               // 1 desktop
    {QPalette::Highlight},                            // 2 active title bar
    {QPalette::Highlight, QPalette::Inactive},        // 3 inactive title bar
    {QPalette::Window},                               // 4 menu
    {QPalette::Base},                                 // 5 window
    {QPalette::Shadow},                               // 6 window frame
    {QPalette::WindowText},                           // 7 menu text
    {QPalette::Text},                                 // 8 window text
    {QPalette::HighlightedText},                      // 9 title text
    {QPalette::Window},                               // 10 active border
    {QPalette::Window, QPalette::Inactive},           // 11 inactive border
    {QPalette::Dark},                                 // 12 workspace behind windows
    {QPalette::Highlight},                            // 13 selection
    {QPalette::HighlightedText},                      // 14 selected text
    {QPalette::Button},                               // 15 button
    {QPalette::Dark},                                 // 16 button's shadow
    {QPalette::Text, QPalette::Disabled},             // 17 grey text
    {QPalette::ButtonText},                           // 18 button text
    {QPalette::HighlightedText, QPalette::Inactive},  // 19 inactive title text
    {QPalette::Light},                                // 20 button's light
    {QPalette::Shadow},                               // 21 deep shadow
    {QPalette::Midlight},                             // 22 soft light
    {QPalette::ToolTipText},                          // 23 tool tip text
    {QPalette::ToolTipBase},                          // 24 tool tip
    {QPalette::Button},                               // 25 not given away
    {QPalette::Link},                                 // 26 link
    {QPalette::Highlight},                            // 27 active title bar's other end
    {QPalette::Highlight, QPalette::Inactive},        // 28 inactive title bar's other end
    {QPalette::Highlight},                            // 29 menu selection
    {QPalette::Window},                               // 30 menu bar
}};

}  // namespace

core::led::Color SystemColor(std::int32_t number, const QPalette& palette) {
  if (number < 0 || static_cast<std::size_t>(number) >= kPlaces.size()) return 0;
  const Place& place = kPlaces[static_cast<std::size_t>(number)];
  const QColor color = palette.color(place.group, place.role);
  return core::led::RGBToSys(static_cast<std::int16_t>(color.red()), static_cast<std::int16_t>(color.green()),
                             static_cast<std::int16_t>(color.blue()));
}

}  // namespace kestrin::ui::led
