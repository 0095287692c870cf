// SPDX-License-Identifier: MIT
#include "ui/stage/StageView.h"

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/ThemeColors.h"
#include "ui/stage/HiltPainter.h"

namespace kestrin::ui::stage {

namespace {

constexpr double kRadius = 8;
constexpr QRgb kDeep = 0xff0a0d11;
constexpr QRgb kHigh = 0xff131920;
constexpr QRgb kText = 0xffe8edf3;
constexpr QRgb kSoftText = 0xffa7b1bf;
constexpr QRgb kWarningText = 0xffffc266;
constexpr int kChipHeight = 22;
constexpr int kDot = 8;

/// Two sounds at once are the most: the hum and what lies over it.
constexpr int kMostChips = 2;

/// How wide the text of a chip is at most on a stage of that width, and all of it.
int ChipText(int stage) { return stage / 5; }
int ChipWidth(int text) { return text + kDot + 3 * kit::kGrid; }

/// The colours on the stage are those of the dark scheme, whichever the window has.
QPalette Dark() {
  static const QPalette palette = kit::PaletteOf({.isDark = true});
  return palette;
}

/// Eight bits are too few for such dark transitions: bands would be seen. A grain of less than one step hides them.
void AddGrain(QImage& image) {
  std::uint32_t state = 1;
  for (int y = 0; y < image.height(); ++y) {
    for (QRgb& pixel : std::span(reinterpret_cast<QRgb*>(image.scanLine(y)), static_cast<std::size_t>(image.width()))) {
      state = state * 1664525U + 1013904223U;
      const int grain = static_cast<int>(state >> 30) - 1;
      const auto with = [grain](int part) { return std::clamp(part + (grain > 0 ? 1 : 0), 0, 255); };
      pixel = qRgb(with(qRed(pixel)), with(qGreen(pixel)), with(qBlue(pixel)));
    }
  }
}

}  // namespace

StageView::StageView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("StageView"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::CrossCursor);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void StageView::Show(const StagePicture& picture) {
  const QSizeF size(this->size());
  const SaberPlace before(size, m_picture.degrees);
  const SaberPlace after(size, picture.degrees);
  QRegion changed;
  const bool hasMoved = m_picture.degrees != picture.degrees || m_picture.shine.extent != picture.shine.extent;
  const auto shines = [](const StagePicture& one) { return one.shine.extent > 0; };
  const bool isLit = shines(m_picture) || shines(picture);
  if (hasMoved || isLit) {
    // The hilt reaches as far behind the hand as the mouth lies before it.
    for (const SaberPlace& place : {before, after}) {
      const double hilt = 150 * place.Unit();
      changed += BladePainter::Reach(place).toAlignedRect();
      changed += QRectF(place.Hand().x() - hilt, place.Hand().y() - hilt, 2 * hilt, 2 * hilt).toAlignedRect();
    }
  }
  const bool hadTrail = std::abs(m_picture.degrees - m_picture.trail) > 1;
  if (hadTrail || std::abs(picture.degrees - picture.trail) > 1) {
    for (const double degrees : {m_picture.trail, picture.trail})
      changed += BladePainter::Reach(SaberPlace(size, degrees)).toAlignedRect();
    changed = QRegion(changed.boundingRect());
  }
  if (hasMoved || m_picture.shine.hue != picture.shine.hue || m_picture.shine.brightness != picture.shine.brightness)
    changed += FloorRoom();
  if (m_picture.name != picture.name || m_picture.line != picture.line || m_picture.warning != picture.warning ||
      m_picture.chips != picture.chips)
    changed += TextRoom();
  if (m_picture.hint != picture.hint) changed += QRect(0, height() - 3 * kChipHeight, width(), 3 * kChipHeight);
  m_picture = picture;
  if (!changed.isEmpty()) update(changed.boundingRect() & rect());
}

QRect StageView::TextRoom() const { return {0, 0, width(), 4 * kit::kWide + 5 * fontMetrics().height()}; }

QRect StageView::FloorRoom() const { return rect().adjusted(0, height() * 7 / 10, 0, 0); }

QPixmap StageView::MakeGround() const {
  const double ratio = devicePixelRatioF();
  QImage image((QSizeF(size()) * ratio).toSize(), QImage::Format_RGB32);
  const QSizeF all(image.size());
  QPainter painter(&image);
  if (kit::IsHighContrast(palette())) {
    image.fill(Qt::black);
  } else {
    QLinearGradient air(0, 0, 0, all.height());
    air.setColorAt(0, QColor(kDeep));
    air.setColorAt(0.5, QColor(kHigh));
    air.setColorAt(0.80, QColor(0xff0d1217));
    // The floor: a little of the air's light comes back from it.
    air.setColorAt(0.801, QColor(0xff11171d));
    air.setColorAt(1, QColor(0xff090c0f));
    painter.fillRect(image.rect(), air);
    QRadialGradient corners(QPointF(all.width() * 0.48, all.height() * 0.45), all.width() * 0.68);
    corners.setColorAt(0.35, QColor(0, 0, 0, 0));
    corners.setColorAt(1, QColor(0, 0, 0, 150));
    painter.fillRect(image.rect(), corners);
  }
  painter.end();
  if (!kit::IsHighContrast(palette())) AddGrain(image);
  // Round corners belong to the ground: whatever is painted on it stays within.
  painter.begin(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath outside;
  outside.addRect(image.rect());
  QPainterPath inside;
  inside.addRoundedRect(image.rect(), kRadius * ratio, kRadius * ratio);
  painter.fillPath(outside.subtracted(inside), palette().color(QPalette::Window));
  painter.end();
  QPixmap ground = QPixmap::fromImage(std::move(image));
  ground.setDevicePixelRatio(ratio);
  return ground;
}

void StageView::paintEvent(QPaintEvent* event) {
  if (m_ground.isNull() || m_ground.devicePixelRatioF() != devicePixelRatioF()) m_ground = MakeGround();
  QElapsedTimer time;
  time.start();
  QPainter painter(this);
  const QRect part = event->rect();
  const double ratio = devicePixelRatioF();
  painter.drawPixmap(QRectF(part), m_ground, QRectF(QPointF(part.topLeft()) * ratio, QSizeF(part.size()) * ratio));
  const SaberPlace place(QSizeF(size()), m_picture.degrees);
  BladePainter::PaintFloor(painter, QSizeF(size()), place, m_picture.shine);
  BladePainter::PaintTrail(painter, place, m_picture.trail, m_picture.shine);
  BladePainter::PaintBlade(painter, place, m_picture.shine);
  HiltPainter::Paint(painter, place, m_picture.shine);
  BladePainter::PaintSparks(painter, place, m_picture.shine, m_picture.sparkAge, m_picture.sparkSeed);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintTexts(painter);
  PaintChips(painter);
  if (hasFocus() && m_hasRing) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kit::ColorOf(kit::ColorRole::Accent, palette()), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius - 1, kRadius - 1);
  }
  m_paintMilliseconds = static_cast<double>(time.nsecsElapsed()) / 1e6;
}

