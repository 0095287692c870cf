// SPDX-License-Identifier: MIT
#include "programs/AboutProgram.h"

#include <QGuiApplication>
#include <QSysInfo>
#include <algorithm>

#include "platform/archive/ZipLibrary.h"
#include "platform/audio/AudioLibraries.h"
#include "platform/desktop/CompiledHelp.h"
#include "platform/hid/HidLibrary.h"
#include "platform/net/NetLibrary.h"
#include "platform/speaker/SoundLibrary.h"
#include "simulator/store/JsonLibrary.h"

namespace kestrin::programs {

ui::window::AboutFacts AboutProgram(const std::string& version, const ProgramPlaces& places) {
  std::vector<std::string> libraries{std::string("Qt ") + qVersion(),   platform::hid::HidLibrary(),
                                     platform::hid::MonitorLibrary(),   platform::net::NetLibrary(),
                                     platform::speaker::SoundLibrary(), platform::desktop::CompiledHelp::Library(),
                                     simulator::store::JsonLibrary(),   platform::archive::ZipLibrary()};
  const std::vector<std::string> audio = platform::audio::AudioLibraries();
  libraries.insert(libraries.end(), audio.begin(), audio.end());
  // Those that this system does without.
  std::erase(libraries, "");
  return {version,
          "MIT License, Copyright (c) 2026 The Kestrin Launcher authors",
          std::move(libraries),
          {{"Program", places.program}, {"Your data", places.data}, {"Fonts", places.fonts}},
          {QSysInfo::prettyProductName().toStdString() + ", " + QSysInfo::currentCpuArchitecture().toStdString(),
           "kernel " + QSysInfo::kernelType().toStdString() + ' ' + QSysInfo::kernelVersion().toStdString(),
           "windows by " + QGuiApplication::platformName().toStdString()}};
}

}  // namespace kestrin::programs
