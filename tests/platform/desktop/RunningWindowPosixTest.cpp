// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <QLocalServer>
#include <algorithm>
#include <fstream>
#include <memory>
#include <vector>

#include "platform/desktop/RunningWindowFixture.h"

// What is so only where sockets are files and names are bytes.

namespace kestrin::support {
namespace {

TEST_F(RunningWindows, TakeNamesThatAreNoUtf8) {
  Begin();
  const std::filesystem::path odd = std::string("/old/f\xFCnf \xC3\x28\n.lscfg");
  EXPECT_EQ(StartAnother({odd, ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{odd, ""}}));
}

TEST_F(RunningWindows, AreOpenToTheirPersonAlone) {
  Begin();
  struct stat about {};
  ASSERT_EQ(::stat(Place().socket.toUtf8().constData(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0700U);
}

TEST_F(RunningWindows, BeginWhereOneWasKilled) {
  // What it leaves: the files, and no lock.
  {
    QLocalServer dead;
    dead.setSocketOptions(QLocalServer::UserAccessOption);
    ASSERT_TRUE(dead.listen(Place().socket));
    std::filesystem::create_hard_link(folder / "w.socket", folder / "kept");
  }
  std::filesystem::rename(folder / "kept", folder / "w.socket");
  std::ofstream(Place().lock) << "";
  Begin();
  EXPECT_EQ(StartAnother({"/a", ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{"/a", ""}}));
}

TEST_F(RunningWindows, DoNotMeetAtAPlaceOfTooLongAName) {
  // A socket's path has at most about 100 bytes: without one, others are not kept waiting either.
  const std::string deep(200, 'd');
  for (int i = 0; i < 2; ++i) {
    RunningWindow deaf({folder / "w.lock", Text(folder / deep)}, disk);
    EXPECT_EQ(deaf.Start({}, kLong), Outcome::Alone);
  }
}

TEST(PlaceOfSession, DiffersByDisplayAndByTheVariableOfTests) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
  const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
  const QByteArray display = qgetenv("DISPLAY");
  qputenv("XDG_RUNTIME_DIR", Text(folder.Path()).toUtf8());
  std::vector<std::filesystem::path> locks;
  for (const char* const name : {":0", ":1"}) {
    qputenv("DISPLAY", name);
    for (const char* const test : {"", "a", "b"}) {
      qputenv(RunningWindow::kEnvironment, test);
      const RunningWindow::Place place = RunningWindow::PlaceOfSession();
      EXPECT_EQ(place.lock.parent_path(), folder.Path());
      EXPECT_TRUE(place.socket.startsWith(Text(folder.Path()) + '/'));
      EXPECT_EQ(std::count(locks.begin(), locks.end(), place.lock), 0) << name << test;
      locks.push_back(place.lock);
      EXPECT_EQ(RunningWindow::PlaceOfSession().socket, place.socket) << "the same each time";
    }
  }
  qunsetenv(RunningWindow::kEnvironment);
  before.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", before);
  display.isNull() ? qunsetenv("DISPLAY") : qputenv("DISPLAY", display);
}

}  // namespace
}  // namespace kestrin::support
