// SPDX-License-Identifier: MIT
#include "ui/import/ImportModel.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

#include "core/base/Text.h"
#include "core/sound/LSU_SoundFile.h"
#include "core/sound/import/FitAdvice.h"
#include "ui/kit/Translated.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::imports {

using core::sound::ImportOptions;
using core::sound::LSU_SoundFile;
using core::sound::MemoryUse;
using core::sound::NamedSound;
using core::sound::SlotGuess;
using core::sound::SlotKind;

namespace {

std::size_t PlaceOf(SlotKind kind) {
  return static_cast<std::size_t>(&core::sound::SlotOf(kind) - core::sound::kSlots.data());
}

QString NameOf(const ImportRow& row) {
  return QString::fromStdString(core::base::Shown(core::base::LastPathPiece(row.source.shownAs)));
}

std::int32_t SamplesOf(const ImportRow& row) { return static_cast<std::int32_t>(row.result.samples); }

}  // namespace

QString SlotChoice(std::optional<SlotKind> slot) {
  return slot ? sound::SlotTitle(*slot) : ImportModel::tr("Folder only");
}

void ImportModel::Start(const core::sound::SlotRoom& room, std::vector<MemoryUse::Sound> inTheSet,
                        std::int64_t capacity) {
  beginResetModel();
  m_rows.clear();
  m_room = room;
  m_inTheSet = std::move(inTheSet);
  m_capacity = capacity;
  m_isOrderChosen = false;
  m_playing = -1;
  endResetModel();
  Tell();
}

void ImportModel::Add(const std::vector<core::sound::ImportSource>& sources, const std::vector<std::string>& names,
                      std::optional<SlotKind> slot) {
  if (sources.empty()) return;
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(sources.size()) - 1);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    ImportRow row;
    row.id = m_nextId++;
    row.source = sources[i];
    row.name = names[i];
    if (!sources[i].reason.empty()) {
      row.state = ImportRow::State::Failed;
      row.isTicked = false;
      row.result.reason = sources[i].reason;
    }
    if (slot) {
      row.slot = slot;
      row.isSure = row.isSlotChosen = true;
    }
    m_rows.push_back(std::move(row));
  }
  endInsertRows();
  Guess();
}

void ImportModel::Take(int id, const core::sound::ImportedSound& result, const ImportOptions& with) {
  const int at = RowOf(id);
  if (at < 0) return;
  ImportRow& row = m_rows[static_cast<std::size_t>(at)];
  row.result = result;
  row.madeWith = with;
  row.state = result.path.empty() ? ImportRow::State::Failed : ImportRow::State::Ready;
  if (row.state == ImportRow::State::Failed) row.isTicked = false;
  Tell();
}

void ImportModel::Guess() {
  std::vector<NamedSound> sounds;
  std::vector<std::size_t> guessed;
  core::sound::SlotRoom room = m_room;
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const ImportRow& row = m_rows[i];
    if (row.state == ImportRow::State::Failed) {
      // It keeps its place among the others, and takes none of theirs.
      continue;
    }
    if (row.isSlotChosen) {
      if (row.slot && row.isTicked) --room[PlaceOf(*row.slot)];
      continue;
    }
    sounds.push_back({row.name, row.result.sourceSeconds});
    guessed.push_back(i);
  }
  const std::vector<SlotGuess> guesses = SlotGuess::Of(sounds, room);
  for (std::size_t i = 0; i < guesses.size(); ++i) {
    ImportRow& row = m_rows[guessed[i]];
    row.slot = guesses[i].slot;
    row.isSure = guesses[i].isSure;
    if (!row.isTickChosen) row.isTicked = !guesses[i].isLeftOut;
  }
  if (!m_isOrderChosen) {
    // Sounds that cannot be read stand where they would have come.
    std::vector<NamedSound> all;
    for (const ImportRow& row : m_rows) all.push_back({row.name, row.result.sourceSeconds});
    std::vector<SlotGuess> wanted = SlotGuess::Of(all);
    for (std::size_t i = 0; i < m_rows.size(); ++i)
      if (m_rows[i].state != ImportRow::State::Failed) wanted[i] = {m_rows[i].slot, m_rows[i].isSure, false};
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<int> ids;
    for (const QModelIndex& index : before) ids.push_back(At(index.row()).id);
    std::vector<ImportRow> ordered;
    for (const std::size_t row : SlotGuess::Order(all, wanted)) ordered.push_back(std::move(m_rows[row]));
    m_rows = std::move(ordered);
    QModelIndexList after;
    for (const int id : ids) after.append(index(RowOf(id)));
    changePersistentIndexList(before, after);
    emit layoutChanged();
  }
  Tell();
}

void ImportModel::SetTrim(bool trim) {
  m_trim = trim;
  Tell();
}

void ImportModel::SetLoop(bool loop) {
  m_loop = loop;
  Tell();
}

void ImportModel::SetPlaying(int id, Half half) {
  if (m_playing == id && m_playingHalf == half) return;
  m_playing = id;
  m_playingHalf = half;
  if (!m_rows.empty()) emit dataChanged(index(0), index(rowCount() - 1), {kPlaying});
}

