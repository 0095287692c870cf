#pragma once

#include <QLabel>

namespace kestrin::sound::ui {

/// One line of plain text that may be longer than its room: then the middle gives way to an ellipsis. The tool tip is
/// the place for the whole text.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrin::sound::ui
