#include "cli/Interrupt.h"

#include <csignal>
#include <cstdlib>

#include "cli/CommandFailure.h"

namespace kestrin::cli {

namespace {

/// A signal handler reaches nothing but what lives outside every object.
volatile std::sig_atomic_t s_requested = 0;

extern "C" void OnInterrupt(int) {
  if (s_requested != 0) std::_Exit(static_cast<int>(ExitCode::Interrupted));
  s_requested = 1;
  // Some systems forget the handler when they have called it.
  std::signal(SIGINT, OnInterrupt);
}

}  // namespace

Interrupt::Interrupt() { std::signal(SIGINT, OnInterrupt); }

Interrupt::~Interrupt() { std::signal(SIGINT, SIG_DFL); }

bool Interrupt::Requested() { return s_requested != 0; }

void Interrupt::Look() {
  if (!Requested() || m_acted) return;
  m_acted = true;
  if (!m_action) throw CommandFailure(ExitCode::Interrupted, "Stopped");
  m_action();
}

}  // namespace kestrin::cli
