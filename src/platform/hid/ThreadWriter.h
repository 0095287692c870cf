// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <thread>

#include "platform/hid/ReportWriter.h"

namespace kestrin::platform::hid {

/// A thread of its own that writes. For systems that end a write of a program that ends.
class ThreadWriter final : public ReportWriter {
 public:
  /// Writes a report and returns the bytes taken, negative on failure. Called on the thread, one call at a time; kept
  /// until a write that goes on is over, also behind the end of this object, so it owns what it writes to.
  using Write = std::function<int(std::span<const std::uint8_t>)>;

  explicit ThreadWriter(Write write);
  /// Does not wait for a write that goes on.
  ~ThreadWriter() override;

  [[nodiscard]] bool Start(std::span<const std::uint8_t> report) override;
  [[nodiscard]] std::optional<int> Outcome(std::chrono::milliseconds timeout) override;

 private:
  struct Desk;

  static void Work(Desk& desk);

  /// What both threads see; it goes with the last of them.
  std::shared_ptr<Desk> m_desk;
  std::thread m_thread;
};

}  // namespace kestrin::platform::hid
