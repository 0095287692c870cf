// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QCheckBox;

namespace kestrin::ui::imports {

/// What stands above the rows of the import sheet: the captions, and the tick for all rows.
class ImportHeader : public QWidget {
  Q_OBJECT

 public:
  explicit ImportHeader(QWidget* parent = nullptr);

  void Show(Qt::CheckState ticked);
  /// Leaves room for the scroll bar of the rows below.
  void SetRightMargin(int margin);
  [[nodiscard]] QSize sizeHint() const override;

 signals:
  /// The person wants all sounds ticked, or none.
  void allTicked(bool ticked);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QCheckBox* m_all;
  int m_margin = 0;
};

}  // namespace kestrin::ui::imports