void ImportModel::Tick(const QList<int>& rows, bool ticked) {
  for (const int at : rows) {
    ImportRow& row = m_rows.at(static_cast<std::size_t>(at));
    if (row.state == ImportRow::State::Failed) continue;
    row.isTicked = ticked;
    row.isTickChosen = true;
  }
  Tell();
}

void ImportModel::SetSlot(const QList<int>& rows, std::optional<SlotKind> slot) {
  for (const int at : rows) {
    ImportRow& row = m_rows.at(static_cast<std::size_t>(at));
    if (row.state == ImportRow::State::Failed) continue;
    row.slot = slot;
    row.isSure = row.isSlotChosen = true;
    // Who says where it goes wants it.
    row.isTicked = row.isTickChosen = true;
  }
  Tell();
}

int ImportModel::Move(int from, int to) {
  if (from < 0 || from >= rowCount() || to < 0 || to > rowCount()) return from;
  const int end = to > from ? to - 1 : to;
  if (end == from) return from;
  m_isOrderChosen = true;
  beginMoveRows({}, from, from, {}, to);
  ImportRow row = std::move(m_rows[static_cast<std::size_t>(from)]);
  m_rows.erase(m_rows.begin() + from);
  m_rows.insert(m_rows.begin() + end, std::move(row));
  endMoveRows();
  Tell();
  return end;
}

int ImportModel::RowOf(int id) const {
  const auto row = std::find_if(m_rows.begin(), m_rows.end(), [id](const ImportRow& one) { return one.id == id; });
  return row == m_rows.end() ? -1 : static_cast<int>(row - m_rows.begin());
}

std::vector<std::optional<SlotKind>> ImportModel::Destinations() const {
  std::vector<std::optional<SlotKind>> destinations;
  core::sound::SlotRoom room = m_room;
  for (const ImportRow& row : m_rows) {
    const bool hasRoom = row.IsComing() && row.slot && room[PlaceOf(*row.slot)]-- > 0;
    destinations.push_back(hasRoom ? row.slot : std::nullopt);
  }
  return destinations;
}

std::optional<SlotKind> ImportModel::Destination(int row) const {
  const ImportRow& wanted = At(row);
  if (!wanted.IsComing() || !wanted.slot) return std::nullopt;
  const auto before = std::count_if(m_rows.begin(), m_rows.begin() + row, [&wanted](const ImportRow& one) {
    return one.IsComing() && one.slot == wanted.slot;
  });
  return before < m_room[PlaceOf(*wanted.slot)] ? wanted.slot : std::nullopt;
}

ImportOptions ImportModel::OptionsOf(const ImportRow& row) const {
  const bool repeats = row.slot == SlotKind::Idle || row.slot == SlotKind::Lockup;
  return {m_trim, m_loop && repeats, std::nullopt};
}

bool ImportModel::IsReady(const ImportRow& row) const {
  return row.state == ImportRow::State::Ready && (row.IsTakenAsItIs() || row.madeWith == OptionsOf(row));
}

std::vector<int> ImportModel::Unready() const {
  std::vector<int> ids;
  for (const ImportRow& row : m_rows)
    if (row.state != ImportRow::State::Failed && !IsReady(row)) ids.push_back(row.id);
  return ids;
}

int ImportModel::Coming() const {
  return static_cast<int>(
      std::count_if(m_rows.begin(), m_rows.end(), [](const ImportRow& row) { return row.IsComing(); }));
}

int ImportModel::Failed() const {
  return static_cast<int>(std::count_if(m_rows.begin(), m_rows.end(),
                                        [](const ImportRow& row) { return row.state == ImportRow::State::Failed; }));
}

int ImportModel::ComingUnready() const {
  return static_cast<int>(std::count_if(m_rows.begin(), m_rows.end(),
                                        [this](const ImportRow& row) { return row.IsComing() && !IsReady(row); }));
}

bool ImportModel::HasUnsure() const {
  return std::any_of(m_rows.begin(), m_rows.end(), [](const ImportRow& row) { return row.slot && !row.isSure; });
}

Qt::CheckState ImportModel::AllTicked() const {
  const int coming = Coming();
  if (coming == 0) return Qt::Unchecked;
  return coming == rowCount() ? Qt::Checked : Qt::PartiallyChecked;
}

double ImportModel::Trimmed() const {
  double seconds = 0;
  for (const ImportRow& row : m_rows)
    if (row.IsComing() && IsReady(row) && row.madeWith.trim)
      seconds += std::max(0.0, row.result.sourceSeconds - row.result.seconds);
  return seconds;
}

std::vector<MemoryUse::Sound> ImportModel::Staying(const std::vector<std::optional<SlotKind>>& coming) const {
  std::vector<MemoryUse::Sound> staying;
  for (const MemoryUse::Sound& sound : m_inTheSet) {
    const bool isReplaced =
        !core::sound::SlotOf(sound.kind).isList && std::find(coming.begin(), coming.end(), sound.kind) != coming.end();
    if (!isReplaced) staying.push_back(sound);
  }
  return staying;
}

