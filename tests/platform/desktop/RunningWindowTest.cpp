// SPDX-License-Identifier: MIT
#include "platform/desktop/RunningWindow.h"

#include <sys/stat.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QtEndian>
#include <algorithm>
#include <atomic>
#include <fstream>
#include <memory>
#include <vector>

#include "platform/files/SystemDisk.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using namespace std::chrono_literals;
using platform::desktop::RunningWindow;
using Outcome = RunningWindow::Outcome;

/// Longer than anything here takes.
constexpr std::chrono::milliseconds kLong{60000};
constexpr std::chrono::milliseconds kShort{50};

class RunningWindows : public testing::Test {
 protected:
  struct Asked {
    std::filesystem::path path;
    QByteArray activation;
    friend bool operator==(const Asked&, const Asked&) = default;
  };

  [[nodiscard]] RunningWindow::Place Place() const { return {folder / "w.lock", Text(folder / "w.socket")}; }

  void Hear(RunningWindow& window) {
    QObject::connect(&window, &RunningWindow::asked,
                     [this](const std::filesystem::path& path, const QByteArray& activation) {
                       asked.push_back({path, activation});
                     });
  }
  void Begin() {
    Hear(first);
    ASSERT_EQ(first.Start({}, kLong), Outcome::First);
  }
  /// A start as in another program: on a thread of its own, while the first window's events are handled.
  Outcome StartAnother(const RunningWindow::Request& request, std::chrono::milliseconds patience = kLong) {
    Outcome outcome{};
    const std::unique_ptr<QThread> thread(QThread::create([&] {
      platform::files::SystemDisk ownDisk;
      outcome = RunningWindow(Place(), ownDisk).Start(request, patience);
    }));
    thread->start();
    EXPECT_TRUE(Until([&] { return thread->isFinished(); }, 60000));
    QApplication::processEvents();
    return outcome;
  }
  /// What a peer sends: the length, then the bytes.
  [[nodiscard]] static QByteArray Frame(quint32 length, const QByteArray& bytes) {
    QByteArray frame(4, '\0');
    qToBigEndian(length, frame.data());
    return frame + bytes;
  }

  TemporaryFolder folder;
  platform::files::SystemDisk disk;
  RunningWindow first{Place(), disk};
  std::vector<Asked> asked;
};

TEST_F(RunningWindows, TakeWhatALaterStartIsToOpen) {
  Begin();
  EXPECT_EQ(StartAnother({"/sets/a set.lscfg", "token 1"}), Outcome::HandedOver);
  EXPECT_EQ(StartAnother({}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{"/sets/a set.lscfg", "token 1"}, {"", ""}}));
}

TEST_F(RunningWindows, TakeNamesThatAreNoUtf8AndTheLongest) {
  Begin();
  const std::filesystem::path odd = std::string("/old/f\xFCnf \xC3\x28\n.lscfg");
  const std::filesystem::path longest = "/" + std::string(RunningWindow::kMostBytes - 2, 'x');
  EXPECT_EQ(StartAnother({odd, ""}), Outcome::HandedOver);
  EXPECT_EQ(StartAnother({longest, ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{odd, ""}, {longest, ""}}));
  // A longer one opens a window of its own rather than nothing.
  EXPECT_EQ(StartAnother({longest.native() + "x", ""}), Outcome::Alone);
}

