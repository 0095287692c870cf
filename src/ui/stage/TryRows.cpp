// SPDX-License-Identifier: MIT
#include "ui/stage/TryRows.h"

#include <algorithm>
#include <utility>

#include "ui/kit/PathText.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::stage {

using core::sound::SoundPlace;

TryRows::TryRows(core::sound::SoundSet& set, QObject* parent)
    : QAbstractListModel(parent), m_set(set), m_rows(RowsNow()) {
  m_set.AddListener(*this);
}

TryRows::~TryRows() { m_set.RemoveListener(*this); }

std::vector<TryRows::Row> TryRows::RowsNow() const {
  std::vector<Row> rows;
  for (const core::sound::Slot& slot : core::sound::kSlots)
    for (int position = 0; position <= m_set.Rows(slot.kind); ++position) rows.push_back({slot.kind, position});
  return rows;
}

void TryRows::SlotChanged(core::sound::SlotKind /*kind*/) {
  std::vector<Row> rows = RowsNow();
  if (rows == m_rows) {
    emit dataChanged(index(0), index(rowCount() - 1));
  } else {
    // Whoever stands in the list would stand elsewhere anyway.
    beginResetModel();
    m_rows = std::move(rows);
    m_lit.clear();
    endResetModel();
  }
  emit changed();
}

void TryRows::Light(const std::vector<SoundPlace>& places) {
  if (places == m_lit) return;
  std::vector<SoundPlace> touched = std::exchange(m_lit, places);
  touched.insert(touched.end(), places.begin(), places.end());
  for (const SoundPlace& place : touched)
    if (const QModelIndex row = IndexOf(place); row.isValid()) emit dataChanged(row, row);
}

std::optional<SoundPlace> TryRows::PlaceOf(const QModelIndex& index) const {
  if (!index.isValid()) return std::nullopt;
  const Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
  if (row.position == 0) return std::nullopt;
  return SoundPlace{row.kind, row.position};
}

QModelIndex TryRows::IndexOf(const SoundPlace& place) const {
  const auto row = std::find(m_rows.begin(), m_rows.end(), Row{place.kind, place.position});
  return row == m_rows.end() ? QModelIndex() : index(static_cast<int>(row - m_rows.begin()));
}

void TryRows::SetVolume(const QModelIndex& index, int percent) {
  const std::optional<SoundPlace> place = PlaceOf(index);
  if (!place || m_isBusy || m_set.IsLoading() || !m_set.Holds(*place)) return;
  // One that is louder already can be made less loud, and is not made so by going up.
  const int most = std::max<int>(100, m_set.At(*place).Volume());
  m_set.SetVolume(place->kind, place->position, static_cast<std::int16_t>(std::clamp(percent, 0, most)));
}

int TryRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

Qt::ItemFlags TryRows::flags(const QModelIndex& index) const {
  // The keyboard passes over titles.
  if (!PlaceOf(index)) return Qt::ItemNeverHasChildren;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

QVariant TryRows::data(const QModelIndex& index, int role) const {
  const Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
  if (role == kSlot) return static_cast<int>(row.kind);
  if (role == kIsTitle) return row.position == 0;
  return row.position == 0 ? DataOfTitle(row, role) : DataOfSound({row.kind, row.position}, role);
}

QVariant TryRows::DataOfTitle(const Row& row, int role) const {
  const QString title = sound::SlotTitle(row.kind);
  const bool isEmpty = m_set.Rows(row.kind) == 0;
  if (role == Qt::DisplayRole) return title;
  if (role == kNumber && isEmpty) return tr("no sound");
  if (role == Qt::AccessibleTextRole) return isEmpty ? tr("%1: no sound").arg(title) : title;
  return {};
}

QVariant TryRows::DataOfSound(const SoundPlace& place, int role) const {
  // While a set is being opened its rows may be fewer already than the list knows.
  if (!m_set.HasRow(place)) return {};
  const bool isMissing = !m_set.Holds(place);
  const int volume = isMissing ? m_set.AllMissing().At(place)->volume : m_set.At(place).Volume();
  const bool isLit = std::find(m_lit.begin(), m_lit.end(), place) != m_lit.end();
  const QString name = sound::FileName(m_set.PathAt(place));
  switch (role) {
    case Qt::DisplayRole:
      return name;
    case Qt::ToolTipRole:
      return kit::TextOf(m_set.PathAt(place));
    case kNumber:
      return core::sound::SlotOf(place.kind).isList ? QString::number(place.position) : QString();
    case kVolume:
      return volume;
    case kIsLit:
      return isLit;
    case kIsMissing:
      return isMissing;
    case Qt::AccessibleTextRole: {
      const QString where = sound::PlaceTitle(place);
      if (isMissing) return tr("%1: %2, missing").arg(where, name);
      return isLit ? tr("%1: %2, volume %3 %, sounding").arg(where, name, QString::number(volume))
                   : tr("%1: %2, volume %3 %").arg(where, name, QString::number(volume));
    }
    default:
      return {};
  }
}

}  // namespace kestrin::ui::stage
