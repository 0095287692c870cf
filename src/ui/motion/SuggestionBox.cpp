// SPDX-License-Identifier: MIT
#include "ui/motion/SuggestionBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/Translated.h"

namespace kestrin::ui::motion {

SuggestionBox::SuggestionBox(QWidget* parent)
    : QFrame(parent),
      m_headline(kit::MakeLabel("SuggestionHeadline", kit::TextStyle::Title, "", this)),
      m_text(kit::MakeLabel("SuggestionText", kit::TextStyle::Plain, "", this)),
      m_use(new QPushButton(this)) {
  setObjectName("SuggestionBox");
  m_headline->setWordWrap(true);
  m_text->setWordWrap(true);
  m_use->setObjectName("UseThresholdBtn");
  connect(m_use, &QPushButton::clicked, this, [this] {
    if (m_threshold) emit useRequested(*m_threshold);
  });
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(kit::kHair);
  texts->addWidget(m_headline);
  texts->addWidget(m_text);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kit::kWide, kit::kGrid, kit::kInset, kit::kGrid);
  row->setSpacing(kit::kInset);
  row->addLayout(texts, 1);
  row->addWidget(m_use);
  Show({});
}

void SuggestionBox::Show(const core::motion::ThresholdAdvice& advice) {
  m_threshold = advice.threshold;
  m_headline->setText(kit::Translated(advice.headline));
  m_text->setText(kit::Translated(advice.text));
  m_use->setText(tr("Use %1").arg(advice.threshold.value_or(0)));
  m_use->setVisible(advice.threshold.has_value());
  setVisible(!advice.headline.empty());
}

void SuggestionBox::paintEvent(QPaintEvent* /*event*/) {
  constexpr int kRadius = 6;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath shape;
  shape.addRoundedRect(rect(), kRadius, kRadius);
  painter.setClipPath(shape);
  painter.fillRect(rect(), kit::ColorOf(kit::ColorRole::AccentSoft, palette()));
  painter.fillRect(QRect(0, 0, kit::kHalf, height()), kit::ColorOf(kit::ColorRole::Accent, palette()));
}

}  // namespace kestrin::ui::motion
