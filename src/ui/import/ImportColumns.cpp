// SPDX-License-Identifier: MIT
#include "ui/import/ImportColumns.h"

#include <QFontMetrics>
#include <algorithm>

#include "core/sound/SlotKind.h"
#include "ui/import/ImportModel.h"
#include "ui/import/ImportTexts.h"
#include "ui/kit/Grid.h"

namespace kestrin::ui::imports {

namespace {

constexpr int kTickSide = 18;
/// Of a chip: the dot, the arrow and what is around them.
constexpr int kChipFrame = 46;
/// Of a button: the sign and what is around it; and one that has nothing but its sign.
constexpr int kHalfFrame = 40;
constexpr int kSignHalf = 32;
constexpr int kLeastName = 110;
constexpr int kMostName = 280;
constexpr int kLeastChanges = 170;

/// What a row does without when it is narrow.
enum class Room { Ample, NoSize, NoCaptions };

/// The widths that depend on texts alone.
struct Widths {
  int length;
  int slot;
  int size;
  int half;

  Widths(const QFontMetrics& metrics, Room room) {
    const auto wide = [&metrics](const QString& text) { return metrics.horizontalAdvance(text); };
    length = std::max(wide(QStringLiteral("000.0 s")), wide(ImportTexts::tr("Length")));
    size = std::max(wide(QStringLiteral("0000 kB")), wide(ImportTexts::tr("On board"))) + kit::kInset;
    if (room != Room::Ample) size = 0;
    half = std::max(wide(ImportTexts::tr("Before")), wide(ImportTexts::tr("After"))) + kHalfFrame;
    if (room == Room::NoCaptions) half = kSignHalf;
    slot = wide(SlotChoice(std::nullopt));
    for (const core::sound::Slot& one : core::sound::kSlots)
      slot = std::max(slot, wide(ImportModel::tr("%1 ?").arg(SlotChoice(one.kind))));
    slot += kChipFrame;
  }
  /// All but name and changes, with the gaps.
  [[nodiscard]] int Fixed() const {
    return kit::kInset + kTickSide + kit::kInset + length + 2 * kit::kInset + slot + kit::kInset + size + 2 * half +
           2 * kit::kInset;
  }
};

}  // namespace

int ImportColumns::LeastWidth(const QFontMetrics& metrics) {
  return Widths(metrics, Room::NoCaptions).Fixed() + kLeastName + kLeastChanges;
}

ImportColumns ImportColumns::Of(const QRect& row, const QFontMetrics& metrics) {
  Room room = Room::Ample;
  Widths widths(metrics, room);
  for (const Room less : {Room::NoSize, Room::NoCaptions}) {
    if (row.width() >= widths.Fixed() + kLeastName + kLeastChanges) break;
    room = less;
    widths = Widths(metrics, room);
  }
  const int left = std::max(0, row.width() - widths.Fixed());
  const int name = std::clamp(left * 2 / 5, std::min(kLeastName, left), kMostName);
  int x = row.left() + kit::kInset;
  const auto take = [&](int width, int gap) {
    const QRect part(x, row.top(), width, row.height());
    x += width + gap;
    return part;
  };
  ImportColumns columns;
  columns.hasSize = room == Room::Ample;
  columns.hasCaptions = room != Room::NoCaptions;
  columns.tick = take(kTickSide, kit::kInset);
  columns.name = take(name, kit::kInset);
  columns.length = take(widths.length, kit::kInset);
  columns.changes = take(left - name, kit::kInset);
  columns.slot = take(widths.slot, kit::kInset);
  columns.size = take(columns.hasSize ? widths.size - kit::kInset : 0, columns.hasSize ? kit::kInset : 0);
  columns.before = take(widths.half, 0);
  columns.after = take(widths.half, 0);
  return columns;
}

}  // namespace kestrin::ui::imports
