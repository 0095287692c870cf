// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

#include "core/sound/SoundSet.h"
#include "ui/kit/Card.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QSettings;
class QSlider;

namespace kestrin::ui::sound {

class NameLabel;
class SoundActions;
class WaveformView;

/// The selected sound: its name and shape, playing it, its volume. Of several selected ones it shows the one where the
/// keyboard is, and sets the volume of all.
class DetailPanel : public kit::Card {
  Q_OBJECT

 public:
  explicit DetailPanel(SoundActions& actions, QWidget* parent = nullptr);

  /// Shows the sound of a slot, with its volume, or that it is missing; a row that is not there: nothing.
  void ShowPlace(const core::sound::SoundPlace& place);
  /// How many sounds the volume will be set for, the one that is shown among them.
  void ShowCount(int sounds);
  /// Shows a file that is in no slot, so has no volume; empty: nothing.
  void ShowFile(const std::filesystem::path& path);
  /// Takes up what the set holds now.
  void Refresh();
  /// The settings keep from now on whether sounds are heard and seen as the board plays them. They must outlive the
  /// panel.
  void KeepAsOnBoard(QSettings& settings);
  void SetAsOnBoard(bool asOnBoard);
  void SetPlaying(const std::filesystem::path& path);
  /// The slot's row that is shown, if there is one.
  [[nodiscard]] std::optional<core::sound::SoundPlace> Place() const { return m_place; }

 signals:
  void stopRequested();
  void asOnBoardChanged(bool asOnBoard);
  /// The person wants that volume for what is selected.
  void volumeChosen(int percent);
  /// The person wants to show the program this missing sound.
  void locateRequested(const core::sound::SoundPlace& place);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void ShowSound(const std::filesystem::path& path, const QString& where);
  void ShowVolume(int percent);
  void ShowPlayButton();
  void ShowWaveform();
  [[nodiscard]] bool IsMissing() const;

  SoundActions& m_actions;
  std::optional<core::sound::SoundPlace> m_place;
  int m_count = 1;
  std::filesystem::path m_path;
  std::filesystem::path m_playing;
  NameLabel* m_name;
  QLabel* m_where;
  QPushButton* m_play;
  QCheckBox* m_asOnBoard;
  QLabel* m_volumeLabel;
  QSlider* m_volume;
  QLabel* m_percent;
  WaveformView* m_waveform;
};

}  // namespace kestrin::ui::sound
