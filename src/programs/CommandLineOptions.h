// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <filesystem>
#include <string>

#include "platform/boards/BoardChoice.h"

namespace kestrin::programs {

/// What the person wants, as they say it when they start the program.
struct CommandLineOptions {
  struct Parsed;
  /// Reads the arguments, the program's own name first. `programFolder` is the one that belongs to the program;
  /// `environmentServer` the environment variable that names an update server, nullptr when it is not set.
  [[nodiscard]] static Parsed Parse(const QStringList& arguments, const std::filesystem::path& programFolder,
                                    const char* environmentServer = nullptr);

  platform::boards::BoardChoice board;
  std::filesystem::path programFolder;
  /// The set to open; empty: none.
  std::filesystem::path set;
  /// A valid UpdateServer.
  std::string updateServer;
};

/// The options, or a text instead of them.
struct CommandLineOptions::Parsed {
  CommandLineOptions options;
  /// What was asked for instead of the window: help or version; "" otherwise.
  QString answer;
  /// What is wrong with the arguments; "" when nothing is.
  QString problem;
};

}  // namespace kestrin::programs
