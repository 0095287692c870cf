// SPDX-License-Identifier: MIT
#pragma once

#ifdef __linux__

#include <sys/resource.h>

#include <csignal>

namespace kestrin::support {

/// While it lives, no file may grow beyond that many bytes.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) {
    m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_old);
    const rlimit small{bytes, m_old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &m_old);
    (void)std::signal(SIGXFSZ, m_oldHandler);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  rlimit m_old{};
  void (*m_oldHandler)(int) = nullptr;
};

}  // namespace kestrin::support

#endif
