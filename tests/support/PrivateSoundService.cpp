// SPDX-License-Identifier: MIT
#include "support/PrivateSoundService.h"

#include <gtest/gtest.h>
#include <pulse/pulseaudio.h>
#include <pulse/simple.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>

extern char** environ;

namespace kestrin::support {

namespace {

constexpr pa_sample_spec kFormat{PA_SAMPLE_S16LE, 48000, 1};

pa_simple* OpenMonitor(const std::string& sink = "null") {
  const auto byDefault = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{byDefault, byDefault, byDefault, byDefault, 1920};
  return pa_simple_new(nullptr, "test", PA_STREAM_RECORD, (sink + ".monitor").c_str(), "record", &kFormat, nullptr,
                       &buffer, nullptr);
}

/// The module that is loaded second is the sink.
constexpr std::uint32_t kFirstSink = 1;

/// Asks for something and returns once the service has done it.
void AskSoundService(const std::function<pa_operation*(pa_context*)>& ask) {
  pa_mainloop* const loop = pa_mainloop_new();
  pa_context* const context = pa_context_new(pa_mainloop_get_api(loop), "test");
  pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
  const auto turn = [&] {
    return pa_mainloop_iterate(loop, 1, nullptr) >= 0 && PA_CONTEXT_IS_GOOD(pa_context_get_state(context));
  };
  while (pa_context_get_state(context) != PA_CONTEXT_READY && turn()) {
  }
  if (pa_operation* const operation = ask(context)) {
    while (pa_operation_get_state(operation) == PA_OPERATION_RUNNING && turn()) {
    }
    pa_operation_unref(operation);
  }
  EXPECT_EQ(pa_context_errno(context), PA_OK);
  pa_context_disconnect(context);
  pa_context_unref(context);
  pa_mainloop_free(loop);
}

}  // namespace

PrivateSoundService::PrivateSoundService()
    : m_folder(std::filesystem::path(testing::TempDir()) / ("kestrin-sound-" + std::to_string(getpid()))) {
  std::filesystem::create_directories(m_folder);
  Start();
  try {
    WaitUntilItAnswers();
  } catch (const std::exception&) {
    Stop();
    throw;
  }
}

PrivateSoundService::~PrivateSoundService() { Stop(); }

void PrivateSoundService::Start() {
  const std::string folder = m_folder.string();
  const std::string socket = folder + "/native";
  for (const char* const name : {"XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"})
    setenv(name, folder.c_str(), 1);
  setenv("PULSE_COOKIE", (folder + "/cookie").c_str(), 1);
  setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
  std::vector<std::string> arguments{
      KESTRIN_PULSEAUDIO, "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disallow-exit=yes",
      "--log-level=error", "--disable-shm=yes", "--realtime=no", "--high-priority=no", "-L",
      "module-native-protocol-unix auth-anonymous=1 socket=" + socket, "-L",
      // Without rewinds the sink takes every sample exactly once.
      "module-null-sink sink_name=null format=s16le rate=48000 channels=1 channel_map=mono norewinds=1"};
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  if (posix_spawn(&m_process, KESTRIN_PULSEAUDIO, nullptr, nullptr, argv.data(), environ) != 0)
    throw std::runtime_error("the sound service does not start");
}

void PrivateSoundService::WaitUntilItAnswers() const {
  // It tells nobody when it is ready.
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (std::chrono::steady_clock::now() < end) {
    if (pa_simple* const stream = OpenMonitor()) {
      pa_simple_free(stream);
      return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  throw std::runtime_error("the sound service does not answer");
}

void PrivateSoundService::Stop() const {
  kill(m_process, SIGTERM);
  // One that was stopped hears nothing.
  kill(m_process, SIGCONT);
  int status = 0;
  waitpid(m_process, &status, 0);
  std::error_code ignored;
  std::filesystem::remove_all(m_folder, ignored);
}

void PrivateSoundService::Signal(int number) const { kill(m_process, number); }

void PrivateSoundService::AddSink(const std::string& name) const {
  const std::string arguments =
      "sink_name=" + name + " format=s16le rate=48000 channels=1 channel_map=mono norewinds=1";
  AskSoundService([&arguments](pa_context* context) {
    return pa_context_load_module(
        context, "module-null-sink", arguments.c_str(), [](pa_context*, std::uint32_t, void*) {}, nullptr);
  });
}

void PrivateSoundService::SetDefaultSink(const std::string& name) const {
  AskSoundService([&name](pa_context* context) {
    return pa_context_set_default_sink(
        context, name.c_str(), [](pa_context*, int, void*) {}, nullptr);
  });
}

void PrivateSoundService::RemoveSinks() const {
  AskSoundService([](pa_context* context) {
    return pa_context_unload_module(
        context, kFirstSink, [](pa_context*, int, void*) {}, nullptr);
  });
}

PrivateSoundService::Recorder::Recorder(const std::string& sink) : m_stream(OpenMonitor(sink)) {
  if (m_stream == nullptr) throw std::runtime_error("the monitor cannot be recorded");
}

PrivateSoundService::Recorder::~Recorder() { pa_simple_free(m_stream); }

std::vector<std::int16_t> PrivateSoundService::Recorder::Hear(std::size_t samples, std::size_t most) {
  std::vector<std::int16_t> heard;
  std::array<std::int16_t, 480> part{};
  for (std::size_t silent = 0; silent < most && heard.size() < samples;) {
    if (pa_simple_read(m_stream, part.data(), sizeof part, nullptr) < 0) break;
    for (const std::int16_t sample : part) {
      if (heard.empty() && sample == 0)
        ++silent;
      else if (heard.size() < samples)
        heard.push_back(sample);
    }
  }
  return heard;
}

}  // namespace kestrin::support
