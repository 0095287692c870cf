// SPDX-License-Identifier: MIT
#include "rig/kernel/board/UhidDevice.h"

#include <fcntl.h>
#include <linux/input.h>
#include <linux/uhid.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "rig/kernel/board/Descriptors.h"
#include "rig/kernel/board/Log.h"

namespace kestrin::rig {

namespace {

void Copy(const std::string& text, std::uint8_t* field, std::size_t size) {
  std::snprintf(reinterpret_cast<char*>(field), size, "%s", text.c_str());
}

}  // namespace

UhidDevice::UhidDevice(ServedBoard board)
    : m_board(std::move(board)),
      m_descriptor(ReportDescriptor(m_board.Plan().kind)),
      m_flaps(m_board.Plan().flaps),
      m_nextFlap(Clock::now()) {}

UhidDevice::~UhidDevice() {
  // Closing it takes the device away as well.
  if (m_uhid >= 0) ::close(m_uhid);
  if (m_signals >= 0) ::close(m_signals);
}

int UhidDevice::Serve() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGUSR1, SIGUSR2, SIGHUP, SIGTERM}) sigaddset(&signals, number);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  m_signals = ::signalfd(-1, &signals, SFD_CLOEXEC);
  m_uhid = ::open("/dev/uhid", O_RDWR | O_CLOEXEC);
  if (m_uhid < 0 || m_signals < 0) {
    Log(std::string("cannot serve over uhid: ") + std::strerror(errno));
    return 1;
  }
  if (!m_board.Plan().late) Plug();
  for (;;) {
    std::array<pollfd, 2> waiting{{{m_uhid, POLLIN, 0}, {m_signals, POLLIN, 0}}};
    ::poll(waiting.data(), waiting.size(), Patience());
    if (waiting[1].revents != 0) {
      signalfd_siginfo signal{};
      if (::read(m_signals, &signal, sizeof signal) != sizeof signal || !Obey(static_cast<int>(signal.ssi_signo)))
        return 0;
    }
    if ((waiting[0].revents & POLLIN) != 0) ReadEvent();
    SendAnswers();
    Flap();
  }
}

int UhidDevice::Patience() const {
  const auto busy = m_board.Busy();
  auto patience = busy ? *busy : std::chrono::milliseconds(-1);
  if (m_flaps) {
    const auto flap = std::chrono::ceil<std::chrono::milliseconds>(m_nextFlap - Clock::now());
    patience = std::max(flap, std::chrono::milliseconds(0));
    if (busy) patience = std::min(patience, *busy);
  }
  return static_cast<int>(patience.count());
}

bool UhidDevice::Obey(int signal) {
  switch (signal) {
    case SIGUSR1:
      Unplug();
      return true;
    case SIGUSR2:
      Plug();
      if (std::exchange(m_flaps, false)) Log("STAYS");
      return true;
    case SIGHUP:
      m_board.LetGo();
      return true;
    default:
      Unplug();
      return false;
  }
}

void UhidDevice::Plug() {
  if (std::exchange(m_plugged, true)) return;
  uhid_event event{};
  event.type = UHID_CREATE2;
  auto& device = event.u.create2;
  const BoardPlan& plan = m_board.Plan();
  Copy(plan.name, device.name, sizeof device.name);
  Copy(plan.serial, device.uniq, sizeof device.uniq);
  std::copy(m_descriptor.begin(), m_descriptor.end(), device.rd_data);
  device.rd_size = static_cast<std::uint16_t>(m_descriptor.size());
  device.bus = BUS_USB;
  device.vendor = plan.vendorId;
  device.product = plan.productId;
  m_board.Plugged();
  // Programs may see it before the kernel returns from this.
  Log("PLUGGED");
  Put(event, sizeof event);
}

void UhidDevice::Unplug() {
  if (!std::exchange(m_plugged, false)) return;
  uhid_event event{};
  event.type = UHID_DESTROY;
  Put(event, sizeof event.type);
  m_board.Unplugged();
}

void UhidDevice::Flap() {
  if (!m_flaps || Clock::now() < m_nextFlap) return;
  const auto upTo = [&](int milliseconds) {
    return std::chrono::milliseconds(std::uniform_int_distribution<>(0, milliseconds)(m_random));
  };
  // Long enough for a program that starts to get anywhere between finding it and having asked all its questions.
  if (m_plugged) {
    Unplug();
    m_nextFlap = Clock::now() + upTo(40);
  } else {
    Plug();
    m_nextFlap = Clock::now() + std::chrono::milliseconds(20) + upTo(180);
  }
}

void UhidDevice::ReadEvent() {
  uhid_event event{};
  if (::read(m_uhid, &event, sizeof event) < 0) return;
  uhid_event reply{};
  switch (event.type) {
    case UHID_OPEN:
      Log("OPENED");
      break;
    case UHID_CLOSE:
      Log("CLOSED");
      break;
    case UHID_OUTPUT: {
      const auto& output = event.u.output;
      if (m_board.Take({output.data, output.size}, "write") == ServedBoard::Fate::Unplug) Unplug();
      break;
    }
    case UHID_GET_REPORT:
      reply.type = UHID_GET_REPORT_REPLY;
      reply.u.get_report_reply.id = event.u.get_report.id;
      reply.u.get_report_reply.err = EIO;
      Put(reply, sizeof reply);
      break;
    case UHID_SET_REPORT:
      reply.type = UHID_SET_REPORT_REPLY;
      reply.u.set_report_reply.id = event.u.set_report.id;
      reply.u.set_report_reply.err = EIO;
      Put(reply, sizeof reply);
      break;
    default:
      break;
  }
}

void UhidDevice::SendAnswers() {
  while (m_plugged) {
    const auto answer = m_board.NextAnswer();
    if (!answer) return;
    uhid_event event{};
    event.type = UHID_INPUT2;
    event.u.input2.size = static_cast<std::uint16_t>(answer->size());
    std::copy(answer->begin(), answer->end(), event.u.input2.data);
    Put(event, offsetof(uhid_event, u.input2.data) + answer->size());
  }
}

void UhidDevice::Put(const uhid_event& event, std::size_t size) const {
  if (::write(m_uhid, &event, size) < 0) Log(std::string("the kernel does not take an event: ") + std::strerror(errno));
}

}  // namespace kestrin::rig
