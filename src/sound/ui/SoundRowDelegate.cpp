#include "sound/ui/SoundRowDelegate.h"

#include <QPainter>
#include <QWidget>

#include "app/theme/ThemeColors.h"
#include "sound/ui/PlayIcon.h"

namespace kestrin::sound::ui {

namespace {

constexpr int kMargin = 8;
/// A name is not squeezed below this for the sake of further figures.
constexpr int kLeastName = 72;

}  // namespace

void SoundRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  using app::ColorRole;
  const QPalette& palette = option.palette;
  const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
  const QColor text = palette.color(isEnabled ? QPalette::Normal : QPalette::Disabled, QPalette::Text);
  const QColor soft = isEnabled ? app::ColorOf(ColorRole::Soft, palette) : text;

  painter->save();
  painter->setFont(option.font);
  if (option.state.testFlag(QStyle::State_Selected))
    painter->fillRect(option.rect, app::ColorOf(ColorRole::Selection, palette));
  else if (option.state.testFlag(QStyle::State_MouseOver))
    painter->fillRect(option.rect, app::ColorOf(ColorRole::AccentSoft, palette));

  QRect room = option.rect.adjusted(kMargin, 0, -kMargin, 0);
  const QFontMetrics metrics(option.font);
  const bool isPlaying = index.data(kPlayingRole).toBool();
  if (const QString number = index.data(kNumberRole).toString(); !number.isEmpty()) {
    const int width = metrics.horizontalAdvance(QStringLiteral("12"));
    if (!isPlaying) {
      painter->setPen(soft);
      painter->drawText(QRect(room.left(), room.top(), width, room.height()), Qt::AlignVCenter | Qt::AlignRight,
                        number);
    }
    if (isPlaying) PaintPlaySign(*painter, QRect(room.left(), room.top(), width, room.height()), palette);
    room.setLeft(room.left() + width + kMargin);
  } else if (isPlaying) {
    PaintPlaySign(*painter, QRect(room.left(), room.top(), kMargin * 2, room.height()), palette);
    room.setLeft(room.left() + kMargin * 2);
  }

  painter->setPen(soft);
  const QString name = index.data(Qt::DisplayRole).toString();
  for (const int role : {kDetailRole, kFurtherRole, kLastRole}) {
    const QString detail = index.data(role).toString();
    if (detail.isEmpty()) continue;
    // Figures of a list stand in columns when they are about equally long.
    const int width = std::max(metrics.horizontalAdvance(detail), metrics.horizontalAdvance(QStringLiteral("00.0 s")));
    const int left = room.width() - width - kMargin;
    if (role == kFurtherRole && left < kLeastName) continue;
    if (role == kLastRole && left < metrics.horizontalAdvance(name)) continue;
    painter->drawText(room, Qt::AlignVCenter | Qt::AlignRight, detail);
    room.setRight(room.right() - width - kMargin);
  }

  painter->setPen(text);
  painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft, metrics.elidedText(name, Qt::ElideMiddle, room.width()));
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    painter->setPen(app::ColorOf(ColorRole::Accent, palette));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  painter->restore();
}

QSize SoundRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  const QFontMetrics metrics(option.font);
  return {metrics.averageCharWidth() * 12, RowHeight(metrics)};
}

}  // namespace kestrin::sound::ui
