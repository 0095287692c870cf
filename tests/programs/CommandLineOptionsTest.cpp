// SPDX-License-Identifier: MIT
#include "programs/CommandLineOptions.h"

#include <gtest/gtest.h>

#include <QUrl>

#include "core/update/UpdateServer.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/PathText.h"

namespace kestrin::support {
namespace {

using programs::CommandLineOptions;
using Kind = platform::boards::BoardChoice::Kind;

CommandLineOptions::Parsed Parse(const QStringList& arguments) {
  return CommandLineOptions::Parse(QStringList{"kestrin"} + arguments, "/opt/kestrin");
}

TEST(CommandLineOptions, AreTheRealBoardsAndTheProgramsOwnFolderByDefault) {
  const auto parsed = Parse({});
  EXPECT_EQ(parsed.problem, "");
  EXPECT_EQ(parsed.options.board.kind, Kind::Auto);
  EXPECT_EQ(parsed.options.board.path, "");
  EXPECT_EQ(parsed.options.programFolder, "/opt/kestrin");
  EXPECT_TRUE(parsed.options.path.empty());
}

/// A path from the root; where there are drives, on the one where the test stands.
std::filesystem::path Whole(const char* path) { return std::filesystem::absolute(path).make_preferred(); }

TEST(CommandLineOptions, NameBoardFolderAndSet) {
  const auto parsed = Parse({"--board", "sim:id=64", "--program-folder", "/a folder", "/my set.lscfg"});
  EXPECT_EQ(parsed.problem, "");
  EXPECT_EQ(parsed.options.board.kind, Kind::Simulated);
  EXPECT_EQ(parsed.options.board.simulated.id, 64);
  EXPECT_EQ(parsed.options.programFolder, Whole("/a folder"));
  EXPECT_EQ(parsed.options.path, Whole("/my set.lscfg"));
}

TEST(CommandLineOptions, MakeNamesWhole) {
  // What the window shows and remembers must not depend on where the program was started.
  const auto here = std::filesystem::current_path();
  const std::pair<QString, std::filesystem::path> names[] = {{"fonts", here / "fonts"},
                                                             {"./fonts/", here / "fonts"},
                                                             {"..", here.parent_path()},
                                                             {"/a//b/../c/", Whole("/a/c")},
                                                             {"/", Whole("/")}};
  for (const auto& [given, whole] : names) {
    const auto parsed = Parse({"--program-folder", given, given});
    EXPECT_EQ(parsed.options.programFolder.native(), whole.native()) << given.toStdString();
    EXPECT_EQ(parsed.options.path.native(), whole.native()) << given.toStdString();
  }
}

TEST(CommandLineOptions, TakeAFilesAddress) {
  for (const char* const path : {"/sets/a b.lscfg", "/sets/more"}) {
    const QString address = QUrl::fromLocalFile(ui::kit::TextOf(Whole(path))).toString(QUrl::FullyEncoded);
    EXPECT_EQ(Parse({address.toUtf8().constData()}).options.path, Whole(path));
    EXPECT_EQ(Parse({(address + '/').toUtf8().constData()}).options.path, Whole(path)) << "a folder needs a name";
  }
}

#ifndef _WIN32
// Names are text there.
TEST(CommandLineOptions, TakeNamesThatAreNoUtf8) {
  EXPECT_EQ(Parse({"file:///sets/a%20b%FC.lscfg"}).options.path.native(), "/sets/a b\xFC.lscfg");
  const std::vector<std::filesystem::path> paths{"kestrin", "--program-folder", "/f\xFC", "/s\xE4.lscfg"};
  QStringList arguments;
  for (const auto& path : paths) arguments.append(QString::fromUtf8(path.c_str()));
  const auto parsed = CommandLineOptions::Parse(arguments, "/opt/kestrin", nullptr, paths);
  EXPECT_EQ(parsed.options.programFolder.native(), "/f\xFC");
  EXPECT_EQ(parsed.options.path.native(), "/s\xE4.lscfg");
}
#endif

TEST(CommandLineOptions, ArePlainWithoutBoardFolderAndServer) {
  EXPECT_TRUE(Parse({}).options.isPlain);
  EXPECT_TRUE(Parse({"/a.lscfg"}).options.isPlain);
  for (const char* const option : {"--board=sim", "--program-folder=/x", "--update-server=localhost"})
    EXPECT_FALSE(Parse({option, "/a.lscfg"}).options.isPlain) << option;
}

TEST(CommandLineOptions, NameTheUpdateServer) {
  const auto parse = [](const QStringList& arguments, const char* environment) {
    return CommandLineOptions::Parse(QStringList{"kestrin"} + arguments, "/opt/kestrin", environment);
  };
  EXPECT_EQ(parse({}, nullptr).options.updateServer, core::update::UpdateServer::Choose("", nullptr));
  EXPECT_EQ(parse({}, "from.environment:81").options.updateServer, "from.environment:81");
  EXPECT_EQ(parse({"--update-server", "localhost:8080"}, "from.environment").options.updateServer, "localhost:8080");
  EXPECT_EQ(parse({"--update-server", "http://x/"}, nullptr).problem.section('\n', 0, 0),
            "\"http://x/\" is no update server: give HOST or HOST:PORT, with https:// in front where the connection is "
            "encrypted.");
  EXPECT_EQ(parse({"--update-server", "https://localhost:8443"}, nullptr).options.updateServer,
            "https://localhost:8443");
}

TEST(CommandLineOptions, TakeADevicePath) {
  const auto parsed = Parse({"--board=hid:/dev/hidraw3"});
  EXPECT_EQ(parsed.options.board.kind, Kind::Path);
  EXPECT_EQ(parsed.options.board.path, "/dev/hidraw3");
}

TEST(CommandLineOptions, SayWhatIsWrong) {
  EXPECT_TRUE(Parse({"--board", "usb"}).problem.contains("\"usb\" names no board"));
  EXPECT_TRUE(Parse({"--board", "sim:colour=red"}).problem.contains("colour"));
  EXPECT_TRUE(Parse({"--boards"}).problem.contains("boards"));
  EXPECT_TRUE(Parse({"a.lscfg", "b.lscfg"}).problem.contains("one file or folder only"));
}

TEST(CommandLineOptions, AnswerHelpAndVersionInsteadOfShowingTheWindow) {
  EXPECT_TRUE(Parse({"--help"}).answer.contains("--board"));
  EXPECT_FALSE(Parse({"--version"}).answer.isEmpty());
  EXPECT_EQ(Parse({"--help"}).problem, "");
}

TEST(FileFilter, IsTranslatedForQt) {
  EXPECT_EQ(ui::kit::QtFileFilter("Light Saber Configuration File (*.LSCFG)|*.lscfg|All files (*.*)|*.*"),
            "Light Saber Configuration File (*.lscfg);;All files (*)");
  EXPECT_EQ(ui::kit::QtFileFilter("Sounds|*.lsu;*.wav"), "Sounds (*.lsu *.wav)");
  EXPECT_EQ(ui::kit::QtFileFilter("Sounds (*.LSU)|*.LSU"), "Sounds (*.lsu)");
}

}  // namespace
}  // namespace kestrin::support
