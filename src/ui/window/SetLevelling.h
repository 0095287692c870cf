// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <vector>

#include "core/base/Result.h"
#include "core/sound/SoundSet.h"
#include "core/sound/level/Levelling.h"

class QSettings;

namespace kestrin::core::sound {
class AudioTools;
}
namespace kestrin::ui::kit {
class CommandGate;
class Dialogs;
class LatestJob;
}  // namespace kestrin::ui::kit
namespace kestrin::ui::sound {
class LevelFrame;
class SoundPage;
}  // namespace kestrin::ui::sound

namespace kestrin::ui::window {

struct Surroundings;

/// Makes the sounds of the set equally loud, in its sheet: measures them on a thread of its own, then sets the volumes
/// as one step to undo.
class SetLevelling : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object. The settings keep the balance.
  SetLevelling(core::sound::SoundSet& set, const Surroundings& around, QObject* parent = nullptr);

  /// Whether the surroundings have what measures loudness; if not, nothing below does anything.
  [[nodiscard]] bool IsThere() const { return m_audio != nullptr; }
  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] sound::LevelFrame& Frame() const { return *m_frame; }
  /// Offers it on the page, and opens the sheet when the person wants it and the gate is free.
  void Attach(sound::SoundPage& page, kit::CommandGate& gate);
  /// Opens the sheet; a set without sounds is told instead.
  void Open();
  /// How loud the slots shall be against one another, as the person has chosen it last.
  [[nodiscard]] core::sound::Balance Kept() const;
  /// Gives up what is under way; no volume has changed then.
  void Stop();

 signals:
  /// Sounds are being measured: the set must stay as it is. Then they are not any more.
  void running(bool isRunning);
  /// A line for the person.
  void news(const QString& text);

 private:
  using Measured = core::base::Result<std::vector<core::sound::MeasuredSound>>;

  void Start();
  void Finish(const Measured& measured);
  void Keep(const core::sound::Balance& balance);
  void SetRunning(bool isRunning);

  core::sound::SoundSet& m_set;
  core::sound::AudioTools* m_audio;
  kit::Dialogs& m_dialogs;
  QSettings& m_settings;
  sound::LevelFrame* m_frame;
  kit::LatestJob* m_job;
  bool m_isRunning = false;
};

}  // namespace kestrin::ui::window
