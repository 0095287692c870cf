// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QHash>
#include <QIcon>
#include <QPixmap>
#include <QString>

namespace kestrin::ui::kit {

/// The pictures in the program's folder. One that is missing or damaged is an empty icon or pixmap: a button with a
/// text keeps its text, and nothing else happens.
class Pictures {
 public:
  /// Icons are drawn on a grid of 24 x 24; whole multiples of it are sharpest.
  static constexpr int kIconSide = 24;

  explicit Pictures(QString folder);

  /// The picture `file` as an icon, sharp on every screen.
  [[nodiscard]] QIcon Icon(const QString& file) const;

  /// The same with a picture of its own for the disabled state; without that picture the state is shown by Qt's means.
  [[nodiscard]] QIcon Icon(const QString& file, const QString& disabledFile) const;

  /// The shape of the picture in one colour, for grounds on which its own colours do not stand out.
  [[nodiscard]] QIcon Tinted(const QString& file, const QColor& color) const;

  /// The picture, as large as fits into `size` (device-independent pixels), for a screen of that device pixel ratio.
  [[nodiscard]] QPixmap Pixmap(const QString& file, const QSize& size, qreal devicePixelRatio) const;

 private:
  [[nodiscard]] QPixmap Load(const QString& file) const;

  QString m_folder;
  /// Every file is read once: reading them all takes longer than anything else at the start.
  mutable QHash<QString, QPixmap> m_loaded;
};

}  // namespace kestrin::ui::kit
