// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include "ui/led/PulseShape.h"

namespace kestrin::ui::led {

/// A plot of a pulse over time in the colours of its light. A marker moves over it as the pulse plays, again and again,
/// for as long as the plot can be seen.
class PulsePlot : public QWidget {
  Q_OBJECT

 public:
  explicit PulsePlot(QWidget* parent = nullptr);

  /// The pulse; after each turn the marker rests for so many milliseconds.
  void Show(const PulseShape& shape, int rest);
  /// The light at the pulse's low and high level.
  void SetColors(const QColor& low, const QColor& high);
  /// Lets the pulse begin now.
  void Restart();
  /// The share of the high level (0 .. 1) that the marker is at.
  [[nodiscard]] double Share() const { return m_share; }

  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }

 signals:
  /// The marker has come to another share of the high level.
  void shareChanged(double share);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Move();
  [[nodiscard]] QRectF Room() const;
  [[nodiscard]] double XOf(double moment) const;
  [[nodiscard]] double YOf(double share) const;
  [[nodiscard]] QColor ColorAt(double share) const;
  void PaintPhases(QPainter& painter) const;
  void PaintNames(QPainter& painter) const;
  void PaintMarker(QPainter& painter) const;

  PulseShape m_shape;
  int m_rest = 0;
  QColor m_low = Qt::black;
  QColor m_high = Qt::black;
  QTimer m_timer;
  QElapsedTimer m_played;
  double m_moment = 0;
  double m_share = 0;
};

}  // namespace kestrin::ui::led
