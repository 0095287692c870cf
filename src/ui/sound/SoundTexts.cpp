// SPDX-License-Identifier: MIT
#include "ui/sound/SoundTexts.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>

#include "core/base/PathText.h"
#include "core/base/Text.h"
#include "core/sound/MemoryUse.h"
#include "ui/kit/Translated.h"

namespace kestrin::ui::sound {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(SoundTexts)
};

}  // namespace

QString FileName(const std::filesystem::path& path) {
  return QString::fromStdString(core::base::LastPathPiece(core::base::TextOf(path)));
}

QString Duration(std::int64_t samples) {
  return Texts::tr("%1 s").arg(QLocale().toString(core::sound::MemoryUse::Seconds(samples), 'f', 1));
}

QString FileSize(std::uintmax_t bytes) {
  return QLocale().formattedDataSize(static_cast<qint64>(bytes), 0, QLocale::DataSizeTraditionalFormat);
}

QString SlotTitle(core::sound::SlotKind kind) { return kit::Translated(std::string(core::sound::SlotOf(kind).title)); }

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
  // In another language it may be shorter.
  QString title = SlotTitle(kind);
  for (const auto& [slot, place] : kLetters)
    if (slot == kind) title.insert(std::min<qsizetype>(place, title.size()), QLatin1Char('&'));
  return title;
}

SlotPurpose PurposeOf(core::sound::SlotKind kind) {
  using core::sound::SlotKind;
  switch (kind) {
    case SlotKind::Boot:
      return {Texts::tr("plays when the board starts"), Texts::tr("board starts")};
    case SlotKind::PwrOn:
      return {Texts::tr("plays when the blade comes out"), Texts::tr("blade comes out")};
    case SlotKind::PwrOff:
      return {Texts::tr("plays when the blade goes in"), Texts::tr("blade goes in")};
    case SlotKind::Idle:
      return {Texts::tr("hums while the blade is on"), Texts::tr("blade is on")};
    case SlotKind::Motion:
      return {Texts::tr("one of these plays when you swing"), Texts::tr("plays when you swing")};
    case SlotKind::Impact:
      return {Texts::tr("one of these plays when you hit"), Texts::tr("plays when you hit")};
    case SlotKind::Lockup:
      return {Texts::tr("plays while two blades are pressed together"), Texts::tr("blades pressed together")};
  }
  return {};
}

QString PlaceTitle(const core::sound::SoundPlace& place) {
  const QString title = SlotTitle(place.kind);
  return core::sound::SlotOf(place.kind).isList ? Texts::tr("%1 %2").arg(title, QString::number(place.position))
                                                : title;
}

QString WhyNotValid(const std::filesystem::path& path) {
  core::sound::LSU_SoundFile file;
  static_cast<void>(file.ReadFile(path));
  return kit::Translated(file.WhyNotValid());
}

}  // namespace kestrin::ui::sound
