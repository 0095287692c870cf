// SPDX-License-Identifier: MIT
#include "platform/desktop/RunningWindow.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QGuiApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QtEndian>
#include <optional>
#include <utility>

#include "core/base/PathText.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace kestrin::platform::desktop {

namespace {

// A conversation: the window greets first, so that nothing is asked of one that hangs. The start answers with the
// length of its request as four bytes, the highest first, and the request: path, 0, activation. The window confirms it.
constexpr const char* kGreeting = "kestrin window 1\n";
constexpr const char* kTaken = "taken\n";
constexpr char kSeparator = '\0';
constexpr int kLengthBytes = 4;
/// A start that says nothing for so long is none.
constexpr std::chrono::seconds kPeerPatience{10};
/// Between two looks whether the window that is there answers by now.
constexpr unsigned long kPauseMilliseconds = 20;

QByteArray BytesOf(const RunningWindow::Request& request) {
  return QByteArray::fromStdString(core::base::TextOf(request.path)) + kSeparator + request.activation;
}

/// Nothing when it is no request: a window is never told to open what depends on where it was started.
std::optional<RunningWindow::Request> RequestOf(const QByteArray& bytes) {
  const qsizetype end = bytes.indexOf(kSeparator);
  if (end < 0) return std::nullopt;
  std::filesystem::path path = core::base::PathOf(bytes.first(end).toStdString());
  if (!path.empty() && !path.is_absolute()) return std::nullopt;
  return RunningWindow::Request{std::move(path), bytes.sliced(end + 1)};
}

/// What tells one session of the person from another, as a short text of harmless letters.
QByteArray SessionName() {
  QByteArray session = QGuiApplication::platformName().toUtf8();
#ifdef _WIN32
  DWORD number = 0;
  ::ProcessIdToSessionId(::GetCurrentProcessId(), &number);
  // Names of pipes are everybody's on the computer: the person's own folder tells whose this one is.
  session += ' ' + QByteArray::number(static_cast<qulonglong>(number)) + ' ' + QDir::homePath().toUtf8();
#else
  for (const char* const display : {"WAYLAND_DISPLAY", "DISPLAY"}) session += ' ' + qgetenv(display);
#endif
  session += ' ' + qgetenv(RunningWindow::kEnvironment);
  constexpr qsizetype kLetters = 16;
  return QCryptographicHash::hash(session, QCryptographicHash::Sha256).toHex().first(kLetters);
}

/// Lets the window that is there come to the front: the system permits it to whoever the person uses just now.
void GiveWayToTheFront() {
#ifdef _WIN32
  ::AllowSetForegroundWindow(ASFW_ANY);
#endif
}

/// The next `count` bytes of the peer; fewer when they do not come in time.
QByteArray Receive(QLocalSocket& peer, qsizetype count, const QDeadlineTimer& deadline) {
  QByteArray bytes;
  while (bytes.size() < count) {
    if (peer.bytesAvailable() == 0 && !peer.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) break;
    bytes += peer.read(count - bytes.size());
  }
  return bytes;
}

/// Whether the window at that socket has taken the request before the deadline.
bool HandOver(const QString& socket, const RunningWindow::Request& request, const QDeadlineTimer& deadline) {
  QLocalSocket window;
  window.connectToServer(socket);
  if (!window.waitForConnected(static_cast<int>(deadline.remainingTime()))) return false;
  const QByteArray greeting(kGreeting);
  if (Receive(window, greeting.size(), deadline) != greeting) return false;
  GiveWayToTheFront();
  const QByteArray bytes = BytesOf(request);
  QByteArray length(kLengthBytes, '\0');
  qToBigEndian(static_cast<quint32>(bytes.size()), length.data());
  window.write(length + bytes);
  while (window.bytesToWrite() > 0)
    if (!window.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) return false;
  const QByteArray taken(kTaken);
  return Receive(window, taken.size(), deadline) == taken;
}

}  // namespace

