// SPDX-License-Identifier: MIT
#include "programs/CommandLineOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QUrl>

#include "core/update/UpdateServer.h"
#include "ui/kit/PathText.h"

namespace kestrin::programs {

namespace {

/// The whole path: what the window shows and remembers must not depend on where the program was started.
std::filesystem::path WholePath(const std::filesystem::path& given) {
  std::error_code failed;
  const std::filesystem::path whole = std::filesystem::absolute(given, failed).lexically_normal();
  if (failed) return given;
  // A separator at the end would make it a folder without a name.
  return whole.has_filename() ? whole : whole.parent_path();
}

constexpr const char* kBoard = "board";
constexpr const char* kFolder = "program-folder";
constexpr const char* kServer = "update-server";

/// The argument as a path: by its text, or as it stands in `paths` beside `arguments`. Desktops may name a file by its
/// address.
std::filesystem::path PathOfArgument(const QString& argument, const QStringList& arguments,
                                     const std::vector<std::filesystem::path>& paths) {
  if (argument.startsWith("file://")) return WholePath(ui::kit::PathOf(QUrl::fromEncoded(argument.toUtf8())));
  const auto index = static_cast<std::size_t>(arguments.lastIndexOf(argument));
  return WholePath(index < paths.size() ? paths[index] : ui::kit::PathOf(argument));
}

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
                                                     const char* environmentServer,
                                                     const std::vector<std::filesystem::path>& paths) {
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
  if (files.size() > 1) return problem("Give one file or folder only.");

  const auto choice = platform::boards::BoardChoice::Parse(parser.value(kBoard).toStdString());
  if (!choice) return problem(QString::fromStdString(choice.Text()));
  CommandLineOptions options;
  options.updateServer = core::update::UpdateServer::Choose(parser.value(kServer).toStdString(), environmentServer);
  if (!core::update::UpdateServer::IsValid(options.updateServer))
    return problem("\"" + QString::fromStdString(options.updateServer) + "\" is no update server: give " +
                   core::update::UpdateServer::kForm + ".");
  options.board = *choice;
  options.programFolder =
      parser.isSet(kFolder) ? PathOfArgument(parser.value(kFolder), arguments, paths) : programFolder;
  if (!files.isEmpty()) options.path = PathOfArgument(files.constFirst(), arguments, paths);
  options.isPlain = !parser.isSet(kBoard) && !parser.isSet(kFolder) && !parser.isSet(kServer);
  return {options, "", ""};
}

}  // namespace kestrin::programs
