// SPDX-License-Identifier: MIT
#include "ui/help/HelpStyle.h"

#include <QColor>
#include <QPalette>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::help {

namespace {

/// A colour between two, `share` percent of the way from the first.
QColor Between(const QColor& from, const QColor& to, int share) {
  const auto mix = [share](int a, int b) { return a + (b - a) * share / 100; };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

}  // namespace

QString HelpStyle(const QPalette& palette) {
  const QColor text = palette.color(QPalette::Text);
  const QColor base = palette.color(QPalette::Base);
  // Text browsers know neither shades of transparency nor variables: the shades are mixed here.
  const QString line = Between(base, text, kit::IsHighContrast(palette) ? 100 : 25).name();
  const QString shade = Between(base, text, 8).name();
  return QStringLiteral(
             "h1 { font-size: 20px; font-weight: 600; margin-top: 0px; margin-bottom: 12px; }"
             "h2 { font-size: 16px; font-weight: 600; margin-top: 20px; margin-bottom: 6px; }"
             "p, li, td { line-height: 130%; }"
             "p { margin-top: 0px; margin-bottom: 10px; }"
             "li { margin-bottom: 5px; }"
             "table { border-collapse: collapse; margin-top: 4px; margin-bottom: 12px; }"
             "th, td { border: 1px solid %1; }"
             "th { background-color: %2; text-align: left; font-weight: 600; }"
             ".note, pre, code { background-color: %2; }")
      .arg(line, shade);
}

}  // namespace kestrin::ui::help
