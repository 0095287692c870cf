// SPDX-License-Identifier: MIT
#include "cli/Interrupt.h"

#include <atomic>
#include <cstdlib>

#include "cli/CommandFailure.h"
#include "platform/process/StopSignals.h"

namespace kestrin::cli {

namespace {

constexpr int kStatusOfSignals = 128;

/// The signal that came first, 0 for none. A signal handler reaches nothing but what lives outside every object.
std::atomic<int> s_signal = 0;
std::atomic<bool> s_ctrlC = false;
std::atomic<void (*)()> s_lastAct = nullptr;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free &&
              std::atomic<void (*)()>::is_always_lock_free);

void OnStopSignal(int number) {
  int none = 0;
  s_signal.compare_exchange_strong(none, number);
  // Only a person's second Ctrl-C is impatience: the other signals often come twice, from the system and from a shell.
  if (number != platform::process::kInterrupt || !s_ctrlC.exchange(true)) return;
  if (const auto act = s_lastAct.load()) act();
  std::_Exit(kStatusOfSignals + number);
}

}  // namespace

Interrupt::Interrupt() { platform::process::CatchStopSignals(OnStopSignal); }

Interrupt::~Interrupt() {
  // A program that was told to stop is on its way out: told again, it still ends with the status of the first signal.
  if (!Requested()) platform::process::ReleaseStopSignals();
}

bool Interrupt::Requested() { return s_signal != 0; }

int Interrupt::Status() { return Requested() ? kStatusOfSignals + s_signal : 0; }

void Interrupt::SetLastAct(void (*act)()) { s_lastAct = act; }

void Interrupt::Look() {
  if (!Requested() || m_acted) return;
  m_acted = true;
  if (!m_action) throw CommandFailure(ExitCode::Interrupted, "Stopped");
  m_action();
}

}  // namespace kestrin::cli
