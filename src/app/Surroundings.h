#pragma once

#include <filesystem>

#include "base/Clock.h"

class QSettings;

namespace kestrin::base {
class Disk;
}
namespace kestrin::device {
class THIDagent;
}
namespace kestrin::motion {
class KeptParameters;
}
namespace kestrin::sound {
class SoundPlayer;
}

namespace kestrin::app {

class CommandGate;
class Dialogs;
class SleepBlocker;
class SpecialFolders;
class UpdateDialog;

/// What the window reaches the outside world through. Everything must outlive the window.
struct Surroundings {
  device::THIDagent& agent;
  /// The one whose pump the agent calls.
  CommandGate& gate;
  base::Clock& clock;
  base::Disk& disk;
  Dialogs& dialogs;
  sound::SoundPlayer& player;
  const SpecialFolders& folders;
  motion::KeptParameters& kept;
  SleepBlocker& sleep;
  /// nullptr when this build has none.
  UpdateDialog* update;
  QSettings& settings;
  /// Pictures, help and catalogue.
  std::filesystem::path programFolder;
  /// What the program keeps for this person; empty when there is no such place.
  std::filesystem::path dataFolder;
};

}  // namespace kestrin::app
