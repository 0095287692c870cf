// SPDX-License-Identifier: MIT
#include "programs/CommandLineOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include "core/update/UpdateServer.h"
#include "ui/kit/PathText.h"

namespace kestrin::programs {

namespace {

/// The whole path: what the window shows and remembers must not depend on where the program was started.
std::filesystem::path WholePath(const QString& text) {
  std::filesystem::path given = ui::kit::PathOf(text);
  std::error_code failed;
  const std::filesystem::path whole = std::filesystem::absolute(given, failed).lexically_normal();
  if (failed) return given;
  // A separator at the end would make it a folder without a name.
  return whole.has_filename() ? whole : whole.parent_path();
}

constexpr const char* kBoard = "board";
constexpr const char* kFolder = "program-folder";
constexpr const char* kServer = "update-server";

}  // namespace

QList<QCommandLineOption> CommandLineOptions::Options() {
  return {{kBoard, "The board: auto (default), hid:PATH, sim or sim:KEY=VALUE,...", "BOARD", "auto"},
          {kFolder, "The folder with pictures and help (default: the one that came with it).", "DIR"},
          {kServer,
           "The server that new sounds come from (default: the one of this build, or of the environment variable "
           "KESTRIN_UPDATE_SERVER), with https:// in front where the connection is encrypted.",
           "HOST[:PORT]"}};
}

CommandLineOptions::Parsed CommandLineOptions::Parse(const QStringList& arguments,
                                                     const std::filesystem::path& programFolder,
                                                     const char* environmentServer) {
  QCommandLineParser parser;
  parser.setApplicationDescription(kDescription);
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  parser.addOptions(Options());
  parser.addPositionalArgument(kArgument, kArgumentHelp, QString("[%1]").arg(kArgument));

  const auto problem = [&parser](const QString& text) {
    return Parsed{{}, "", text + "\n" + parser.helpText().section('\n', 0, 0)};
  };
  if (!parser.parse(arguments)) return problem(parser.errorText());
  if (parser.isSet(help)) return {{}, parser.helpText(), ""};
  if (parser.isSet(version))
    return {{}, QCoreApplication::applicationName() + ' ' + QCoreApplication::applicationVersion() + '\n', ""};
  const QStringList files = parser.positionalArguments();
  if (files.size() > 1) return problem("Give one sound set only.");

  const auto choice = platform::boards::BoardChoice::Parse(parser.value(kBoard).toStdString());
  if (!choice) return problem(QString::fromStdString(choice.Text()));
  CommandLineOptions options;
  options.updateServer = core::update::UpdateServer::Choose(parser.value(kServer).toStdString(), environmentServer);
  if (!core::update::UpdateServer::IsValid(options.updateServer))
    return problem("\"" + QString::fromStdString(options.updateServer) + "\" is no update server: give " +
                   core::update::UpdateServer::kForm + ".");
  options.board = *choice;
  options.programFolder = parser.isSet(kFolder) ? WholePath(parser.value(kFolder)) : programFolder;
  if (!files.isEmpty()) options.set = WholePath(files.constFirst());
  return {options, "", ""};
}

}  // namespace kestrin::programs
