// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

namespace kestrin::ui::sound {

/// A list of sounds: plays with CTRL and the mouse, and tells what the person does with mouse and keyboard.
class SoundListView : public QListView {
  Q_OBJECT

 public:
  explicit SoundListView(QWidget* parent = nullptr);

  /// What stands in the list while it is empty; `shorter` where that is too long for the one line that there is, unless
  /// it is "".
  void SetEmptyText(const QString& text, const QString& shorter = {});
  /// The selected rows from the first to the last.
  [[nodiscard]] QList<int> SelectedRows() const;
  /// Makes that row the current and only selected one; -1: none.
  void SelectRow(int row);
  /// Selects just these rows, in rising order, and puts the keyboard on one (-1: on none), for rows that come back
  /// after the model was reset. The view stays where it is, and nobody has chosen anything.
  void Place(const QList<int>& selected, int keyboard);

 signals:
  /// The mouse was pressed on a row with CTRL and nothing else held, or the blank key on the current one.
  void playWanted(const QModelIndex& index);
  /// A double click without any key held.
  void doubleClickedPlain(const QModelIndex& index);
  void enterPressed();
  /// Delete or the backspace key, also in an empty list.
  void deletePressed();
  /// A row became the one that the person works with, by mouse or keyboard.
  void rowChosen(int row);
  /// The mouse was pressed in the list, on a row or beside all of them.
  void clickedInto();

 protected:
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                     const QEvent* event) const override;

 private:
  [[nodiscard]] QString EmptyTextFor(const QSize& room) const;
  /// Where no row is selected, selects the one where the keyboard is.
  void SelectCurrent();

  QString m_emptyText;
  QString m_shorterEmptyText;
  /// While the keyboard's row is only being marked: nobody has chosen it.
  bool m_placing = false;
};

}  // namespace kestrin::ui::sound
