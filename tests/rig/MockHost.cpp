// SPDX-License-Identifier: MIT
#include "rig/MockHost.h"

#include <sys/stat.h>

#include <csignal>
#include <stdexcept>

namespace kestrin::rig {

MockHost::MockHost() {
  // The mock starts threads of its own; signals are for the test.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  // Asked before there is a testbed, this is remembered as "no", and devices that are added then make no notices of
  // their own. Those would go out while the node is still a plain file.
  static_cast<void>(umockdev_in_mock_environment());
  m_testbed.reset(umockdev_testbed_new());
  pthread_sigmask(SIG_SETMASK, &before, nullptr);

  char* const root = umockdev_testbed_get_root_dir(m_testbed.get());
  m_root = root;
  g_free(root);
  struct stat sys {};
  if (::stat("/sys", &sys) != 0 || sys.st_ino <= 1)
    throw std::runtime_error("this program runs under umockdev-wrapper");
}

}  // namespace kestrin::rig
