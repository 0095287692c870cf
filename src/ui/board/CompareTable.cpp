// SPDX-License-Identifier: MIT
#include "ui/board/CompareTable.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace kestrin::ui::board {

namespace {

constexpr int kFewestRows = 4;

}  // namespace

CompareTable::CompareTable(QWidget& before, QWidget* parent)
    : QScrollArea(parent), m_before(before), m_contents(new QWidget) {
  setObjectName("CompareTable");
  setAccessibleName(tr("Sounds of both sides"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumHeight(kFewestRows * CompareRow::kHeight);
  viewport()->setAutoFillBackground(false);
  setWidget(m_contents);
  m_contents->setAutoFillBackground(false);
  auto* const column = new QVBoxLayout(m_contents);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addStretch(1);
}

void CompareTable::Show(const core::sound::ComparedPlaces& places, const CompareTexts& texts) {
  // What plays goes on, and rows that are pressed stay.
  if (!m_rows.empty() && std::ranges::equal(m_rows, places, {}, &CompareRow::Place) && m_there == texts.there) return;
  m_there = texts.there;
  const std::optional<Spot> had = SpotOf(focusWidget());
  const bool hasFocus = had && m_rows[had->row]->Button(had->part)->hasFocus();
  const std::optional<core::sound::SoundPlace> at = had ? std::optional(m_rows[had->row]->Place().place) : std::nullopt;
  if (m_playing != nullptr) emit stopWanted();
  m_playing = nullptr;
  // Not at once: one of their buttons may have been pressed just now.
  for (CompareRow* const row : m_rows) {
    row->hide();
    row->disconnect(this);
    row->deleteLater();
  }
  m_rows.clear();
  auto* const column = static_cast<QVBoxLayout*>(m_contents->layout());
  QWidget* last = &m_before;
  for (const core::sound::ComparedPlace& place : places) {
    auto* const row = new CompareRow(place, texts, m_contents);
    column->insertWidget(static_cast<int>(m_rows.size()), row);
    m_rows.push_back(row);
    row->show();
    connect(row, &CompareRow::pressed, this, [this, row](CompareRow::Part part) { Press(*row, part); });
    for (const CompareRow::Part part : CompareRow::kParts) {
      QWidget* const button = row->Button(part);
      if (button == nullptr) continue;
      button->setFocusPolicy(Qt::ClickFocus);
      button->installEventFilter(this);
      setTabOrder(std::exchange(last, button), button);
    }
  }
  updateGeometry();
  Spot current;
  for (std::size_t row = 0; row < m_rows.size(); ++row)
    if (at && m_rows[row]->Place().place == *at) current = {row, had->part};
  if (m_rows.empty()) return;
  if (m_rows[current.row]->Button(current.part) == nullptr) {
    for (const CompareRow::Part part : CompareRow::kParts)
      if (m_rows[current.row]->Button(part) != nullptr) current.part = part;
  }
  QWidget* button = m_rows[current.row]->Button(current.part);
  if (button == nullptr) button = Beside(current, Qt::Key_Down);
  if (button == nullptr) return;
  MakeCurrent(*SpotOf(button));
  if (hasFocus) button->setFocus();
}

void CompareTable::Press(CompareRow& row, CompareRow::Part part) {
  if (part == CompareRow::Part::TakeOver) return emit takeOverWanted(row.Place());
  const bool stops = static_cast<QWidget*>(row.Button(part))->property("plays").toBool();
  ShowSilence();
  if (stops) return emit stopWanted();
  // What was played before falls silent by that.
  emit playWanted(part == CompareRow::Part::PlayHere ? *row.Place().here : *row.Place().there);
  m_playing = &row;
  row.Button(part)->setProperty("plays", true);
  row.ShowPlaying(part);
}

void CompareTable::ShowSilence() {
  if (m_playing == nullptr) return;
  m_playing->ShowPlaying({});
  for (const CompareRow::Part part : CompareRow::kParts)
    if (QWidget* const button = m_playing->Button(part)) button->setProperty("plays", false);
  m_playing = nullptr;
}

void CompareTable::TakeFocus() {
  for (CompareRow* const row : m_rows)
    for (const CompareRow::Part part : CompareRow::kParts)
      if (QWidget* const button = row->Button(part); button != nullptr && button->focusPolicy() == Qt::StrongFocus)
        return button->setFocus();
}

int CompareTable::SideAt(int number) const { return m_rows.empty() ? 0 : m_rows.front()->SideAt(number); }

QSize CompareTable::sizeHint() const {
  return {QScrollArea::sizeHint().width(),
          std::max(kFewestRows, static_cast<int>(m_rows.size())) * CompareRow::kHeight};
}

std::optional<CompareTable::Spot> CompareTable::SpotOf(const QObject* button) const {
  for (std::size_t row = 0; button != nullptr && row < m_rows.size(); ++row)
    for (const CompareRow::Part part : CompareRow::kParts)
      if (m_rows[row]->Button(part) == button) return Spot{row, part};
  return std::nullopt;
}

void CompareTable::MakeCurrent(const Spot& spot) {
  for (std::size_t row = 0; row < m_rows.size(); ++row)
    for (const CompareRow::Part part : CompareRow::kParts)
      if (QWidget* const button = m_rows[row]->Button(part))
        button->setFocusPolicy(row == spot.row && part == spot.part ? Qt::StrongFocus : Qt::ClickFocus);
}

QWidget* CompareTable::Beside(Spot spot, int key) const {
  const auto button = [this](std::size_t row, int part) {
    return m_rows[row]->Button(static_cast<CompareRow::Part>(part));
  };
  const int part = static_cast<int>(spot.part);
  if (key == Qt::Key_Left || key == Qt::Key_Right) {
    const int step = key == Qt::Key_Left ? -1 : 1;
    for (int next = part + step; next >= 0 && next < static_cast<int>(CompareRow::kParts.size()); next += step)
      if (QWidget* const found = button(spot.row, next)) return found;
    return nullptr;
  }
  const auto rows = static_cast<std::ptrdiff_t>(m_rows.size());
  const std::ptrdiff_t step = key == Qt::Key_Up ? -1 : 1;
  for (std::ptrdiff_t row = static_cast<std::ptrdiff_t>(spot.row) + step; row >= 0 && row < rows; row += step)
    if (QWidget* const found = button(static_cast<std::size_t>(row), part)) return found;
  return nullptr;
}

void CompareTable::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  emit laidOut();
}

bool CompareTable::eventFilter(QObject* watched, QEvent* event) {
  const std::optional<Spot> spot = SpotOf(watched);
  if (spot && event->type() == QEvent::FocusIn) {
    MakeCurrent(*spot);
    ensureWidgetVisible(m_rows[spot->row], 0, CompareRow::kHeight);
  }
  if (spot && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right) {
      if (QWidget* const button = Beside(*spot, key)) button->setFocus(Qt::OtherFocusReason);
      return true;
    }
  }
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace kestrin::ui::board
