// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

#include "core/base/Disk.h"

namespace kestrin::support {

/// A disk that notes what is flushed, in order, and fails where the test wants it. Its locks exclude each other, but no
/// other disk's.
class RecordingDisk final : public core::base::Disk {
 public:
  [[nodiscard]] std::error_code Flush(const std::filesystem::path& path) override {
    {
      // The window keeps what is not saved on another thread.
      const std::lock_guard lock(m_flushing);
      flushed.push_back(path);
    }
    return onFlush ? onFlush(path) : std::error_code();
  }
  [[nodiscard]] LockResult TryLock(const std::filesystem::path& path) override {
    if (lockError) return {nullptr, false, lockError};
    const std::lock_guard lock(m_held->mutex);
    std::error_code error;
    if (locksAreFiles && !std::filesystem::exists(path, error)) {
      const std::ofstream made(path, std::ios::binary);
      m_held->holders.erase(path);
    }
    const int holder = ++m_held->latest;
    if (!m_held->holders.emplace(path, holder).second) return {nullptr, true, {}};
    return {std::make_unique<Held>(m_held, path, holder), false, {}};
  }

  [[nodiscard]] std::error_code TakeFreeName(const std::filesystem::path& made,
                                             const std::filesystem::path& name) override {
    if (onTakeFreeName)
      if (const std::error_code error = onTakeFreeName(name)) return error;
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(name, error)))
      return std::make_error_code(std::errc::file_exists);
    std::filesystem::rename(made, name, error);
    return error;
  }

  /// Whether somebody has that lock.
  [[nodiscard]] bool IsLocked(const std::filesystem::path& path) const { return m_held->holders.contains(path); }

  std::vector<std::filesystem::path> flushed;
  /// Looks on, and says how flushing ends.
  std::function<std::error_code(const std::filesystem::path&)> onFlush;
  std::error_code lockError;
  /// Whether there is a file for every lock, as on a real disk: who removes it has freed its name.
  bool locksAreFiles = false;
  /// Looks on before a new name is taken, and says whether that fails.
  std::function<std::error_code(const std::filesystem::path&)> onTakeFreeName;

 private:
  struct Locks {
    std::mutex mutex;
    std::map<std::filesystem::path, int> holders;
    int latest = 0;
  };

  class Held final : public Lock {
   public:
    Held(std::shared_ptr<Locks> held, std::filesystem::path path, int holder)
        : m_held(std::move(held)), m_path(std::move(path)), m_holder(holder) {}
    ~Held() override {
      const std::lock_guard lock(m_held->mutex);
      const auto found = m_held->holders.find(m_path);
      if (found != m_held->holders.end() && found->second == m_holder) m_held->holders.erase(found);
    }

   private:
    std::shared_ptr<Locks> m_held;
    std::filesystem::path m_path;
    int m_holder;
  };

  std::mutex m_flushing;
  std::shared_ptr<Locks> m_held = std::make_shared<Locks>();
};

/// For tests that do not look at the disk.
inline core::base::Disk& AnyDisk() {
  static RecordingDisk disk;
  return disk;
}

}  // namespace kestrin::support
