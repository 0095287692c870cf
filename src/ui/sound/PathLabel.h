// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace kestrin::ui::sound {

/// A path that stays in sight: in a narrow place it goes on in the next line, behind a separator. Only where not even
/// three lines hold it does its middle give way to an ellipsis. The tool tip is the place for the whole text.
class PathLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  /// The text as it stands in a label of that width.
  [[nodiscard]] QStringList Lines(int width) const;

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrin::ui::sound
