#include "ui/sound/SoundTexts.h"

#include <QLocale>

#include "core/base/PathText.h"
#include "core/base/Text.h"
#include "core/sound/MemoryUse.h"
#include "ui/kit/PathText.h"

namespace kestrin::ui::sound {

QString TextFrom(const std::filesystem::path& path) { return kit::TextOf(path); }

QString TextFrom(std::string_view utf8) { return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())); }

std::filesystem::path PathFrom(const QString& text) { return kit::PathOf(text); }

QString FileName(const std::filesystem::path& path) {
  return TextFrom(std::string_view(core::base::LastPathPiece(core::base::TextOf(path))));
}

QString Duration(std::int64_t samples) {
  return QLocale().toString(core::sound::MemoryUse::Seconds(samples), 'f', 1) + QStringLiteral(" s");
}

QString FileSize(std::uintmax_t bytes) {
  return QLocale().formattedDataSize(static_cast<qint64>(bytes), 0, QLocale::DataSizeTraditionalFormat);
}

QString SlotTitle(core::sound::SlotKind kind) { return TextFrom(core::sound::SlotOf(kind).title); }

QString SlotMnemonic(core::sound::SlotKind kind) {
  // The letter of each slot, none twice.
  constexpr std::array<std::pair<core::sound::SlotKind, int>, 7> kLetters{{
      {core::sound::SlotKind::Boot, 0},
      {core::sound::SlotKind::PwrOn, 6},
      {core::sound::SlotKind::PwrOff, 7},
      {core::sound::SlotKind::Idle, 0},
      {core::sound::SlotKind::Motion, 0},
      {core::sound::SlotKind::Impact, 2},
      {core::sound::SlotKind::Lockup, 0},
  }};
  QString title = SlotTitle(kind);
  for (const auto& [slot, place] : kLetters)
    if (slot == kind) title.insert(place, QLatin1Char('&'));
  return title;
}

QString PlaceTitle(const core::sound::SoundPlace& place) {
  const QString title = SlotTitle(place.kind);
  return core::sound::SlotOf(place.kind).isList ? title + QLatin1Char(' ') + QString::number(place.position) : title;
}

}  // namespace kestrin::ui::sound