TEST_F(RunningWindows, AreOpenToTheirPersonAlone) {
  Begin();
  struct stat about {};
  ASSERT_EQ(::stat(Place().socket.toUtf8().constData(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0700U);
}

TEST_F(RunningWindows, GiveTheirPlaceToTheNextWhenTheyEnd) {
  auto one = std::make_unique<RunningWindow>(Place(), disk);
  ASSERT_EQ(one->Start({}, kLong), Outcome::First);
  // What it took from now on would be lost.
  one->TakeNoMore();
  EXPECT_EQ(StartAnother({"/a", ""}, kShort), Outcome::Unanswered);
  one.reset();
  EXPECT_EQ(first.Start({}, kShort), Outcome::First);
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

TEST_F(RunningWindows, ThatHangAreToldNothing) {
  Begin();
  // Its event loop does not turn while this thread waits here.
  RunningWindow second(Place(), disk);
  EXPECT_EQ(second.Start({"/late", ""}, kShort), Outcome::Unanswered);
  // When it goes on, what the other window has opened already is not opened twice.
  EXPECT_EQ(StartAnother({"/next", ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{"/next", ""}}));
}

TEST_F(RunningWindows, AreWaitedForWhileTheyBeginAndWhileTheyEnd) {
  // Somebody has the lock and does not listen yet.
  core::base::Disk::LockResult held = disk.TryLock(Place().lock);
  ASSERT_NE(held.lock, nullptr);
  EXPECT_EQ(first.Start({}, kShort), Outcome::Unanswered);
  std::unique_ptr<QThread> ending(QThread::create([&held] { held.lock.reset(); }));
  ending->start();
  EXPECT_EQ(first.Start({}, kLong), Outcome::First);
  ending->wait();
}

TEST_F(RunningWindows, ThatLieAreLeftAlone) {
  core::base::Disk::LockResult held = disk.TryLock(Place().lock);
  ASSERT_NE(held.lock, nullptr);
  for (const QByteArray& greeting : {QByteArray("kestrin window 2\n"), QByteArray(1000000, 'x'), QByteArray("ke")}) {
    QLocalServer liar;
    QLocalServer::removeServer(Place().socket);
    ASSERT_TRUE(liar.listen(Place().socket));
    QByteArray heard;
    QObject::connect(&liar, &QLocalServer::newConnection, [&] {
      QLocalSocket* const peer = liar.nextPendingConnection();
      QObject::connect(peer, &QLocalSocket::readyRead, [peer, &heard] { heard += peer->readAll(); });
      peer->write(greeting);
    });
    EXPECT_EQ(StartAnother({"/secret", ""}, 300ms), Outcome::Unanswered);
    QApplication::processEvents();
    EXPECT_EQ(heard, "") << greeting.left(20).constData();
  }
}

TEST_F(RunningWindows, OpenNothingForGarbageAndStayThereForOthers) {
  Begin();
  const QByteArray whole = QByteArray("/a") + '\0';
  const std::vector<QByteArray> sent{
      Frame(0xFFFFFFFFU, "x"),                    // an impossible length
      Frame(RunningWindow::kMostBytes + 1, "x"),  // one byte too many
      Frame(2, "/a"),                             // no separator
      Frame(0, ""),                               // nothing at all
      Frame(9, QByteArray("a/relati") + '\0'),    // depends on where it was started
      "GET / HTTP/1.0\r\n\r\n",                   // another language
  };
  for (const QByteArray& bytes : sent) {
    QLocalSocket peer;
    peer.connectToServer(Place().socket);
    ASSERT_TRUE(peer.waitForConnected());
    peer.write(bytes);
    EXPECT_TRUE(Until([&peer] { return peer.state() == QLocalSocket::UnconnectedState; }))
        << bytes.left(20).toHex().constData();
  }
  // These say too little, and stay.
  std::vector<std::unique_ptr<QLocalSocket>> silent;
  for (const QByteArray& bytes : {QByteArray(), QByteArray("\0\0", 2), Frame(3, "/a")}) {
    silent.push_back(std::make_unique<QLocalSocket>());
    silent.back()->connectToServer(Place().socket);
    ASSERT_TRUE(silent.back()->waitForConnected());
    silent.back()->write(bytes);
    silent.back()->flush();
  }
  EXPECT_EQ(StartAnother({"/b", ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{"/b", ""}}));
  // One that was slow is heard in the end, once: what follows a request is nobody's.
  silent.back()->write(QByteArray(1, '\0') + Frame(3, whole));
  ASSERT_TRUE(Until([this] { return asked.size() > 1; }));
  QApplication::processEvents();
  EXPECT_EQ(asked, (std::vector<Asked>{{"/b", ""}, {"/a", ""}}));
}

TEST_F(RunningWindows, TurnAwayMoreThanTheyCanTalkTo) {
  Begin();
  std::vector<std::unique_ptr<QLocalSocket>> peers;
  for (int i = 0; i < RunningWindow::kMostPeers; ++i) {
    peers.push_back(std::make_unique<QLocalSocket>());
    peers.back()->connectToServer(Place().socket);
    ASSERT_TRUE(Until([&] { return peers.back()->bytesAvailable() > 0; })) << i;
  }
  QLocalSocket more;
  more.connectToServer(Place().socket);
  ASSERT_TRUE(Until([&more] { return more.state() == QLocalSocket::UnconnectedState; }));
  EXPECT_EQ(more.readAll(), "");
  // As soon as one has gone there is room again.
  peers.pop_back();
  EXPECT_EQ(StartAnother({"/a", ""}), Outcome::HandedOver);
}

TEST_F(RunningWindows, AreOneOfAllThatBeginAtTheSameInstant) {
  constexpr std::size_t kStarts = 12;
  std::vector<Outcome> outcomes(kStarts);
  std::vector<std::unique_ptr<QThread>> threads;
  std::vector<std::unique_ptr<RunningWindow>> windows(kStarts);
  std::atomic<int> heard = 0;
  for (std::size_t i = 0; i < kStarts; ++i) {
    threads.emplace_back(QThread::create([&, i] {
      platform::files::SystemDisk ownDisk;
      RunningWindow window(Place(), ownDisk);
      QObject::connect(&window, &RunningWindow::asked, &window, [&] { ++heard; });
      outcomes[i] = window.Start({"/" + std::to_string(i), ""}, kLong);
      if (outcomes[i] != Outcome::First) return;
      while (heard < static_cast<int>(kStarts) - 1)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    }));
  }
  for (const auto& thread : threads) thread->start();
  for (const auto& thread : threads) EXPECT_TRUE(thread->wait(60000));
  EXPECT_EQ(std::count(outcomes.begin(), outcomes.end(), Outcome::First), 1);
  EXPECT_EQ(std::count(outcomes.begin(), outcomes.end(), Outcome::HandedOver), kStarts - 1);
}

TEST_F(RunningWindows, DoNotMeetWhereNobodyCanLock) {
  RunningWindow nowhere({folder / "absent" / "w.lock", Text(folder / "w.socket")}, disk);
  EXPECT_EQ(nowhere.Start({}, kLong), Outcome::Alone);
  RunningWindow without({}, disk);
  EXPECT_EQ(without.Start({}, kLong), Outcome::Alone);
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