void StageView::PaintTexts(QPainter& painter) const {
  const QRect room = rect().adjusted(kit::kWide, kit::kInset, -kit::kWide, -kit::kInset);
  QFont bold = font();
  bold.setBold(true);
  if (bold.pointSizeF() > 0) bold.setPointSizeF(bold.pointSizeF() * 1.2);
  painter.setFont(bold);
  painter.setPen(QColor(kText));
  const QFontMetrics large(bold);
  // Beside as many chips as there can be, so that it stays as it is when they come and go.
  const int chips = kMostChips * (ChipWidth(ChipText(width())) + kit::kGrid);
  painter.drawText(room, Qt::AlignTop | Qt::AlignLeft,
                   large.elidedText(m_picture.name, Qt::ElideMiddle, room.width() - chips));
  painter.setFont(font());
  QRect below = room.adjusted(0, large.height() + kit::kHalf, 0, 0);
  const auto paint = [&](const QString& text, QRgb color) {
    painter.setPen(QColor(color));
    QRect used;
    painter.drawText(below, Qt::AlignTop | Qt::AlignLeft | Qt::TextWordWrap, text, &used);
    below.setTop(used.bottom() + 1 + kit::kHalf);
  };
  paint(m_picture.line, kSoftText);
  if (!m_picture.warning.isEmpty()) paint(m_picture.warning, kWarningText);
  painter.setPen(QColor(kSoftText));
  painter.drawText(room.adjusted(room.width() / 3, 0, 0, 0), Qt::AlignBottom | Qt::AlignRight | Qt::TextWordWrap,
                   m_picture.hint);
}

void StageView::PaintChips(QPainter& painter) const {
  int right = width() - kit::kWide;
  for (auto chip = m_picture.chips.rbegin(); chip != m_picture.chips.rend(); ++chip) {
    const QString text = fontMetrics().elidedText(chip->text, Qt::ElideMiddle, ChipText(width()));
    const int wide = ChipWidth(fontMetrics().horizontalAdvance(text));
    const QRectF box(right - wide + 0.5, kit::kInset + 0.5, wide - 1, kChipHeight - 1);
    const QColor color = kit::SlotColor(chip->slot, Dark());
    QColor ground = color;
    ground.setAlphaF(0.2F);
    QColor edge = color;
    edge.setAlphaF(0.6F);
    // The blade may shine behind it.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kHigh));
    painter.drawRoundedRect(box, kChipHeight / 2.0, kChipHeight / 2.0);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(box, kChipHeight / 2.0, kChipHeight / 2.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(box.left() + kit::kGrid, box.center().y() - kDot / 2.0, kDot, kDot));
    painter.setPen(QColor(kText));
    painter.drawText(box.adjusted(2 * kit::kGrid + kit::kHalf, 0, -kit::kGrid, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     text);
    right -= wide + kit::kGrid;
  }
}

bool StageView::event(QEvent* event) {
  // What led the blade or held it leads it no more.
  if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide) emit released();
  return QWidget::event(event);
}

void StageView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_ground = {};
}

void StageView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  m_ground = {};
  update();
}

void StageView::enterEvent(QEnterEvent* event) {
  QWidget::enterEvent(event);
  emit entered();
}

void StageView::mouseMoveEvent(QMouseEvent* event) {
  emit led(SaberPlace::DegreesTowards(QSizeF(size()), event->position()));
}

void StageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) emit pressed();
}

void StageView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) emit released();
}

void StageView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  m_hasRing = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  update();
}

void StageView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace kestrin::ui::stage
