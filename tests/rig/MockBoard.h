// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "rig/MockHost.h"
#include "simulator/VirtualBoard.h"
#include "support/BoardDescriptors.h"

namespace kestrin::rig {

/// A HID device that a MockHost shows to the program: its tree in /sys, and a node in /dev whose answers keep their
/// borders, whose writes arrive whole, and whose failures are those of the kernel.
///
/// It can be plugged and unplugged any number of times, with the kernel's notices. What the host writes is worked off
/// in the mock's thread before the write returns to the host, so a test need not wait for it.
class MockBoard {
 public:
  using Bytes = std::vector<std::uint8_t>;

  struct Description {
    std::uint16_t vendorId = 0x04D8;
    std::uint16_t productId = 0xFA37;
    Bytes descriptor = support::BoardDescriptor();
    /// Which port it is plugged into; every board at the same time needs its own.
    int port = 1;
    /// A device of a program instead of one on USB: no USB parents, no interface number.
    bool virtualBus = false;
  };

  explicit MockBoard(MockHost& host);
  MockBoard(MockHost& host, Description description);
  ~MockBoard();
  MockBoard(const MockBoard&) = delete;
  MockBoard& operator=(const MockBoard&) = delete;

  // --- What the device does; set before the host writes ---

  /// Called for every report the host writes, with the byte of the report id in front; returns the answer reports.
  std::function<std::vector<Bytes>(const Bytes&)> onReport;
  /// The firmware of a board without report ids answers. `board` must outlive this.
  void AnswerWith(simulator::VirtualBoard& board);

  /// Every write fails with that error while it is not 0.
  std::atomic<int> writeError{0};
  /// The device is gone from that write on, counted from 1 at the last Plug(); 0 for never. Its node is still there.
  std::atomic<int> goneAtWrite{0};
  /// The device takes nothing from that write on, counted from 1 at the last Plug(); 0 for never. The write stands
  /// until the test ends it.
  std::atomic<int> heldWrite{0};
  /// Returns when a write stands.
  void WaitUntilAWriteIsHeld();
  [[nodiscard]] bool IsAWriteHeld();
  /// Ends the write that stands with an error of the kernel's. Takes every other one from now on.
  void EndHeldWrite(int error);
  /// Returns when nobody has claimed the device any more.
  void WaitUntilItIsFree() const;
  /// How many reports arrived since the last Plug().
  [[nodiscard]] int Writes() const { return m_writes; }

  // --- Plugging ---

  /// Appears as /dev/hidrawNUMBER.
  void Plug(int number = 0);
  void Unplug();
  [[nodiscard]] std::string Node() const { return "/dev/hidraw" + std::to_string(m_number); }
  /// Where the node really is, for its permissions.
  [[nodiscard]] std::string RealNode() const { return m_host.RealPath(Node()); }
  /// An input report that nobody asked for.
  void Send(const Bytes& report);

 private:
  [[nodiscard]] std::string DevicePath() const;
  [[nodiscard]] std::string HidPath() const;
  [[nodiscard]] std::string Tree() const;
  void MakeGone();

  static gboolean OnIoctl(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board);
  static gboolean OnWrite(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board);
  static gboolean OnRead(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board);
  static void OnOpen(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board);
  static void OnClose(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board);

  MockHost& m_host;
  Description m_description;
  std::unique_ptr<UMockdevIoctlBase, ObjectDeleter> m_handler;
  int m_number = 0;
  int m_queue = -1;
  bool m_plugged = false;
  std::atomic<bool> m_gone{false};
  std::atomic<int> m_writes{0};
  /// How many have it open; of the mock's thread alone.
  int m_clients = 0;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  /// Whoever's write stands.
  std::unique_ptr<UMockdevIoctlClient, ObjectDeleter> m_held;
};

}  // namespace kestrin::rig
