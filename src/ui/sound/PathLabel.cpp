// SPDX-License-Identifier: MIT
#include "ui/sound/PathLabel.h"

#include <QPainter>

namespace kestrin::ui::sound {

namespace {

constexpr qsizetype kMostLines = 3;

/// The path in pieces that end with their separators.
QStringList PiecesOf(const QString& path) {
  QStringList pieces;
  qsizetype begin = 0;
  for (qsizetype at = 0; at < path.size(); ++at) {
    if (path[at] != QLatin1Char('/') && path[at] != QLatin1Char('\\')) continue;
    pieces.append(path.mid(begin, at + 1 - begin));
    begin = at + 1;
  }
  if (begin < path.size()) pieces.append(path.mid(begin));
  return pieces;
}

}  // namespace

QStringList PathLabel::Lines(int width) const {
  const QFontMetrics metrics = fontMetrics();
  const auto fits = [&metrics, width](const QString& line) { return metrics.horizontalAdvance(line) <= width; };
  QStringList lines{QString()};
  for (const QString& piece : PiecesOf(text())) {
    if (!lines.last().isEmpty() && !fits(lines.last() + piece)) lines.append(QString());
    // A name that is longer than a line goes on in the next one at any letter.
    for (const QChar letter : piece) {
      if (!lines.last().isEmpty() && !fits(lines.last() + letter)) lines.append(QString());
      lines.last() += letter;
    }
  }
  if (lines.size() > kMostLines) {
    // The drive and the last folders say most.
    lines.remove(1, lines.size() - kMostLines);
    lines[1].prepend(QStringLiteral("\u2026/"));
    if (!fits(lines[1])) lines[1] = metrics.elidedText(lines[1].mid(2), Qt::ElideLeft, width);
  }
  return lines;
}

int PathLabel::heightForWidth(int width) const {
  return static_cast<int>(Lines(width).size()) * fontMetrics().lineSpacing();
}

QSize PathLabel::minimumSizeHint() const {
  constexpr int kLetters = 8;
  return {kLetters * fontMetrics().averageCharWidth(), fontMetrics().lineSpacing()};
}

void PathLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, Lines(width()).join(QLatin1Char('\n')));
}

}  // namespace kestrin::ui::sound
