// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>
#include <optional>
#include <vector>

#include "ui/board/CompareRow.h"

namespace kestrin::ui::board {

/// The rows of a comparison, one below the other. Tab comes to one of their buttons, and goes on behind the table; the
/// arrow keys lead from button to button.
class CompareTable : public QScrollArea {
  Q_OBJECT

 public:
  /// Tab comes to the table from `before`, which must outlive it.
  explicit CompareTable(QWidget& before, QWidget* parent = nullptr);

  /// The button that has the keyboard keeps it where the row is still there.
  void Show(const core::sound::ComparedPlaces& places, const CompareTexts& texts);
  /// The sound that was asked for last has ended.
  void ShowSilence();
  /// Gives the keyboard to the button that Tab would come to.
  void TakeFocus();
  /// From the left edge to the first and the second sound of the rows; 0 without rows.
  [[nodiscard]] int SideAt(int number) const;

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  void playWanted(const core::sound::ComparedSound& sound);
  void stopWanted();
  /// The rows have got another width.
  void laidOut();
  void takeOverWanted(const core::sound::ComparedPlace& place);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// A button of the table.
  struct Spot {
    std::size_t row = 0;
    CompareRow::Part part = CompareRow::Part::PlayHere;
  };

  void Press(CompareRow& row, CompareRow::Part part);
  [[nodiscard]] std::optional<Spot> SpotOf(const QObject* button) const;
  /// Lets Tab come to that button of the table alone.
  void MakeCurrent(const Spot& spot);
  /// The nearest button in that direction; nullptr when there is none.
  [[nodiscard]] QWidget* Beside(Spot spot, int key) const;

  QWidget& m_before;
  QWidget* m_contents;
  std::vector<CompareRow*> m_rows;
  /// Where the other side of the rows is.
  QString m_there;
  /// The row that plays.
  CompareRow* m_playing = nullptr;
};

}  // namespace kestrin::ui::board
