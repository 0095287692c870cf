// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QPalette>

class QPainter;
class QRect;

namespace kestrin::ui::sound {

/// The sign of a sound that plays, a triangle in the accent's colour, in the middle of the rectangle.
void PaintPlaySign(QPainter& painter, const QRect& where, const QPalette& palette);

/// A triangle to start playing, or a square to stop, in the colours of the palette's button texts.
[[nodiscard]] QIcon PlayIcon(bool stop, const QPalette& palette, qreal devicePixelRatio);

}  // namespace kestrin::ui::sound
