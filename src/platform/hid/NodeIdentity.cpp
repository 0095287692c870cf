// SPDX-License-Identifier: MIT
#include "platform/hid/NodeIdentity.h"

#include <fcntl.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace kestrin::platform::hid {

namespace {

core::base::Failure LastFailure() {
  const std::error_code error(errno, std::generic_category());
  return {core::base::KindOf(error), error.message()};
}

}  // namespace

core::base::Result<NodeIdentity> ProbeNode(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return LastFailure();
  int size = 0;
  struct stat status {};
  const bool asked = ::ioctl(file, HIDIOCGRDESCSIZE, &size) >= 0 && ::fstat(file, &status) >= 0;
  core::base::Result<NodeIdentity> probed =
      asked ? core::base::Result<NodeIdentity>(NodeIdentity{status.st_dev, status.st_ino}) : LastFailure();
  ::close(file);
  return probed;
}

bool IsOf(int file, const NodeIdentity& identity) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && NodeIdentity{status.st_dev, status.st_ino} == identity;
}

bool IsNodeGone(const std::string& path, const NodeIdentity& identity) {
  struct stat status {};
  return ::stat(path.c_str(), &status) < 0 || NodeIdentity{status.st_dev, status.st_ino} != identity;
}

}  // namespace kestrin::platform::hid
