#include "sound/ui/SoundTexts.h"

#include <QLocale>

#include "app/PathText.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "sound/MemoryUse.h"

namespace kestrin::sound::ui {

QString TextFrom(const std::filesystem::path& path) { return app::TextOf(path); }

QString TextFrom(std::string_view utf8) { return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())); }

std::filesystem::path PathFrom(const QString& text) { return app::PathOf(text); }

QString FileName(const std::filesystem::path& path) {
  return TextFrom(std::string_view(base::LastPathPiece(base::TextOf(path))));
}

QString Duration(std::int64_t samples) {
  return QLocale().toString(MemoryUse::Seconds(samples), 'f', 1) + QStringLiteral(" s");
}

QString FileSize(std::uintmax_t bytes) {
  return QLocale().formattedDataSize(static_cast<qint64>(bytes), 0, QLocale::DataSizeTraditionalFormat);
}

QString SlotTitle(SlotKind kind) { return TextFrom(SlotOf(kind).title); }

QString SlotMnemonic(SlotKind kind) {
  // The letter of each slot, none twice.
  constexpr std::array<std::pair<SlotKind, int>, 7> kLetters{{
      {SlotKind::Boot, 0},
      {SlotKind::PwrOn, 6},
      {SlotKind::PwrOff, 7},
      {SlotKind::Idle, 0},
      {SlotKind::Motion, 0},
      {SlotKind::Impact, 2},
      {SlotKind::Lockup, 0},
  }};
  QString title = SlotTitle(kind);
  for (const auto& [slot, place] : kLetters)
    if (slot == kind) title.insert(place, QLatin1Char('&'));
  return title;
}

QString PlaceTitle(const SoundPlace& place) {
  const QString title = SlotTitle(place.kind);
  return SlotOf(place.kind).isList ? title + QLatin1Char(' ') + QString::number(place.position) : title;
}

bool IsSoundName(const QString& name) { return name.endsWith(QLatin1String(".lsu"), Qt::CaseInsensitive); }

}  // namespace kestrin::sound::ui
