// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <vector>

#include "ui/kit/Card.h"
#include "ui/window/StartCard.h"

class QHBoxLayout;
class QLabel;

namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::window {

/// What stands where a set's lists would be as long as it is empty: the ways to start, one beside the other, with as
/// much about each as there is room for.
class StartCards : public kit::Card {
  Q_OBJECT

 public:
  /// Which ways there are beside opening a set.
  struct Ways {
    bool import = false;
    bool example = false;
  };

  StartCards(const kit::Pictures& pictures, const Ways& ways, QWidget* parent = nullptr);

  /// What can be pressed, in the order of the Tab key.
  [[nodiscard]] QList<QWidget*> Controls() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  void importWanted();
  void openWanted();
  void exampleWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  using Detail = StartCard::Detail;

  void Add(const StartCard::Texts& texts, const QIcon& icon, void (StartCards::*wanted)(), int stretch);
  /// The height of the tallest way in the width that all of it has.
  [[nodiscard]] int TallestCard(Detail detail) const;
  /// The height of all of it with that much about each way, in the width that it has.
  [[nodiscard]] int HeightFor(Detail detail) const;
  /// Shows as much as there is room for.
  void Fit();

  std::vector<StartCard*> m_cards;
  Detail m_shown = Detail::All;
  QLabel* m_title;
  QLabel* m_hint;
  QHBoxLayout* m_row;
};

}  // namespace kestrin::ui::window
