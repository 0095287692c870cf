// SPDX-License-Identifier: MIT
#include "cli/Commands.h"

#include <array>
#include <stdexcept>
#include <string>
#include <utility>

namespace kestrin::cli {

namespace {

constexpr std::array kMakers{
    MakeDevicesCommand,    MakeInfoCommand,          MakeDoctorCommand,       MakeSoundInfoCommand,
    MakeSoundCodeCommand,  MakeSoundWavCommand,      MakeSoundImportCommand,  MakeConfigMakeCommand,
    MakeConfigShowCommand, MakeConfigMapCommand,     MakeConfigLevelCommand,  MakeConfigDiffCommand,
    MakeConfigPackCommand, MakeConfigUnpackCommand,  MakeDownloadCommand,     MakeVerifyCommand,
    MakeBoardCommand,      MakeSaberRenderCommand,   MakeSaberPlayCommand,    MakeAccelGetCommand,
    MakeAccelSetCommand,   MakeAccelDefaultsCommand, MakeAccelRestoreCommand, MakeAccelWatchCommand,
    MakeLedTypesCommand,   MakeLedStatusCommand,     MakeLedCountsCommand,    MakeLedConfigCommand,
    MakeLedPreviewCommand, MakeLedSettingsCommand,   MakeLedSendCommand,      MakeFontsUpdateCommand,
    MakeFontsListCommand,  MakeFontsServeCommand};

constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kGroups{{
    {"sound", "Measure, code and convert sound files"},
    {"config", "Make and look at configuration files: which sound sits in which slot"},
    {"accel", "The acceleration sensor: its six detection parameters, what it feels"},
    {"led", "Set up LED drivers: LED type, light pulses"},
    {"saber", "Hear a set as on a saber"},
    {"fonts", "Fetch sound fonts from an update server, list them, offer them to others"},
}};

}  // namespace

std::vector<std::unique_ptr<Command>> AllCommands() {
  std::vector<std::unique_ptr<Command>> commands;
  commands.reserve(std::size(kMakers));
  for (const auto make : kMakers) commands.push_back(make());
  return commands;
}

std::string_view GroupDescription(std::string_view group) {
  for (const auto& [name, description] : kGroups)
    if (name == group) return description;
  throw std::out_of_range("no such group of commands: " + std::string(group));
}

}  // namespace kestrin::cli
