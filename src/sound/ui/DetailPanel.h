#pragma once

#include <filesystem>
#include <optional>

#include "app/theme/Card.h"
#include "sound/SoundSet.h"

class QLabel;
class QPushButton;
class QSlider;

namespace kestrin::sound::ui {

class SoundActions;
class WaveformView;

/// The selected sound: its name and shape, playing it, its volume.
class DetailPanel : public app::Card {
  Q_OBJECT

 public:
  explicit DetailPanel(SoundActions& actions, QWidget* parent = nullptr);

  /// Shows the sound of a slot, with its volume; one that is not there: nothing.
  void ShowPlace(const SoundPlace& place);
  /// Shows a file that is in no slot, so has no volume; empty: nothing.
  void ShowFile(const std::filesystem::path& path);
  /// Takes up what the set holds now.
  void Refresh();
  void SetPlaying(const std::filesystem::path& path);
  /// The slot's sound that is shown, if there is one.
  [[nodiscard]] std::optional<SoundPlace> Place() const { return m_place; }

 signals:
  void stopRequested();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void ShowSound(const std::filesystem::path& path, const QString& where);
  void ShowVolume(int percent);
  void ShowPlayButton();

  SoundActions& m_actions;
  std::optional<SoundPlace> m_place;
  std::filesystem::path m_path;
  std::filesystem::path m_playing;
  QLabel* m_name;
  QLabel* m_where;
  QPushButton* m_play;
  QLabel* m_volumeLabel;
  QSlider* m_volume;
  QLabel* m_percent;
  WaveformView* m_waveform;
};

}  // namespace kestrin::sound::ui
