// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>

namespace kestrin::ui::board {

/// What a board holds, in one line in a rounded frame: a dot that says how it stands to the open set, the words, and
/// how many more differences there are. A click opens the comparison, the arrow at its end a menu.
class BoardChip : public QToolButton {
  Q_OBJECT

 public:
  /// How what the board holds stands to the set that is open.
  enum class State {
    Asking,   ///< nobody knows yet
    Same,     ///< it is the open set
    Differs,  ///< it is the open set with differences
    Other,    ///< it is something else
    NotKnown  ///< the board does not tell
  };

  explicit BoardChip(QWidget* parent = nullptr);

  /// Shows these words behind "Board: ". `more` differences are not named in them; `all` is the whole truth, for the
  /// tool tip and for who cannot see the chip.
  void Show(State state, const QString& words, int more, const QString& all);
  [[nodiscard]] State Shown() const { return m_state; }
  /// The words, with the differences that are not named: "This set, but Motion 2 and Idle differ +1".
  [[nodiscard]] QString Words() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  State m_state = State::Asking;
  QString m_words;
  QString m_more;
};

}  // namespace kestrin::ui::board
