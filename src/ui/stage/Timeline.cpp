// SPDX-License-Identifier: MIT
#include "ui/stage/Timeline.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::stage {

using core::sound::kSlots;
using kit::ColorOf;
using kit::ColorRole;

namespace {

constexpr int kRowHigh = 19;
constexpr int kRowLow = 13;
constexpr int kEdge = 3;
constexpr std::int64_t kTwoSeconds = 96000;

std::size_t RowOf(core::sound::SlotKind kind) {
  const auto* const slot =
      std::find_if(kSlots.begin(), kSlots.end(), [kind](const core::sound::Slot& one) { return one.kind == kind; });
  return static_cast<std::size_t>(slot - kSlots.begin());
}

QColor Tint(QColor color, float alpha) {
  color.setAlphaF(alpha);
  return color;
}

}  // namespace

Timeline::Timeline(const PlayedPieces& pieces, QWidget* parent) : QWidget(parent), m_pieces(pieces) {
  setObjectName(QStringLiteral("TryTimeline"));
  setAccessibleName(tr("The last 12 seconds"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize Timeline::sizeHint() const { return {600, static_cast<int>(kSlots.size()) * kRowHigh + fontMetrics().height()}; }

QSize Timeline::minimumSizeHint() const {
  return {300, static_cast<int>(kSlots.size()) * kRowLow + fontMetrics().height()};
}

double Timeline::RowHeight() const {
  return std::clamp((height() - fontMetrics().height()) / static_cast<double>(kSlots.size()), double{kRowLow},
                    kRowHigh * 1.4);
}

QRectF Timeline::Room() const {
  int names = 0;
  for (const core::sound::Slot& slot : kSlots)
    names = std::max(names, fontMetrics().horizontalAdvance(sound::SlotTitle(slot.kind)));
  const double left = names + kEdge + 3 * kit::kGrid;
  return {left, 0, width() - left - 2, RowHeight() * static_cast<double>(kSlots.size())};
}

double Timeline::XOf(std::int64_t sample) const {
  const QRectF room = Room();
  const double age = static_cast<double>(m_pieces.Now() - sample) / static_cast<double>(PlayedPieces::kSpan);
  return room.right() - std::clamp(age, 0.0, 1.0) * room.width();
}

QRectF Timeline::BoxOf(const Piece& piece) const {
  const double left = XOf(piece.from);
  const double right = XOf(piece.to.value_or(m_pieces.Now()));
  return {left, static_cast<double>(RowOf(piece.place.kind)) * RowHeight() + 1, std::max(right - left, 4.0),
          RowHeight() - 2};
}

std::optional<std::size_t> Timeline::PieceAt(const QPointF& where) const {
  // Of those that lie over one another the newest is seen.
  for (std::size_t i = m_pieces.All().size(); i > 0; --i)
    if (BoxOf(m_pieces.All()[i - 1]).contains(where)) return i - 1;
  return std::nullopt;
}

std::optional<std::size_t> Timeline::NumberOf(const std::optional<Mark>& mark) const {
  const std::vector<Piece>& pieces = m_pieces.All();
  const auto found = std::find_if(pieces.begin(), pieces.end(), [&mark](const Piece& one) {
    return mark == Mark{one.place, one.from};
  });
  if (found == pieces.end()) return std::nullopt;
  return static_cast<std::size_t>(found - pieces.begin());
}

void Timeline::Refresh() {
  const double pixel = PlayedPieces::kSpan / std::max(1.0, Room().width() * devicePixelRatioF());
  const bool hasMoved = std::abs(static_cast<double>(m_pieces.Now() - m_now)) >= pixel;
  if (!hasMoved && m_pieces.All().size() == m_count) return;
  m_now = m_pieces.Now();
  m_count = m_pieces.All().size();
  update();
}

void Timeline::PaintGrid(QPainter& painter) const {
  const QRectF room = Room();
  const QColor line = ColorOf(ColorRole::Line, palette());
  const QColor soft = ColorOf(ColorRole::Soft, palette());
  const QFontMetrics metrics = fontMetrics();
  for (std::size_t row = 0; row < kSlots.size(); ++row) {
    const double top = static_cast<double>(row) * RowHeight();
    painter.fillRect(QRectF(room.left(), top + 1, room.width(), RowHeight() - 2),
                     ColorOf(ColorRole::Background, palette()));
    painter.fillRect(QRectF(0, top + 1, kEdge, RowHeight() - 2), kit::SlotColor(kSlots[row].kind, palette()));
    painter.setPen(ColorOf(ColorRole::Text, palette()));
    painter.drawText(QRectF(kEdge + kit::kGrid, top, room.left(), RowHeight()), Qt::AlignVCenter | Qt::AlignLeft,
                     sound::SlotTitle(kSlots[row].kind));
  }
  for (std::int64_t age = kTwoSeconds; age < PlayedPieces::kSpan; age += kTwoSeconds) {
    const double x = XOf(m_pieces.Now() - age);
    painter.fillRect(QRectF(x, 0, 1, room.height()), line);
    painter.setPen(soft);
    painter.drawText(QRectF(x - 40, room.bottom(), 80, metrics.height()), Qt::AlignCenter,
                     tr("\u2212%1 s").arg(age / 48000));
  }
  painter.fillRect(QRectF(room.right(), 0, 2, room.height()), ColorOf(ColorRole::Accent, palette()));
  painter.setPen(ColorOf(ColorRole::Text, palette()));
  painter.drawText(QRectF(room.right() - 60, room.bottom(), 62, metrics.height()), Qt::AlignRight | Qt::AlignVCenter,
                   tr("now"));
}

void Timeline::PaintPiece(QPainter& painter, const Piece& piece, bool isChosen) const {
  const QRectF box = BoxOf(piece);
  const QColor color = kit::SlotColor(piece.place.kind, palette());
  const bool sounds = !piece.to;
  if (kit::IsHighContrast(palette())) {
    painter.fillRect(box, ColorOf(ColorRole::Card, palette()));
    painter.setPen(color);
    painter.drawRect(box.adjusted(0, 0, -1, -1));
  } else {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorOf(ColorRole::Card, palette()));
    painter.drawRoundedRect(box, 2, 2);
    painter.setBrush(Tint(color, sounds ? 0.42F : 0.26F));
    painter.drawRoundedRect(box, 2, 2);
  }
  painter.fillRect(QRectF(box.left(), box.top(), kEdge, box.height()), color);
  // The hum's turns; of a lock-up they would be a fence.
  if (piece.place.kind == core::sound::SlotKind::Idle && piece.turn > 0) {
    const std::int64_t end = piece.to.value_or(m_pieces.Now());
    const std::int64_t begin = std::max<std::int64_t>(0, m_pieces.Now() - PlayedPieces::kSpan - piece.from);
    for (std::int64_t turn = begin / piece.turn + 1; piece.from + turn * piece.turn < end; ++turn)
      painter.fillRect(QRectF(XOf(piece.from + turn * piece.turn), box.top() + 2, 1, box.height() - 4), color);
  }
  const QRectF room = box.adjusted(kEdge + kit::kHalf, 0, -kit::kHair, 0);
  if (room.width() > 2 * kit::kGrid) {
    painter.setPen(ColorOf(ColorRole::Text, palette()));
    painter.setClipRect(room);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, piece.name);
    painter.setClipping(false);
  }
  if (!isChosen) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ColorOf(ColorRole::Accent, palette()), 2));
  painter.drawRoundedRect(box.adjusted(1, 1, -1, -1), 2, 2);
}

