// SPDX-License-Identifier: MIT
#include "ui/sound/DetailPanel.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>
#include <utility>

#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/PathText.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/NameLabel.h"
#include "ui/sound/PlayIcon.h"
#include "ui/sound/SoundActions.h"
#include "ui/sound/SoundTexts.h"
#include "ui/sound/WaveformView.h"

namespace kestrin::ui::sound {

namespace {

constexpr const char* kAsOnBoardKey = "asOnBoard";

}  // namespace

DetailPanel::DetailPanel(SoundActions& actions, QWidget* parent)
    : Card(parent),
      m_actions(actions),
      m_name(new NameLabel(this)),
      m_where(kit::MakeLabel("SelectedPlaceLabel", kit::TextStyle::Soft, "", this)),
      m_play(new QPushButton(this)),
      m_asOnBoard(new QCheckBox(tr("As on the board"), this)),
      m_volumeLabel(kit::MakeLabel("", kit::TextStyle::Plain, tr("&Volume"), this)),
      m_volume(new QSlider(Qt::Horizontal, this)),
      m_percent(kit::MakeLabel("VolumeLabel", kit::TextStyle::Plain, "", this)),
      m_waveform(new WaveformView(this)) {
  m_name->setObjectName(QStringLiteral("SelectedSoundLabel"));
  m_name->setTextFormat(Qt::PlainText);
  kit::SetTextStyle(*m_name, kit::TextStyle::Title);
  m_play->setObjectName(QStringLiteral("PlayBtn"));
  m_asOnBoard->setObjectName(QStringLiteral("AsOnBoardBox"));
  m_volume->setObjectName(QStringLiteral("VolSlider"));
  m_waveform->setObjectName(QStringLiteral("Waveform"));
  m_volume->setAccessibleName(tr("Volume of the selected sound, in percent"));

  kit::SetHelpContext(*this, kit::HelpContext::Volume);
  kit::SetHelpContext(*m_play, kit::HelpContext::Preview);
  kit::SetHelp(*m_asOnBoard, tr("Play and show sounds as the board will play them: coded for it, with their volume"),
               kit::HelpContext::AsOnBoard);
  kit::SetHelpContext(*m_waveform, kit::HelpContext::Waveform);

  m_volumeLabel->setBuddy(m_volume);
  m_volume->setRange(0, 100);
  m_volume->setPageStep(10);
  m_volume->setMinimumWidth(72);
  m_volume->setMaximumWidth(240);
  m_percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_percent->setMinimumWidth(m_percent->fontMetrics().horizontalAdvance(QStringLiteral("-100 %")));

  auto* head = new QHBoxLayout;
  head->setSpacing(kit::kGrid);
  head->addWidget(m_name);
  head->addWidget(m_where);
  head->addStretch(1);
  head->addWidget(m_play);
  head->addWidget(m_asOnBoard);
  head->addSpacing(kit::kGrid);
  head->addWidget(m_volumeLabel);
  head->addWidget(m_volume, 3);
  head->addWidget(m_percent);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kInset);
  column->setSpacing(kit::kGrid);
  column->addLayout(head);
  column->addWidget(m_waveform);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

  connect(m_play, &QPushButton::clicked, this, [this] {
    if (!m_playing.empty())
      emit stopRequested();
    else if (IsMissing())
      emit locateRequested(*m_place);
    else if (m_place)
      m_actions.Play(*m_place);
    else
      m_actions.Play(m_path);
  });
  connect(m_asOnBoard, &QCheckBox::toggled, this, [this](bool asOnBoard) {
    m_actions.SetAsOnBoard(asOnBoard);
    ShowWaveform();
    emit asOnBoardChanged(asOnBoard);
  });
  connect(m_volume, &QSlider::valueChanged, this, [this](int percent) {
    if (m_place) emit volumeChosen(percent);
  });
  ShowFile({});
}

bool DetailPanel::IsMissing() const { return m_place && m_actions.Set().AllMissing().At(*m_place) != nullptr; }

