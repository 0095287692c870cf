// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

namespace kestrin::ui::doctor {

/// What stands on the sheet's own ground as high as its contents, and scrolls in a window that has no room for them.
/// Its scroll bar stands in the margin to its right, so that the contents stay as wide as they are.
class Shelf : public QScrollArea {
  Q_OBJECT

 public:
  /// Takes the contents. Of its width, `margin` is to the right of them; both in pixels.
  Shelf(QWidget& contents, int width, int margin, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void SetMargin(int right);

  int m_margin;
};

}  // namespace kestrin::ui::doctor
