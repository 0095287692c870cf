// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <chrono>
#include <cstdint>
#include <optional>

#include "core/motion/SensorRecord.h"

namespace kestrin::ui::motion {

/// The picture of what a board feels: its three axes without gravity over the last ten seconds, its tilt below them,
/// the swings and taps that count, and the impact threshold as a red line that can be dragged.
///
/// The line is one more handle of the threshold's slider, for the pointer: whoever uses the keyboard uses the slider.
class SensorChart : public QWidget {
  Q_OBJECT

 public:
  explicit SensorChart(QWidget* parent = nullptr);

  /// Shows the record as it is now.
  void Show(const core::motion::SensorRecord& record);
  /// Where the red line is, 0 .. 31; below zero it is mirrored.
  void SetThreshold(std::int32_t threshold);
  /// Which threshold is suggested; empty for none.
  void SetSuggestion(std::optional<std::int32_t> threshold);

  /// Where the red line stands, in pixels from the top.
  [[nodiscard]] int LineY() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  /// The line was dragged to another threshold.
  void thresholdDragged(int threshold);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] QRect Plot() const;
  [[nodiscard]] QRect TiltStrip() const;
  [[nodiscard]] qreal YOf(std::int32_t value) const;
  [[nodiscard]] qreal XOf(std::chrono::milliseconds at) const;
  /// The threshold that stands at that height, 0 .. 31.
  [[nodiscard]] int ThresholdAt(int y) const;
  /// Whether the pointer takes hold of the line there, above or below zero.
  [[nodiscard]] bool IsAtLine(const QPoint& place) const;

  void PaintGround(QPainter& painter) const;
  void PaintScale(QPainter& painter) const;
  void PaintCurves(QPainter& painter) const;
  void PaintTilt(QPainter& painter) const;
  void PaintThreshold(QPainter& painter) const;
  void PaintSuggestion(QPainter& painter) const;
  void PaintMarks(QPainter& painter) const;
  /// What a screen reader says of the picture.
  void Describe();

  core::motion::SensorRecord m_record;
  std::int32_t m_threshold = 0;
  std::optional<std::int32_t> m_suggestion;
  bool m_isDragged = false;
  /// Since the description was made.
  QElapsedTimer m_described;
  std::size_t m_describedMarks = 0;
};

}  // namespace kestrin::ui::motion
