// SPDX-License-Identifier: MIT
#include "ui/led/FlowRow.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <numeric>

namespace kestrin::ui::led {

namespace {

int HeightOf(const QLayoutItem& item, int width) {
  const int height = item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
  return std::max(height, item.minimumSize().height());
}

}  // namespace

FlowRow::FlowRow(int spacing, int lineSpacing) : m_lineSpacing(lineSpacing) {
  setSpacing(spacing);
  setContentsMargins(0, 0, 0, 0);
}

FlowRow::~FlowRow() {
  // A layout that goes takes itself out of the one that it stands in.
  while (QLayoutItem* const item = FlowRow::takeAt(0)) delete item;
}

void FlowRow::Add(QWidget* control, int stretch) {
  addWidget(control);
  m_places.back().stretch = stretch;
}

void FlowRow::Add(QLayout* layout, int stretch) {
  addChildLayout(layout);
  addItem(layout);
  m_places.back().stretch = stretch;
}

void FlowRow::addItem(QLayoutItem* item) {
  m_places.push_back({item, 0});
  invalidate();
}

QLayoutItem* FlowRow::itemAt(int index) const {
  return index >= 0 && index < count() ? m_places[static_cast<std::size_t>(index)].item : nullptr;
}

QLayoutItem* FlowRow::takeAt(int index) {
  QLayoutItem* const item = itemAt(index);
  if (item != nullptr) m_places.erase(m_places.begin() + index);
  return item;
}

int FlowRow::heightForWidth(int width) const {
  int height = -m_lineSpacing;
  for (const Row& row : RowsIn(width)) height += m_lineSpacing + row.height;
  return std::max(height, 0);
}

QSize FlowRow::minimumSize() const {
  QSize size(0, 0);
  for (const Place& place : m_places) size = size.expandedTo(place.item->minimumSize());
  return size;
}

QSize FlowRow::sizeHint() const {
  QSize size(-spacing(), 0);
  for (const Place& place : m_places) {
    const QSize hint = place.item->sizeHint().expandedTo(place.item->minimumSize());
    size = {size.width() + spacing() + hint.width(), std::max(size.height(), hint.height())};
  }
  return size.expandedTo({0, 0});
}

void FlowRow::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  const Qt::LayoutDirection direction = parentWidget() == nullptr ? Qt::LeftToRight : parentWidget()->layoutDirection();
  const std::vector<Row> rows = RowsIn(rect.width());
  int spare = std::max(0, rect.height() - heightForWidth(rect.width()));
  int rowsLeft = static_cast<int>(rows.size());
  int top = rect.top();
  for (const Row& row : rows) {
    const int height = row.height + spare / rowsLeft;
    spare -= spare / rowsLeft--;
    int left = rect.left();
    for (std::size_t i = 0; i < row.places.size(); ++i) {
      const QRect place(left, top, row.widths[i], height);
      row.places[i].item->setGeometry(QStyle::visualRect(direction, rect, place));
      left += row.widths[i] + spacing();
    }
    top += height + m_lineSpacing;
  }
}

std::vector<FlowRow::Row> FlowRow::RowsIn(int width) const {
  std::vector<Row> rows;
  int used = 0;
  for (const Place& place : m_places) {
    const int needed = place.item->minimumSize().width();
    if (rows.empty() || used + spacing() + needed > width) {
      rows.emplace_back();
      used = needed;
    } else {
      used += spacing() + needed;
    }
    rows.back().places.push_back(place);
  }
  for (Row& row : rows) {
    row.widths = Share(row.places, width);
    for (std::size_t i = 0; i < row.places.size(); ++i)
      row.height = std::max(row.height, HeightOf(*row.places[i].item, row.widths[i]));
  }
  return rows;
}

std::vector<int> FlowRow::Share(const std::vector<Place>& places, int width) const {
  std::vector<int> widths;
  widths.reserve(places.size());
  for (const Place& place : places) widths.push_back(place.item->minimumSize().width());
  const int gaps = spacing() * (static_cast<int>(places.size()) - 1);
  int spare = width - gaps - std::accumulate(widths.begin(), widths.end(), 0);
  // First those that do not stretch, up to what they would like to have.
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (places[i].stretch > 0) continue;
    const int more = std::clamp(places[i].item->sizeHint().width() - widths[i], 0, std::max(spare, 0));
    widths[i] += more;
    spare -= more;
  }
  // Then the others, as their stretches say; who has more than that already takes no part.
  std::vector<bool> takesPart;
  takesPart.reserve(places.size());
  for (const Place& place : places) takesPart.push_back(place.stretch > 0);
  for (bool settled = false; !settled;) {
    settled = true;
    int room = std::max(spare, 0);
    int stretches = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!takesPart[i]) continue;
      room += widths[i];
      stretches += places[i].stretch;
    }
    std::vector<int> shares = widths;
    for (std::size_t i = 0; i < places.size(); ++i) {
      if (!takesPart[i]) continue;
      shares[i] = room * places[i].stretch / stretches;
      if (shares[i] >= widths[i]) {
        room -= shares[i];
        stretches -= places[i].stretch;
        continue;
      }
      takesPart[i] = false;
      settled = false;
      break;
    }
    if (settled) widths = shares;
  }
  return widths;
}

}  // namespace kestrin::ui::led
