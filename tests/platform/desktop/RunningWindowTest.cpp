// SPDX-License-Identifier: MIT
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

#include "platform/desktop/RunningWindowFixture.h"

namespace kestrin::support {
namespace {

using namespace std::chrono_literals;

TEST_F(RunningWindows, TakeWhatALaterStartIsToOpen) {
  Begin();
  EXPECT_EQ(StartAnother({folder / "a set.lscfg", "token 1"}), Outcome::HandedOver);
  EXPECT_EQ(StartAnother({}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{folder / "a set.lscfg", "token 1"}, {"", ""}}));
}

TEST_F(RunningWindows, TakeTheLongestName) {
  Begin();
  const std::filesystem::path root = folder.Path().root_path();
  // Behind the path stands a null.
  const std::string name(RunningWindow::kMostBytes - 1 - root.string().size(), 'x');
  EXPECT_EQ(StartAnother({root / name, ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{root / name, ""}}));
  // A longer one opens a window of its own rather than nothing.
  EXPECT_EQ(StartAnother({root / (name + "x"), ""}), Outcome::Alone);
}

TEST_F(RunningWindows, GiveTheirPlaceToTheNextWhenTheyEnd) {
  auto one = std::make_unique<RunningWindow>(Place(), disk);
  ASSERT_EQ(one->Start({}, kLong), Outcome::First);
  // What it took from now on would be lost.
  one->TakeNoMore();
  EXPECT_EQ(StartAnother({folder / "a", ""}, kShort), Outcome::Unanswered);
  one.reset();
  EXPECT_EQ(first.Start({}, kShort), Outcome::First);
}

TEST_F(RunningWindows, ThatHangAreToldNothing) {
  Begin();
  // Its event loop does not turn while this thread waits here.
  RunningWindow second(Place(), disk);
  EXPECT_EQ(second.Start({folder / "late", ""}, kShort), Outcome::Unanswered);
  // When it goes on, what the other window has opened already is not opened twice.
  EXPECT_EQ(StartAnother({folder / "next", ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{folder / "next", ""}}));
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
    EXPECT_EQ(StartAnother({folder / "secret", ""}, 300ms), Outcome::Unanswered);
    QApplication::processEvents();
    EXPECT_EQ(heard, "") << greeting.left(20).constData();
  }
}

TEST_F(RunningWindows, OpenNothingForGarbageAndStayThereForOthers) {
  Begin();
  const QByteArray path = Text(folder / "a").toUtf8();
  const auto length = static_cast<quint32>(path.size());
  const std::vector<QByteArray> sent{
      Frame(0xFFFFFFFFU, "x"),                    // an impossible length
      Frame(RunningWindow::kMostBytes + 1, "x"),  // one byte too many
      Frame(length, path),                        // no separator
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
  for (const QByteArray& bytes : {QByteArray(), QByteArray("\0\0", 2), Frame(length + 1, path)}) {
    silent.push_back(std::make_unique<QLocalSocket>());
    silent.back()->connectToServer(Place().socket);
    ASSERT_TRUE(silent.back()->waitForConnected());
    silent.back()->write(bytes);
    silent.back()->flush();
  }
  EXPECT_EQ(StartAnother({folder / "b", ""}), Outcome::HandedOver);
  EXPECT_EQ(asked, (std::vector<Asked>{{folder / "b", ""}}));
  // One that was slow is heard in the end, once: what follows a request is nobody's.
  silent.back()->write(QByteArray(1, '\0') + Frame(length + 1, path + '\0'));
  ASSERT_TRUE(Until([this] { return asked.size() > 1; }));
  QApplication::processEvents();
  EXPECT_EQ(asked, (std::vector<Asked>{{folder / "b", ""}, {folder / "a", ""}}));
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
  EXPECT_EQ(StartAnother({folder / "a", ""}), Outcome::HandedOver);
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
      outcomes[i] = window.Start({folder / std::to_string(i), ""}, kLong);
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
  RunningWindow nowhere({folder / "absent" / "w.lock", Socket("w.socket")}, disk);
  EXPECT_EQ(nowhere.Start({}, kLong), Outcome::Alone);
  RunningWindow without({}, disk);
  EXPECT_EQ(without.Start({}, kLong), Outcome::Alone);
}

}  // namespace
}  // namespace kestrin::support
