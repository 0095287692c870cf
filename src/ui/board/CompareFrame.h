// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "core/sound/board/ComparedPlace.h"
#include "ui/board/CompareRow.h"
#include "ui/kit/Card.h"

class QBoxLayout;
class QLabel;
class QPushButton;

namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::board {

class CompareTable;

/// The sheet "This set and the board": the open set and what the board holds, or another set, place by place. It
/// changes nothing itself.
class CompareFrame : public kit::Card {
  Q_OBJECT

 public:
  /// What the open set is compared with.
  struct Sides {
    /// Of the sheet: "This set and the board".
    QString caption;
    /// The open set's name.
    QString here;
    /// Heads the other side: "On the board", or the other set's name; `note` stands behind it.
    QString there;
    QString note;
    CompareTexts texts;
    /// What stands beside the buttons.
    QString advice;
    /// Whether the other side is the board, to which the set can be sent.
    bool isBoard = true;
  };

  /// Starts hidden. The pictures must outlive the sheet.
  explicit CompareFrame(const kit::Pictures& pictures, QWidget* parent = nullptr);

  /// Shows the sheet with all places.
  void Open();
  void Show(const Sides& sides, const core::sound::ComparedPlaces& places);
  /// Shows these words in place of the table: what the board holds cannot be told, or not yet.
  void ShowNothing(const Sides& sides, const QString& why);
  /// Why the set cannot be sent; "" when it can.
  void ShowWhyNotSend(const QString& why);
  /// The sound that was asked for has ended.
  void ShowSilence();
  /// "14 sounds are the same, 2 differ, 1 is only here."
  [[nodiscard]] static QString Summary(const core::sound::ComparedPlaces& places, const QString& there);

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  void playWanted(const core::sound::ComparedSound& sound);
  void stopWanted();
  void takeOverWanted(const core::sound::ComparedPlace& place);
  void sendWanted();
  /// The sheet is gone, whatever closed it.
  void closed();

 protected:
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  [[nodiscard]] QBoxLayout* MakeHead();
  [[nodiscard]] QPushButton* MakeFilter(const char* name);
  [[nodiscard]] QWidget* MakeTable();
  [[nodiscard]] QBoxLayout* MakeFooter();
  void ShowSides(const Sides& sides);
  void Refresh();
  void PlaceHeader();
  void ShowPicture();

  const kit::Pictures& m_pictures;
  core::sound::ComparedPlaces m_places;
  CompareTexts m_texts;

  QLabel* m_caption = nullptr;
  QLabel* m_summary = nullptr;
  QPushButton* m_all = nullptr;
  QPushButton* m_differences = nullptr;
  QWidget* m_header = nullptr;
  QLabel* m_here = nullptr;
  QLabel* m_there = nullptr;
  QLabel* m_nothing = nullptr;
  CompareTable* m_table = nullptr;
  QLabel* m_advice = nullptr;
  QPushButton* m_close = nullptr;
  QPushButton* m_send = nullptr;
};

}  // namespace kestrin::ui::board
