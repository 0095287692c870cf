// SPDX-License-Identifier: MIT
#include "ui/sound/MemoryGauge.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/MemoryBar.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

/// What each slot takes, a line for each that holds something.
QString Legend(const core::sound::MemoryUse& use) {
  QStringList lines;
  for (std::size_t place = 0; place < core::sound::kSlots.size(); ++place)
    if (use.samples[place] > 0)
      lines.append(MemoryGauge::tr("%1: %2, %3 %")
                       .arg(SlotTitle(core::sound::kSlots[place].kind), Duration(use.samples[place]))
                       .arg(100 * use.Share(use.samples[place]), 0, 'f', 1));
  return lines.isEmpty() ? MemoryGauge::tr("No sounds yet") : lines.join(QLatin1Char('\n'));
}

}  // namespace

QString MemoryGauge::DownloadTime(int seconds) {
  if (seconds < 100) return tr("%1 s").arg(seconds);
  return tr("%1 min %2 s").arg(seconds / 60).arg(seconds % 60);
}

QString MemoryGauge::Used(const core::sound::MemoryUse& use) {
  return tr("%1 of %2 used").arg(Duration(use.total), Duration(use.capacity));
}

QString MemoryGauge::Summary(const core::sound::MemoryUse& use) {
  QString used = Used(use);
  if (use.total == 0) return used;
  if (use.Fits()) return tr("%1 \u00b7 download about %2").arg(used, DownloadTime(use.downloadSeconds));
  // Rounded up: taking out what is named here must be enough.
  constexpr std::int64_t kTenth = core::sound::LSU_SoundFile::kSamplesPerSecond / 10;
  const std::int64_t excess = (use.Excess() + kTenth - 1) / kTenth * kTenth;
  return tr("%1 \u00b7 %2 too much: take some sounds out").arg(used, Duration(excess));
}

MemoryGauge::MemoryGauge(QWidget* parent)
    : Card(parent),
      m_title(kit::MakeLabel("", kit::TextStyle::Title, tr("Board memory"), this)),
      m_text(kit::MakeLabel("MemoryLabel", kit::TextStyle::Soft, "", this)),
      m_bar(new MemoryBar(this)) {
  m_bar->setObjectName(QStringLiteral("MemoryStatus"));
  kit::SetHelpContext(*this, kit::HelpContext::Memory);
  m_text->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

  auto* head = new QHBoxLayout;
  head->setSpacing(kit::kGrid);
  head->addWidget(m_title);
  head->addWidget(m_text, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kInset);
  column->setSpacing(kit::kGrid);
  column->addLayout(head);
  column->addWidget(m_bar);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MemoryGauge::Show(const core::sound::MemoryUse& use) {
  const QString summary = Summary(use);
  const QString legend = Legend(use);
  m_bar->Show(use);
  m_text->setText(summary);
  m_text->setForegroundRole(use.Fits() ? QPalette::PlaceholderText : QPalette::BrightText);
  m_bar->setToolTip(legend);
  m_text->setToolTip(legend);
  m_bar->setAccessibleName(tr("Board memory: %1").arg(summary));
  m_bar->setAccessibleDescription(legend);
}

}  // namespace kestrin::ui::sound
