// SPDX-License-Identifier: MIT
#include "ui/led/PulseFrame.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/base/Numbers.h"
#include "core/base/PlainNumber.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/TopicOf.h"
#include "ui/led/BladeView.h"
#include "ui/led/Metrics.h"
#include "ui/led/PulsePlot.h"
#include "ui/led/PulseShape.h"
#include "ui/led/ValueBox.h"

namespace kestrin::ui::led {

namespace {

constexpr int kSwatch = 16;

QIcon Swatch(const QColor& color, qreal ratio) {
  QPixmap picture(QSize(kSwatch, kSwatch) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  // A grey edge shows black and white patches on every ground.
  painter.setPen(QColor(0x80, 0x88, 0x96));
  painter.setBrush(color);
  painter.drawRoundedRect(QRectF(0.5, 0.5, kSwatch - 1, kSwatch - 1), 4, 4);
  return QIcon(picture);
}

}  // namespace

PulseFrame::PulseFrame(const Facts& facts, const kit::Pictures& pictures, QWidget* parent)
    : Card(parent),
      m_pictures(pictures),
      m_state(
          kit::MakeLabel(QLatin1String(facts.name) + QStringLiteral("State"), kit::TextStyle::Plain, QString(), this)),
      m_blade(new BladeView(this)),
      m_plot(new PulsePlot(this)) {
  setObjectName(QLatin1String(facts.name));
  setAccessibleName(facts.title);
  kit::SetHelpContext(*this, facts.help);
  QLabel* const title = kit::MakeLabel(QString(), kit::TextStyle::Title, facts.title, this);
  // The theme's accent.
  m_state->setForegroundRole(QPalette::Link);
  m_state->setToolTip(tr("The board does not have this pulse yet"));
  auto* const head = new QHBoxLayout;
  head->addWidget(title);
  head->addStretch(1);
  head->addWidget(m_state);
  m_blade->setObjectName(QLatin1String(facts.name) + QStringLiteral("Blade"));
  m_blade->setAccessibleName(tr("%1: the blade").arg(facts.title));
  m_plot->setObjectName(QLatin1String(facts.name) + QStringLiteral("Plot"));
  m_plot->setAccessibleName(tr("%1 over time").arg(facts.title));

  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kInset);
  column->setSpacing(kit::kGrid);
  column->addLayout(head);
  column->addWidget(m_blade);
  column->addWidget(m_plot, 1);
  AddLevels(facts, *column);
  AddBoxes(facts, *column);
  AddSend(facts, *column);
  connect(m_plot, &PulsePlot::shareChanged, this, &PulseFrame::ShowBlade);
}

void PulseFrame::AddLevels(const Facts& facts, QBoxLayout& layout) {
  auto* const row = new QHBoxLayout;
  row->setSpacing(kit::kGrid);
  for (const Button& level : facts.levels) {
    auto* const button = new QPushButton(level.caption, this);
    button->setObjectName(QLatin1String(level.name));
    button->setAccessibleName(level.purpose);
    button->setToolTip(level.purpose);
    const std::size_t index = m_levels.size();
    connect(button, &QPushButton::clicked, this, [this, index] { emit levelRequested(index); });
    row->addWidget(button);
    m_levels.push_back(button);
    ShowLevel(index, {});
  }
  row->addStretch(1);
  layout.addLayout(row);
}

void PulseFrame::AddBoxes(const Facts& facts, QBoxLayout& layout) {
  auto* const row = new QHBoxLayout;
  row->setSpacing(kit::kInset);
  for (const Box& field : facts.boxes) {
    auto* const box = new ValueBox(this);
    box->setObjectName(QLatin1String(field.name));
    box->setAccessibleName(field.purpose);
    box->setToolTip(field.purpose);
    QLabel* const caption = kit::MakeLabel(QString(), kit::TextStyle::Soft, field.caption, this);
    caption->setBuddy(box);
    auto* const line = new QHBoxLayout;
    line->setSpacing(kit::kHalf);
    line->addWidget(box, 1);
    line->addWidget(kit::MakeLabel(QString(), kit::TextStyle::Plain, field.unit, this));
    auto* const column = new QVBoxLayout;
    column->setSpacing(kit::kHair);
    column->addWidget(caption);
    column->addLayout(line);
    row->addLayout(column, 1);
    const std::size_t index = m_boxes.size();
    connect(box, &QLineEdit::textChanged, this,
            [this, index](const QString& text) { emit typed(index, core::base::LeadingNumber(text.toStdString())); });
    connect(box, &ValueBox::left, this, [this, index] { emit boxLeft(index); });
    connect(box, &ValueBox::stepped, this, [this, index](int steps) { emit boxStepped(index, steps); });
    m_boxes.push_back(box);
  }
  layout.addLayout(row);
}

void PulseFrame::AddSend(const Facts& facts, QBoxLayout& layout) {
  m_send = new QPushButton(facts.send.caption, this);
  m_send->setObjectName(QLatin1String(facts.send.name));
  m_send->setAccessibleName(facts.send.purpose);
  m_send->setIconSize({kPicture, kPicture});
  kit::Theme::MakePrimary(*m_send);
  kit::SetHelp(*m_send, tr("Apply and Test"));
  connect(m_send, &QPushButton::clicked, this, &PulseFrame::sendRequested);
  auto* const row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(m_send);
  layout.addLayout(row);
  ShowSendPicture();
}

void PulseFrame::ShowNumber(std::size_t box, std::optional<double> number) {
  const QSignalBlocker quiet(m_boxes.at(box));
  m_boxes.at(box)->setText(number ? QString::fromStdString(core::base::PlainNumber(*number)) : QString());
}

void PulseFrame::ShowLevel(std::size_t button, const BladeLight& light) {
  m_levels.at(button)->setIcon(Swatch(light.OnBlack(), devicePixelRatioF()));
  m_levels.at(button)->setAccessibleDescription(light.OnBlack().name());
}

void PulseFrame::EnableLevels(bool enabled) {
  for (QPushButton* const button : m_levels) button->setEnabled(enabled);
}

void PulseFrame::ShowSent(bool sent) {
  const QString text = sent ? QString() : tr("not sent");
  m_state->setText(text);
  // An empty one would be read out as well.
  m_state->setVisible(!sent);
  m_send->setAccessibleDescription(text);
}

void PulseFrame::EnableSend(const QString& whyNot) {
  m_send->setEnabled(whyNot.isEmpty());
  m_send->setToolTip(whyNot.isEmpty() ? m_send->accessibleName() : whyNot);
}

void PulseFrame::ShowShape(const PulseShape& shape, int rest) { m_plot->Show(shape, rest); }

void PulseFrame::ShowLevels(const core::led::LED_Driver& driver, const Levels& low, const Levels& high) {
  m_driver = driver;
  m_low = low;
  m_high = high;
  m_plot->SetColors(Mix(driver, low).OnBlack(), Mix(driver, high).OnBlack());
  ShowBlade();
}

void PulseFrame::Restart() { m_plot->Restart(); }

void PulseFrame::ShowBlade() {
  Levels now{};
  for (std::size_t i = 0; i < now.size(); ++i) now[i] = m_low[i] + (m_high[i] - m_low[i]) * m_plot->Share();
  m_blade->Show(Mix(m_driver, now));
}

void PulseFrame::ShowSendPicture() {
  // On the accent's ground the picture takes the colour of the text there.
  QIcon icon = m_pictures.Tinted(QStringLiteral("apply.bmp"), kit::ColorOf(kit::ColorRole::AccentText, palette()));
  const QIcon off = m_pictures.Icon(QStringLiteral("apply_off.bmp"));
  if (!icon.isNull() && !off.isNull()) icon.addPixmap(off.pixmap(off.availableSizes().constFirst()), QIcon::Disabled);
  m_send->setIcon(icon);
}

void PulseFrame::changeEvent(QEvent* event) {
  Card::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && m_send != nullptr) ShowSendPicture();
}

}  // namespace kestrin::ui::led
