// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <filesystem>
#include <vector>

#include "core/sound/WaveformReader.h"

namespace kestrin::ui::kit {
class LatestJob;
}

namespace kestrin::ui::sound {

/// The shape of a sound as it will be played at its volume. Files are read on a thread of their own.
class WaveformView : public QWidget {
  Q_OBJECT

 public:
  explicit WaveformView(QWidget* parent = nullptr);

  /// Shows the file as it is; empty: nothing. The shape appears once the file has been read.
  void Show(const std::filesystem::path& path) { ShowHeard({path}); }
  /// Shows the sound as it is heard. As on the board it has its own volume, and full scale is the view's height; while
  /// only that volume changes, the shape stays until the new one is there.
  void ShowHeard(const core::sound::HeardSound& sound);
  /// The volume in percent with which the shape of a file is drawn.
  void SetVolume(int percent);
  /// The colour of the shape; an invalid one: the accent.
  void SetColor(const QColor& color);
  /// Whether the shape of the file is there.
  [[nodiscard]] bool HasShape() const { return !m_columns.empty(); }

  [[nodiscard]] QSize sizeHint() const override { return {400, 72}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {120, 40}; }

 signals:
  /// The shape of the file that was last shown has been read, or cannot be.
  void ready();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Take(std::vector<core::sound::WaveformColumn> columns);
  /// What a sample is multiplied by to be that many pixels high.
  [[nodiscard]] double Scale(double height) const;

  kit::LatestJob* m_job;
  core::sound::HeardSound m_sound;
  std::vector<core::sound::WaveformColumn> m_columns;
  QString m_note;
  QColor m_color;
  int m_volume = 100;
};

}  // namespace kestrin::ui::sound
