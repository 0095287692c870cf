// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace kestrin::platform::desktop {

/// What tells the program to end although nobody is there to answer a question: the signals that ask a program to stop;
/// on Windows also the end of the person's session.
///
/// Signals belong to the whole process: one at a time.
class EndRequests : public QObject {
  Q_OBJECT

 public:
  /// The application must be there.
  EndRequests();
  /// The signals end the program again.
  ~EndRequests() override;
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

  /// The number of the first signal that came; none for the end of the session, and before any.
  [[nodiscard]] std::optional<int> Signal() const { return m_signal; }
  /// What a program that such a signal has ended returns: 128 and the number.
  [[nodiscard]] int ExitCode(int otherwise) const { return m_signal ? kSignalled + *m_signal : otherwise; }

  /// Whether all is over: asked on Windows when the session ends, which then waits until it is. Without it, it is.
  void SetIsOver(std::function<bool()> isOver) { m_isOver = std::move(isOver); }

 signals:
  /// The program shall end; comes from the event loop, once.
  void arrived();

 private:
  class Source;
  static constexpr int kSignalled = 128;

  void Take(int signal);
  void Begin();

  std::unique_ptr<Source> m_source;
  std::function<bool()> m_isOver;
  std::optional<int> m_signal;
  bool m_begun = false;
};

}  // namespace kestrin::platform::desktop
