// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct pa_simple;

namespace kestrin::support {

/// A sound service of the test's own, without a device: what is played into it can be recorded. Clients of this process
/// find it by the environment.
class PrivateSoundService {
 public:
  /// Throws when the service does not start.
  PrivateSoundService();
  ~PrivateSoundService();
  PrivateSoundService(const PrivateSoundService&) = delete;
  PrivateSoundService& operator=(const PrivateSoundService&) = delete;

  /// Sends it a signal: it falls silent (SIGSTOP), speaks again (SIGCONT) or dies (SIGKILL).
  void Signal(int number) const;
  /// Adds a sink of that name without a device; its monitor is NAME.monitor.
  void AddSink(const std::string& name) const;
  /// What has not chosen a sink of its own plays into this one from now on.
  void SetDefaultSink(const std::string& name) const;
  /// Takes away every sink.
  void RemoveSinks() const;

  /// Listens from its making on.
  class Recorder {
   public:
    explicit Recorder(const std::string& sink = "null");
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// All that was heard up to `samples` samples after the first that is not silent; fewer when there is silence for
    /// `most` samples.
    [[nodiscard]] std::vector<std::int16_t> Hear(std::size_t samples, std::size_t most = 48000 * 5);

   private:
    pa_simple* m_stream;
  };

 private:
  void Start();
  void WaitUntilItAnswers() const;
  void Stop() const;

  /// Without a blank: the name of a sound service cannot hold one.
  std::filesystem::path m_folder;
  pid_t m_process = -1;
};

}  // namespace kestrin::support
