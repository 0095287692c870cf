// SPDX-License-Identifier: MIT
#pragma once

#include <QProgressBar>
#include <cstdint>

namespace kestrin::ui::update {

/// The filled part of a progress bar, over a background shape whose place it takes. Its width may be a fraction of a
/// pixel. It is a progress bar by its look and for screen readers; its place and its widths are its own.
class ProgressShape : public QProgressBar {
  Q_OBJECT

 public:
  /// `background` becomes the parent.
  explicit ProgressShape(QWidget& background);

  /// The width that stands for 100 %, in pixels.
  void SetFullWidth(std::int16_t width);
  /// Makes the shape's width that share of the full width. Callers pass 0 to 100.
  void SetPercentage(std::int32_t percentage);
  /// The width of the shape, in pixels.
  [[nodiscard]] double ShapeWidth() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::int16_t m_fullWidth = 0;
  std::int32_t m_percentage = 0;
};

}  // namespace kestrin::ui::update
