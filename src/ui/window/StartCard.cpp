// SPDX-License-Identifier: MIT
#include "ui/window/StartCard.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::window {

namespace {

constexpr qreal kCorner = 8;
/// One and a half of the grid that icons are drawn on.
constexpr int kPicture = 36;

}  // namespace

StartCard::StartCard(const Texts& texts, const QIcon& icon, bool takesDrops, QWidget* parent)
    : QFrame(parent),
      m_icon(icon),
      m_takesDrops(takesDrops),
      m_picture(new QWidget(this)),
      m_title(kit::MakeLabel("", kit::TextStyle::Title, texts.title, this)),
      m_text(kit::MakeLabel("", takesDrops ? kit::TextStyle::Plain : kit::TextStyle::Soft, texts.text, this)),
      m_button(new QPushButton(texts.button, this)) {
  m_picture->setFixedSize(kPicture, kPicture);
  m_picture->setAttribute(Qt::WA_TransparentForMouseEvents);
  m_text->setWordWrap(true);
  m_text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  m_title->setWordWrap(true);
  m_button->setObjectName(texts.name);
  // What it does stands beside it, where a screen reader does not look.
  m_button->setAccessibleDescription(texts.title + ": " + texts.text);
  m_button->setToolTip(texts.text);
  kit::SetHelp(*m_button, texts.help, kit::HelpContext::FirstSteps);
  if (takesDrops) kit::Theme::MakePrimary(*m_button);
  auto* const column = new QVBoxLayout(this);
  column->setSpacing(kit::kGrid);
  column->addWidget(m_picture);
  column->addWidget(m_title);
  column->addWidget(m_text, 1);
  column->addWidget(m_button, 0, Qt::AlignLeft);
  Show(Detail::All);
}

int StartCard::HeightFor(int width, Detail detail) const {
  const int button = m_button->sizeHint().height();
  if (detail == Detail::ButtonOnly) return button;
  const int inside = width - 2 * kit::kWide;
  int height = 2 * kit::kWide + m_title->heightForWidth(inside) + kit::kGrid + button;
  if (detail != Detail::NoText) height += m_text->heightForWidth(inside) + kit::kGrid;
  if (detail == Detail::All) height += kPicture + kit::kGrid;
  return height;
}

void StartCard::Show(Detail detail) {
  m_detail = detail;
  const int inset = HasGround() ? kit::kWide : 0;
  layout()->setContentsMargins(inset, inset, inset, inset);
  m_picture->setVisible(detail == Detail::All);
  m_title->setVisible(HasGround());
  m_text->setVisible(detail <= Detail::NoPicture);
  update();
}

void StartCard::paintEvent(QPaintEvent* /*event*/) {
  if (!HasGround()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal line = m_takesDrops ? 2 : 1;
  const auto role = m_takesDrops ? kit::ColorRole::Accent : kit::ColorRole::Line;
  const Qt::PenStyle style = m_takesDrops ? Qt::DashLine : Qt::SolidLine;
  painter.setPen(QPen(kit::ColorOf(role, palette()), line, style));
  painter.setBrush(kit::ColorOf(m_takesDrops ? kit::ColorRole::AccentSoft : kit::ColorRole::Background, palette()));
  painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2), kCorner, kCorner);
  if (m_picture->isVisible()) m_icon.paint(&painter, m_picture->geometry(), Qt::AlignLeft | Qt::AlignTop);
}

}  // namespace kestrin::ui::window
