// SPDX-License-Identifier: MIT
#include "ui/sound/WaveformView.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "core/sound/level/SampleDecoder.h"
#include "ui/kit/LatestJob.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::sound {

namespace {

/// More columns than any window has bars: a wider window needs no second look at the file.
constexpr std::size_t kColumns = 1536;
constexpr int kBar = 3;

}  // namespace

WaveformView::WaveformView(QWidget* parent) : QWidget(parent), m_job(new kit::LatestJob(this)) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void WaveformView::ShowHeard(const core::sound::HeardSound& sound) {
  if (sound == m_sound) return;
  const bool isSameSound = sound.path == m_sound.path && sound.asOnBoard && m_sound.asOnBoard;
  m_sound = sound;
  if (!isSameSound) {
    m_columns.clear();
    m_note.clear();
    update();
  }
  m_job->Cancel();
  if (sound.path.empty()) return;
  m_job->Start([this, sound](const kit::LatestJob::GoOn& goOn, const kit::LatestJob::Deliver& deliver) {
    auto columns = core::sound::WaveformReader::Read(sound, kColumns, goOn);
    deliver([this, columns = std::move(columns)]() mutable {
      Take(columns ? std::move(*columns) : std::vector<core::sound::WaveformColumn>());
    });
  });
}

void WaveformView::Take(std::vector<core::sound::WaveformColumn> columns) {
  m_columns = std::move(columns);
  if (m_columns.empty())
    m_note = m_sound.asOnBoard ? tr("No board can be given this sound as it is") : tr("This file cannot be read");
  update();
  emit ready();
}

void WaveformView::SetVolume(int percent) {
  m_volume = percent;
  update();
}

void WaveformView::SetColor(const QColor& color) {
  m_color = color;
  update();
}

double WaveformView::Scale(double height) const {
  if (m_sound.asOnBoard) return height / core::sound::SampleDecoder::kFullScale;
  // A sound is played as loud as its own peak allows: its shape fills the height at 100 %.
  int peak = 1;
  for (const core::sound::WaveformColumn& column : m_columns)
    peak = std::max({peak, -int{column.low}, int{column.high}});
  return height / peak * m_volume / 100;
}

void WaveformView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath ground;
  ground.addRoundedRect(rect(), 5, 5);
  painter.fillPath(ground, kit::ColorOf(kit::ColorRole::AccentSoft, palette()));
  if (m_columns.empty()) {
    painter.setPen(kit::ColorOf(kit::ColorRole::Soft, palette()));
    painter.drawText(rect(), Qt::AlignCenter, m_note);
    return;
  }
  const QRectF room = QRectF(rect()).adjusted(8, 4, -8, -4);
  const auto bars = static_cast<std::size_t>(std::max(1.0, room.width() / kBar));
  const QColor color = m_color.isValid() ? m_color : kit::ColorOf(kit::ColorRole::Accent, palette());
  const double scale = Scale(room.height() / 2);
  const auto height = [&](int sample) { return std::clamp(sample * scale, -room.height() / 2, room.height() / 2); };
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  for (std::size_t bar = 0; bar < bars; ++bar) {
    const std::size_t from = bar * m_columns.size() / bars;
    const std::size_t to = std::max(from + 1, (bar + 1) * m_columns.size() / bars);
    int low = 0;
    int high = 0;
    for (std::size_t column = from; column < std::min(to, m_columns.size()); ++column) {
      low = std::min<int>(low, m_columns[column].low);
      high = std::max<int>(high, m_columns[column].high);
    }
    const double top = height(std::max(low, high));
    const double bottom = height(std::min(low, high));
    // Silence is a thin line.
    const double length = std::max(1.0, std::abs(top - bottom));
    const double middle = room.center().y() - (top + bottom) / 2;
    painter.drawRoundedRect(
        QRectF(room.left() + static_cast<double>(bar) * kBar, middle - length / 2, kBar - 1, length), 1, 1);
  }
}

}  // namespace kestrin::ui::sound