void DetailPanel::ShowPlace(const core::sound::SoundPlace& place) {
  const core::sound::SoundSet& set = m_actions.Set();
  if (!set.HasRow(place)) {
    ShowFile({});
    return;
  }
  m_place = place;
  QString where = PlaceTitle(place);
  if (m_count > 1) where = tr("%1 and %2 more").arg(where, QString::number(m_count - 1));
  if (const core::sound::MissingSound* const missing = set.AllMissing().At(place)) {
    ShowSound(missing->path, tr("%1, missing").arg(where));
    ShowVolume(missing->volume);
  } else {
    ShowSound(set.At(place).FileNameAndPath(), where);
    ShowVolume(set.At(place).Volume());
  }
}

void DetailPanel::ShowCount(int sounds) {
  if (std::exchange(m_count, sounds) != sounds) Refresh();
}

void DetailPanel::ShowFile(const std::filesystem::path& path) {
  m_place.reset();
  ShowSound(path, QString());
  ShowVolume(100);
}

void DetailPanel::Refresh() {
  if (m_place) ShowPlace(*m_place);
  ShowPlayButton();
}

void DetailPanel::ShowSound(const std::filesystem::path& path, const QString& where) {
  m_path = path;
  m_name->setText(path.empty() ? tr("No sound selected") : FileName(path));
  m_name->setToolTip(kit::TextOf(path));
  m_where->setText(where);
  m_where->setVisible(!where.isEmpty());
  m_waveform->SetColor(m_place ? kit::SlotColor(m_place->kind, palette()) : QColor());
  ShowPlayButton();
}

void DetailPanel::ShowVolume(int percent) {
  {
    // Showing a volume is no change of it, nor is cutting one that the slider cannot show.
    const QSignalBlocker quiet(m_volume);
    m_volume->setValue(percent);
  }
  const bool isUsable = m_place && !IsMissing() && !m_actions.IsBusy();
  m_volume->setEnabled(isUsable);
  m_volumeLabel->setEnabled(isUsable);
  m_percent->setEnabled(isUsable);
  m_percent->setText(m_place ? tr("%1 %").arg(percent) : QString());
  m_waveform->SetVolume(percent);
  ShowWaveform();
}

void DetailPanel::ShowWaveform() {
  m_waveform->ShowHeard(m_place ? m_actions.Heard(*m_place) : m_actions.Heard(m_path));
  m_waveform->setAccessibleName(m_actions.IsAsOnBoard() ? tr("Waveform of the selected sound as on the board")
                                                        : tr("Waveform of the selected sound"));
}

void DetailPanel::KeepAsOnBoard(QSettings& settings) {
  m_asOnBoard->setChecked(settings.value(kAsOnBoardKey).toBool());
  connect(m_asOnBoard, &QCheckBox::toggled, this,
          [&settings](bool asOnBoard) { settings.setValue(kAsOnBoardKey, asOnBoard); });
}

void DetailPanel::SetAsOnBoard(bool asOnBoard) { m_asOnBoard->setChecked(asOnBoard); }

void DetailPanel::SetPlaying(const std::filesystem::path& path) {
  m_playing = path;
  ShowPlayButton();
}

void DetailPanel::ShowPlayButton() {
  const bool isPlaying = !m_playing.empty();
  const bool locates = !isPlaying && IsMissing();
  m_play->setText(isPlaying ? tr("Stop") : tr("Play"));
  m_play->setToolTip(isPlaying ? tr("Stop playing (Escape)") : tr("Play the selected sound (Space)"));
  m_play->setIcon(PlayIcon(isPlaying, palette(), devicePixelRatioF()));
  if (locates) {
    m_play->setText(tr("Locate ..."));
    m_play->setToolTip(tr("Show the program where this sound is (Enter)"));
    m_play->setIcon({});
  }
  m_play->setEnabled(isPlaying || (!m_path.empty() && !(locates && m_actions.IsBusy())));
}

void DetailPanel::changeEvent(QEvent* event) {
  Card::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  ShowPlayButton();
  m_waveform->SetColor(m_place ? kit::SlotColor(m_place->kind, palette()) : QColor());
}

}  // namespace kestrin::ui::sound
