// SPDX-License-Identifier: MIT
#include "ui/sound/SlotListModel.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "ui/kit/PathText.h"
#include "ui/sound/SoundRowDelegate.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

constexpr const char* kSoundsFormat = "application/x-kestrin-sounds";
constexpr const char* kUrlFormat = "text/uri-list";

}  // namespace

SlotListModel::SlotListModel(const core::sound::SoundSet& set, core::sound::SlotKind kind, QObject* parent)
    : QAbstractListModel(parent), m_set(set), m_kind(kind) {
  Refresh();
}

void SlotListModel::Refresh() {
  std::vector<Row> rows;
  for (int position = 1; position <= m_set.Rows(m_kind); ++position) {
    const core::sound::SoundPlace place{m_kind, position};
    if (const core::sound::MissingSound* const missing = m_set.AllMissing().At(place)) {
      rows.push_back({missing->path, FileName(missing->path), 0, missing->volume, true});
      continue;
    }
    const core::sound::LSU_SoundFile& file = m_set.At(place);
    rows.push_back(
        {file.FileNameAndPath(), FileName(file.FileNameAndPath()), file.NrOfSamples(), file.Volume(), false});
  }
  const auto before = static_cast<int>(m_rows.size());
  const auto now = static_cast<int>(rows.size());
  if (now > before) {
    beginInsertRows({}, before, now - 1);
    m_rows = std::move(rows);
    endInsertRows();
  } else if (now < before) {
    beginRemoveRows({}, now, before - 1);
    m_rows = std::move(rows);
    endRemoveRows();
  } else {
    m_rows = std::move(rows);
  }
  if (const int kept = std::min(before, now); kept > 0) emit dataChanged(index(0), index(kept - 1));
}

void SlotListModel::SetPlaying(const std::filesystem::path& path) {
  m_playing = path;
  if (!m_rows.empty()) emit dataChanged(index(0), index(rowCount() - 1), {SoundRowDelegate::kPlayingRole});
}

std::optional<SlotListModel::Dragged> SlotListModel::DraggedFrom(const QMimeData& data) {
  if (!data.hasFormat(QLatin1String(kSoundsFormat))) return std::nullopt;
  QByteArray bytes = data.data(QLatin1String(kSoundsFormat));
  QDataStream stream(&bytes, QIODevice::ReadOnly);
  qint32 kind = 0;
  QList<qint32> positions;
  stream >> kind >> positions;
  const bool isSlot =
      std::any_of(core::sound::kSlots.begin(), core::sound::kSlots.end(),
                  [&](const core::sound::Slot& slot) { return static_cast<qint32>(slot.kind) == kind; });
  if (stream.status() != QDataStream::Ok || !isSlot) return std::nullopt;
  return Dragged{static_cast<core::sound::SlotKind>(kind), {positions.begin(), positions.end()}};
}

std::vector<std::filesystem::path> SlotListModel::FilesOf(const QMimeData& data) {
  std::vector<std::filesystem::path> files;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) files.push_back(kit::PathOf(url));
  return files;
}

int SlotListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QString SlotListModel::VolumeOf(const Row& row) { return row.volume == 100 ? QString() : tr("%1 %").arg(row.volume); }

QVariant SlotListModel::data(const QModelIndex& index, int role) const {
  const Row& row = m_rows.at(static_cast<std::size_t>(index.row()));
  if (role == Qt::DisplayRole) return row.name;
  if (role == SoundRowDelegate::kNumberRole)
    return core::sound::SlotOf(m_kind).isList ? QString::number(index.row() + 1) : QString();
  const QString where = PlaceTitle({m_kind, index.row() + 1});
  return row.isMissing ? DataOfMissing(row, where, role) : DataOfSound(row, where, role);
}

QVariant SlotListModel::DataOfSound(const Row& row, const QString& where, int role) const {
  const QString volume = VolumeOf(row);
  const QString duration = Duration(row.samples);
  const QString size = FileSize(core::sound::LSU_SoundFile::FileBytes(row.samples));
  switch (role) {
    case Qt::ToolTipRole:
      return tr("%1\n%2, %3").arg(kit::TextOf(row.path), duration, size);
    case SoundRowDelegate::kTimeRole:
      return duration;
    case SoundRowDelegate::kVolumeRole:
      return core::sound::SlotOf(m_kind).isList ? volume : QString();
    case SoundRowDelegate::kSizeRole:
      return size;
    case kUnusualRole:
      return volume;
    case SoundRowDelegate::kPlayingRole:
      return !m_playing.empty() && row.path == m_playing;
    case Qt::AccessibleTextRole:
      return volume.isEmpty() ? tr("%1: %2, %3, %4").arg(where, row.name, duration, size)
                              : tr("%1: %2, %3, %4, volume %5").arg(where, row.name, duration, size, volume);
    default:
      return {};
  }
}

QVariant SlotListModel::DataOfMissing(const Row& row, const QString& where, int role) {
  switch (role) {
    case Qt::ToolTipRole:
      return tr("%1\nThis file could not be found or is not valid.\n"
                "\"Locate ...\" or Enter shows the program where it is.")
          .arg(kit::TextOf(row.path));
    case SoundRowDelegate::kActionRole:
      return tr("Locate ...");
    case kUnusualRole:
      return tr("Missing");
    case Qt::AccessibleTextRole:
      return tr("%1: %2, missing, Enter locates it").arg(where, row.name);
    default:
      return {};
  }
}

Qt::ItemFlags SlotListModel::flags(const QModelIndex& index) const {
  // Drops go between rows, so only the list itself takes them.
  return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren
                         : Qt::ItemIsDropEnabled;
}

QStringList SlotListModel::mimeTypes() const { return {QLatin1String(kSoundsFormat), QLatin1String(kUrlFormat)}; }

QMimeData* SlotListModel::mimeData(const QModelIndexList& indexes) const {
  QList<qint32> positions;
  for (const QModelIndex& index : indexes) positions.append(index.row() + 1);
  std::sort(positions.begin(), positions.end());
  QList<QUrl> urls;
  for (const qint32 position : positions)
    if (const Row& row = m_rows.at(static_cast<std::size_t>(position - 1)); !row.isMissing)
      urls.append(kit::UrlOf(row.path));
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream << static_cast<qint32>(m_kind) << positions;
  auto* data = new QMimeData;
  data->setData(QLatin1String(kSoundsFormat), bytes);
  data->setUrls(urls);
  return data;
}

}  // namespace kestrin::ui::sound
