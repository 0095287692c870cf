// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Result.h"

namespace kestrin::core::base {

/// A new folder that only this person may look into, with what is put there. It goes with the object.
class PrivateFolder {
 public:
  /// Makes it below the folder `place`, by default the one for what does not last. The text of a failure names it.
  [[nodiscard]] static Result<PrivateFolder> Make(const std::filesystem::path& place = {});

  ~PrivateFolder();
  PrivateFolder(PrivateFolder&& other) noexcept;
  PrivateFolder& operator=(PrivateFolder&& other) noexcept;
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

 private:
  explicit PrivateFolder(std::filesystem::path path) : m_path(std::move(path)) {}
  void Remove();

  std::filesystem::path m_path;
};

}  // namespace kestrin::core::base
