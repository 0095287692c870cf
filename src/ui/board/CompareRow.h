// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "core/sound/board/ComparedPlace.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;

namespace kestrin::ui::board {

/// What the two sides of a comparison are called.
struct CompareTexts {
  /// In front of the words for what only the other side has: "on the board", "in the other set".
  QString there;
  /// In place of what the other side does not have: "not on the board".
  QString notThere;
  /// The same of this side.
  QString notHere;
};

/// A place in the comparison: its name, both sounds with a button to hear each, how they differ, and a button that
/// takes the other side's over.
class CompareRow : public QWidget {
  Q_OBJECT

 public:
  /// The buttons of a row, from left to right.
  enum class Part { PlayHere, PlayThere, TakeOver };
  static constexpr std::array<Part, 3> kParts{Part::PlayHere, Part::PlayThere, Part::TakeOver};
  static constexpr int kHeight = 26;

  CompareRow(core::sound::ComparedPlace place, const CompareTexts& texts, QWidget* parent);

  [[nodiscard]] const core::sound::ComparedPlace& Place() const { return m_place; }
  /// The button; nullptr where there is nothing to press.
  [[nodiscard]] QWidget* Button(Part part) const { return m_buttons[static_cast<std::size_t>(part)]; }
  /// Which of the two play buttons stops now, if any does.
  void ShowPlaying(std::optional<Part> part);

  // Where the header's words stand.
  /// From the left edge to the first and to the second sound.
  [[nodiscard]] int SideAt(int number) const;

 signals:
  void pressed(board::CompareRow::Part part);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] QWidget* MakeSide(const std::optional<core::sound::ComparedSound>& sound, Part play,
                                  const QString& nothing);
  [[nodiscard]] QWidget* MakeVerdict(const CompareTexts& texts);
  [[nodiscard]] QWidget* MakeTakeOver();
  QLabel& AddFigure(QHBoxLayout& row, const QString& text, int width, bool isDifferent);
  void ShowIcons();

  core::sound::ComparedPlace m_place;
  QString m_title;
  std::array<QWidget*, kParts.size()> m_buttons{};
  std::array<QWidget*, 2> m_sides{};
  std::optional<Part> m_playing;
};

}  // namespace kestrin::ui::board
