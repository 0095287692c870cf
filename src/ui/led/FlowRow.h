// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <vector>

namespace kestrin::ui::led {

/// A row of what stands side by side where there is room for it, and in further rows below where there is not. Width
/// that is left over goes to those that stretch.
class FlowRow : public QLayout {
  Q_OBJECT

 public:
  /// `spacing` is the pixels between two neighbours, and `lineSpacing` those between two rows.
  FlowRow(int spacing, int lineSpacing);
  ~FlowRow() override;

  /// Adds a control or a layout at the end. Widths of those with a stretch are to each other as their stretches are, as
  /// far as each fits; 0 is for the width of its own that it would like to have.
  void Add(QWidget* control, int stretch);
  void Add(QLayout* layout, int stretch);

  void addItem(QLayoutItem* item) override;
  [[nodiscard]] int count() const override { return static_cast<int>(m_places.size()); }
  [[nodiscard]] QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;

  [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal | Qt::Vertical; }
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  /// Room for the widest alone.
  [[nodiscard]] QSize minimumSize() const override;
  /// Room for all side by side.
  [[nodiscard]] QSize sizeHint() const override;
  void setGeometry(const QRect& rect) override;

 private:
  struct Place {
    QLayoutItem* item;
    int stretch;
  };
  struct Row {
    std::vector<Place> places;
    std::vector<int> widths;
    int height = 0;
  };

  [[nodiscard]] std::vector<Row> RowsIn(int width) const;
  /// The widths in a row that is so wide.
  [[nodiscard]] std::vector<int> Share(const std::vector<Place>& places, int width) const;

  int m_lineSpacing;
  std::vector<Place> m_places;
};

}  // namespace kestrin::ui::led
