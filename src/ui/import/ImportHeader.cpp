// SPDX-License-Identifier: MIT
#include "ui/import/ImportHeader.h"

#include <QCheckBox>
#include <QPainter>
#include <QPainterPath>

#include "ui/import/ImportColumns.h"
#include "ui/import/ImportTexts.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::imports {

namespace {

constexpr int kHeight = 28;
/// Of the card in which it stands.
constexpr qreal kCorner = 7;

}  // namespace

ImportHeader::ImportHeader(QWidget* parent) : QWidget(parent), m_all(new QCheckBox(this)) {
  m_all->setObjectName(QStringLiteral("ImportAllCheck"));
  m_all->setAccessibleName(tr("All sounds"));
  m_all->setTristate(true);
  kit::SetHelp(*m_all, tr("Import all of these sounds, or none"));
  connect(m_all, &QCheckBox::clicked, this, [this] {
    // The person says all or none; "some" is only shown.
    const bool all = m_all->checkState() != Qt::Unchecked;
    m_all->setCheckState(all ? Qt::Checked : Qt::Unchecked);
    emit allTicked(all);
  });
}

void ImportHeader::Show(Qt::CheckState ticked) { m_all->setCheckState(ticked); }

void ImportHeader::SetRightMargin(int margin) {
  if (m_margin == margin) return;
  m_margin = margin;
  update();
}

QSize ImportHeader::sizeHint() const { return {ImportColumns::LeastWidth(fontMetrics()), kHeight}; }

void ImportHeader::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const QRect tick = ImportColumns::Of(rect(), fontMetrics()).tick;
  const QSize size = m_all->sizeHint();
  m_all->setGeometry(
      QRect(tick.center().x() - size.height() / 2 + 1, (height() - size.height()) / 2, size.width(), size.height()));
}

void ImportHeader::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath ground;
  ground.setFillRule(Qt::WindingFill);
  ground.addRoundedRect(rect(), kCorner, kCorner);
  ground.addRect(rect().adjusted(0, height() / 2, 0, 0));
  painter.fillPath(ground, kit::ColorOf(kit::ColorRole::Background, palette()));
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(kit::ColorOf(kit::ColorRole::Line, palette()));
  painter.drawLine(rect().bottomLeft(), rect().bottomRight());
  painter.setPen(kit::ColorOf(kit::ColorRole::Text, palette()));
  const ImportColumns columns = ImportColumns::Of(rect().adjusted(0, 0, -m_margin, 0), fontMetrics());
  const auto caption = [&](const QRect& where, const QString& text, int side) {
    painter.drawText(where, int{Qt::AlignVCenter} | side, text);
  };
  caption(columns.name, ImportTexts::tr("Sound"), Qt::AlignLeft);
  caption(columns.length, ImportTexts::tr("Length"), Qt::AlignRight);
  caption(columns.changes, ImportTexts::tr("What will be changed"), Qt::AlignLeft);
  caption(columns.slot, ImportTexts::tr("Slot"), Qt::AlignLeft);
  if (columns.hasSize) caption(columns.size, ImportTexts::tr("On board"), Qt::AlignRight);
  caption(columns.before.united(columns.after), ImportTexts::tr("Listen"), Qt::AlignLeft);
}

}  // namespace kestrin::ui::imports