MemoryUse ImportModel::Use() const {
  const std::vector<std::optional<SlotKind>> coming = Destinations();
  std::vector<MemoryUse::Sound> sounds = Staying(coming);
  for (std::size_t row = 0; row < coming.size(); ++row)
    if (coming[row]) sounds.push_back({*coming[row], SamplesOf(m_rows[row])});
  return MemoryUse::Of(sounds, m_capacity);
}

QString ImportModel::Advice() const {
  const std::vector<std::optional<SlotKind>> destined = Destinations();
  std::int64_t staying = 0;
  for (const MemoryUse::Sound& sound : Staying(destined)) staying += sound.samples;
  std::vector<core::sound::ComingSound> coming;
  for (std::size_t row = 0; row < destined.size(); ++row)
    if (destined[row]) coming.push_back({m_rows[row].source.shownAs, *destined[row], m_rows[row].result.samples});
  return kit::Translated(core::sound::FitAdvice::For(coming, staying, m_capacity).text);
}

int ImportModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QString ImportModel::Changes(int at) const {
  const ImportRow& row = At(at);
  if (row.state == ImportRow::State::Failed) return tr("Left out: %1").arg(kit::Translated(row.result.reason));
  if (row.IsComing() && row.slot && !Destination(at)) {
    const QString slot = sound::SlotTitle(*row.slot);
    if (!core::sound::SlotOf(*row.slot).isList)
      return tr("%1 takes one sound: this one goes into the folder only").arg(slot);
    return tr("%1 is full: this one goes into the folder only").arg(slot);
  }
  if (!IsReady(row)) return tr("is being made ready ...");
  if (row.result.changes.empty()) return tr("nothing, fits as it is");
  QStringList changes;
  for (const std::string& change : row.result.changes) changes.append(kit::Translated(change));
  return changes.join(QStringLiteral(", "));
}

ImportModel::Tone ImportModel::ToneOf(int at) const {
  const ImportRow& row = At(at);
  if (row.state == ImportRow::State::Failed) return Tone::Error;
  if (row.IsComing() && row.slot && !Destination(at)) return Tone::Warning;
  return !IsReady(row) || row.result.changes.empty() ? Tone::Quiet : Tone::Plain;
}

QString ImportModel::Spoken(int at) const {
  const ImportRow& row = At(at);
  QStringList parts{NameOf(row)};
  if (row.state != ImportRow::State::Failed) {
    const QString slot = SlotChoice(row.slot);
    parts.append(row.slot && !row.isSure ? tr("%1, a guess").arg(slot) : slot);
    parts.append(row.isTicked ? tr("ticked") : tr("not ticked"));
  }
  if (const QString length = data(index(at), kLength).toString(); !length.isEmpty()) parts.append(length);
  parts.append(Changes(at));
  return parts.join(QStringLiteral(", "));
}

QVariant ImportModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ImportRow& row = At(index.row());
  const bool isFailed = row.state == ImportRow::State::Failed;
  const bool isKnown = row.state == ImportRow::State::Ready;
  switch (role) {
    case Qt::DisplayRole:
      return NameOf(row);
    case Qt::ToolTipRole:
      return QStringList{QString::fromStdString(core::base::Shown(row.source.shownAs)), Changes(index.row())}.join(
          '\n');
    case Qt::CheckStateRole:
      return row.IsComing() ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
      return Spoken(index.row());
    case kLength:
      return isKnown ? sound::Duration(row.result.samples) : QString();
    case kChanges:
      return Changes(index.row());
    case kTone:
      return static_cast<int>(ToneOf(index.row()));
    case kSlot:
      return row.slot ? static_cast<int>(*row.slot) : 0;
    case kSlotText:
      return row.slot && !row.isSure ? tr("%1 ?").arg(SlotChoice(row.slot)) : SlotChoice(row.slot);
    case kIsSure:
      return row.isSure || !row.slot;
    case kSize:
      return isKnown ? sound::FileSize(static_cast<std::uintmax_t>(LSU_SoundFile::CodedBytes(SamplesOf(row))))
                     : QString();
    case kIsFailed:
      return isFailed;
    case kCanPlay:
      return isFailed ? 0 : 1 + (isKnown ? 2 : 0);
    case kPlaying:
      return row.id == m_playing ? static_cast<int>(m_playingHalf) : -1;
    default:
      return {};
  }
}

bool ImportModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  // A screen reader ticks so.
  if (!index.isValid() || role != Qt::CheckStateRole || data(index, kIsFailed).toBool()) return false;
  Tick({index.row()}, value.toInt() == Qt::Checked);
  return true;
}

Qt::ItemFlags ImportModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren | Qt::ItemIsDropEnabled;
  if (!data(index, kIsFailed).toBool()) flags |= Qt::ItemIsDragEnabled | Qt::ItemIsUserCheckable;
  return flags;
}

void ImportModel::Tell() {
  if (!m_rows.empty()) emit dataChanged(index(0), index(rowCount() - 1));
  emit changed();
}

}  // namespace kestrin::ui::imports