RunningWindow::Place RunningWindow::PlaceOfSession() {
#ifdef _WIN32
  // The person's own, like the folder for runtime files elsewhere.
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
#else
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
#endif
  if (folder.isEmpty()) return {};
  const QString name = "kestrin-" + SessionName();
#ifdef _WIN32
  const QString socket = name;
#else
  const QString socket = folder + '/' + name + ".socket";
#endif
  return {core::base::PathOf((folder + '/' + name + ".lock").toStdString()), socket};
}

RunningWindow::RunningWindow(Place place, core::base::Disk& disk, QObject* parent)
    : QObject(parent), m_place(std::move(place)), m_disk(disk) {}

// The lock goes last: the next window listens at the same place.
RunningWindow::~RunningWindow() { TakeNoMore(); }

RunningWindow::Outcome RunningWindow::Start(const Request& request, std::chrono::milliseconds patience) {
  const bool canBeTold = request.path.empty() || request.path.is_absolute();
  if (m_place.lock.empty() || !canBeTold || BytesOf(request).size() > kMostBytes) return Outcome::Alone;
  const QDeadlineTimer deadline(patience);
  for (;;) {
    core::base::Disk::LockResult locked = m_disk.TryLock(m_place.lock);
    if (locked.lock != nullptr) {
      m_lock = std::move(locked.lock);
      if (Listen()) return Outcome::First;
      // Others are not to wait for what they cannot reach.
      TakeNoMore();
      m_lock.reset();
      return Outcome::Alone;
    }
    if (!locked.heldByAnother) return Outcome::Alone;
    if (HandOver(m_place.socket, request, deadline)) return Outcome::HandedOver;
    if (deadline.hasExpired()) return Outcome::Unanswered;
    // It may be about to listen, or about to end.
    QThread::msleep(kPauseMilliseconds);
  }
}

bool RunningWindow::Listen() {
  m_server = std::make_unique<QLocalServer>();
  m_server->setSocketOptions(QLocalServer::UserAccessOption);
  m_server->setListenBacklogSize(kMostPeers);
  m_server->setMaxPendingConnections(kMostPeers);
  connect(m_server.get(), &QLocalServer::newConnection, this, &RunningWindow::Greet);
  // Of a window that was killed: nobody listens there while the lock is ours.
  QLocalServer::removeServer(m_place.socket);
  return m_server->listen(m_place.socket);
}

void RunningWindow::TakeNoMore() { m_server.reset(); }

void RunningWindow::Greet() {
  while (QLocalSocket* const peer = m_server->nextPendingConnection()) {
    if (m_peers >= kMostPeers) {
      delete peer;
      continue;
    }
    ++m_peers;
    connect(peer, &QObject::destroyed, this, [this] { --m_peers; });
    peer->setReadBufferSize(kLengthBytes + static_cast<qint64>(kMostBytes));
    connect(peer, &QLocalSocket::readyRead, this, [this, peer] { Read(*peer); });
    connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
    QTimer::singleShot(kPeerPatience, peer, [peer] { peer->abort(); });
    peer->write(kGreeting);
  }
}

void RunningWindow::Read(QLocalSocket& peer) {
  if (peer.bytesAvailable() < kLengthBytes) return;
  const auto length = qFromBigEndian<quint32>(peer.peek(kLengthBytes).constData());
  if (length > kMostBytes) return peer.abort();
  if (peer.bytesAvailable() < kLengthBytes + static_cast<qint64>(length)) return;
  peer.read(kLengthBytes);
  const std::optional<Request> request = RequestOf(peer.read(length));
  if (!request) return peer.abort();
  // One request each. The start goes first: not every system delivers what a side has written that is gone.
  disconnect(&peer, &QLocalSocket::readyRead, this, nullptr);
  peer.write(kTaken);
  // Whoever hears of it may end the window, and with it the peer.
  QMetaObject::invokeMethod(
      this, [this, request = *request] { emit asked(request.path, request.activation); }, Qt::QueuedConnection);
}

}  // namespace kestrin::platform::desktop
