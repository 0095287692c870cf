// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "core/base/Clock.h"
#include "core/saber/Saber.h"
#include "ui/window/AboutFacts.h"

class QSettings;

namespace kestrin::core::base {
class Archives;
class Disk;
}  // namespace kestrin::core::base
namespace kestrin::core::device {
class THIDagent;
}
namespace kestrin::core::device {
class KeptParameters;
}
namespace kestrin::core::sound {
class AudioTools;
class SoundOutput;
class SoundPlayer;
}  // namespace kestrin::core::sound

namespace kestrin::ui::doctor {
struct DoctorMeans;
}

namespace kestrin::ui::kit {
class CommandGate;
class Dialogs;
class SleepBlocker;
class SpecialFolders;
class UpdateDialog;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::window {

/// What the window reaches the outside world through. Everything must outlive the window.
struct Surroundings {
  core::device::THIDagent& agent;
  /// The one whose pump the agent calls.
  kit::CommandGate& gate;
  core::base::Clock& clock;
  core::base::Disk& disk;
  kit::Dialogs& dialogs;
  core::sound::SoundPlayer& player;
  const kit::SpecialFolders& folders;
  core::device::KeptParameters& kept;
  kit::SleepBlocker& sleep;
  /// nullptr when this build has none.
  kit::UpdateDialog* update;
  QSettings& settings;
  /// Pictures, help and catalogue.
  std::filesystem::path programFolder;
  /// Where files of the program's own may be written, the best place first.
  std::vector<std::filesystem::path> foldersToWriteIn;
  /// nullptr where nobody can look into connections.
  const doctor::DoctorMeans* doctor = nullptr;
  /// What the program tells of itself, looked up when somebody asks; null where nobody may.
  std::function<AboutFacts()> about = {};
  /// nullptr where sounds of other kinds than the board's own cannot be read.
  core::sound::AudioTools* audio = nullptr;
  /// nullptr where ZIP files cannot be read.
  core::base::Archives* archives = nullptr;
  /// What a saber is heard by that is tried; nullptr where there is silence.
  core::sound::SoundOutput* output = nullptr;
  /// Where the program keeps what it has found out about sets and boards; empty: it keeps nothing, and asks no board.
  std::filesystem::path dataFolder = {};
  /// Lets a simulated board feel what is done to a saber that is tried; null where nothing does.
  std::function<void(core::saber::Event event)> moveBoard = {};
};

}  // namespace kestrin::ui::window
