// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/Result.h"

namespace kestrin::core::update {

/// Where the bytes of one file go that comes from the server: Begin(), any number of Take(), then Finish() or Drop().
/// A step that fails is the last one; its text names the file and says what is wrong.
class FileSink {
 public:
  FileSink() = default;
  virtual ~FileSink() = default;
  FileSink(const FileSink&) = delete;
  FileSink& operator=(const FileSink&) = delete;

  /// The answer has begun, and bytes will come.
  virtual base::Result<> Begin() = 0;
  /// Takes the next bytes.
  virtual base::Result<> Take(std::string_view bytes) = 0;
  /// That was the whole file, which gets its name now.
  virtual base::Result<> Finish() = 0;
  /// No more will come: nothing of it is kept.
  virtual void Drop() = 0;
};

/// Gives the sink for the file `fileName` in `folder`, which exists; asked before the request for it goes out.
using SinkFor =
    std::function<std::unique_ptr<FileSink>(const std::filesystem::path& folder, const std::string& fileName)>;

}  // namespace kestrin::core::update
