// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

namespace kestrin::ui::motion {

/// What scrolls its contents where they have no room, on the ground that it stands on: as high as its contents, or
/// lower in a window that has no room for them.
class Shelf : public QScrollArea {
  Q_OBJECT

 public:
  /// `name` is its object name. The contents have a layout; the shelf owns them.
  Shelf(const QString& name, QWidget& contents, QWidget* parent);

  /// Takes notice of what its contents need now, also while nobody sees it.
  void Measure();

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace kestrin::ui::motion
