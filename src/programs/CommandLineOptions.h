// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/boards/BoardChoice.h"

namespace kestrin::programs {

/// What the person wants, as they say it when they start the program.
struct CommandLineOptions {
  struct Parsed;
  static constexpr const char* kDescription = "Configuration tool for Kestrin light-saber sound boards.";
  /// The one argument that is no option.
  static constexpr const char* kArgument = "FILE";
  static constexpr const char* kArgumentHelp =
      "A sound set (.lscfg, or packed as .zip), LED settings (.ldset) or a folder to open.";
  /// All options but those for help and version: what the parser knows, and what manual and completions are made of.
  [[nodiscard]] static QList<QCommandLineOption> Options();
  /// Reads the arguments, the program's own name first. `programFolder` is the one that belongs to the program;
  /// `environmentServer` the environment variable that names an update server, nullptr when it is not set. `paths` are
  /// the same arguments as paths, where the texts may not tell all names; may be left out.
  [[nodiscard]] static Parsed Parse(const QStringList& arguments, const std::filesystem::path& programFolder,
                                    const char* environmentServer = nullptr,
                                    const std::vector<std::filesystem::path>& paths = {});

  platform::boards::BoardChoice board;
  std::filesystem::path programFolder;
  /// What to open, a set, LED settings or a folder; empty: nothing.
  std::filesystem::path path;
  /// Nothing says that this window is to be another than the one that may be open: no board, folder or server.
  bool isPlain = true;
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