void Timeline::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QFont small = font();
  // Names of low rows must not touch each other.
  if (RowHeight() < fontMetrics().height()) small.setPixelSize(std::max(8, static_cast<int>(RowHeight() - 2)));
  painter.setFont(small);
  PaintGrid(painter);
  const std::vector<Piece>& pieces = m_pieces.All();
  const std::optional<std::size_t> under = NumberOf(m_under);
  const std::optional<std::size_t> chosen = hasFocus() ? NumberOf(m_chosen) : std::nullopt;
  for (std::size_t i = 0; i < pieces.size(); ++i) PaintPiece(painter, pieces[i], under == i || chosen == i);
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ColorOf(ColorRole::Accent, palette()), 1));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

void Timeline::mouseMoveEvent(QMouseEvent* event) {
  const auto number = PieceAt(event->position());
  const Piece* const piece = number ? &m_pieces.All()[*number] : nullptr;
  const auto under = piece != nullptr ? std::optional(Mark{piece->place, piece->from}) : std::nullopt;
  if (under == m_under) return;
  m_under = under;
  setCursor(piece != nullptr ? Qt::PointingHandCursor : Qt::ArrowCursor);
  setToolTip(piece != nullptr ? tr("%1: %2").arg(sound::PlaceTitle(piece->place), piece->name) : QString());
  update();
}

void Timeline::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  m_under.reset();
  update();
}

void Timeline::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (const auto under = PieceAt(event->position())) emit chosen(m_pieces.All()[*under].place);
}

void Timeline::Choose(std::size_t piece) {
  const Piece& one = m_pieces.All()[piece];
  m_chosen = Mark{one.place, one.from};
  const double age = static_cast<double>(m_pieces.Now() - one.from) / 48000;
  setAccessibleDescription(tr("%1: %2, %3 s ago. Enter plays it again.")
                               .arg(sound::PlaceTitle(one.place), one.name, locale().toString(age, 'f', 1)));
  QAccessibleEvent told(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
  update();
}

void Timeline::keyPressEvent(QKeyEvent* event) {
  const std::size_t count = m_pieces.All().size();
  if (event->modifiers() != Qt::NoModifier || count == 0) return QWidget::keyPressEvent(event);
  const std::optional<std::size_t> number = NumberOf(m_chosen);
  switch (event->key()) {
    case Qt::Key_Left:
      return Choose(number ? *number - (*number > 0 ? 1 : 0) : count - 1);
    case Qt::Key_Right:
      return Choose(number ? std::min(*number + 1, count - 1) : count - 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (number && !event->isAutoRepeat()) emit chosen(m_pieces.All()[*number].place);
      return;
    default:
      return QWidget::keyPressEvent(event);
  }
}

void Timeline::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (!NumberOf(m_chosen) && !m_pieces.All().empty()) Choose(m_pieces.All().size() - 1);
  update();
}

void Timeline::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace kestrin::ui::stage
