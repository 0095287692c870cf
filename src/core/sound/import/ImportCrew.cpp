// SPDX-License-Identifier: MIT
#include "sound/import/ImportCrew.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace kestrin::core::sound {

namespace {

constexpr std::chrono::milliseconds kBetweenLooks(20);

/// What the threads share.
struct Work {
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> isStopped = false;
  std::mutex mutex;
  std::condition_variable ready;
  /// By order; guarded by the mutex.
  std::vector<std::optional<PreparedSound>> prepared;
};

PreparedSound WithReason(const ImportCrew::Order& order, const std::string& reason) {
  PreparedSound prepared;
  prepared.result.source = order.source.shownAs;
  prepared.result.reason = reason;
  return prepared;
}

/// What one thread does until nothing is left.
void Prepare(SoundImport import, const std::vector<ImportCrew::Order>& orders, const std::filesystem::path& folder,
             Work& work) {
  for (;;) {
    const std::size_t number = work.next++;
    if (number >= orders.size() || work.isStopped) return;
    const ImportCrew::Order& order = orders[number];
    PreparedSound prepared;
    try {
      prepared = import.Prepare(order.source, order.options, folder, [&work] { return !work.isStopped; });
    } catch (const std::exception& problem) {
      prepared = WithReason(order, std::string("The sound could not be imported: ") + problem.what() +
                                       ". Close other programs and import it again.");
    }
    const std::lock_guard lock(work.mutex);
    work.prepared[number] = std::move(prepared);
    work.ready.notify_one();
  }
}

/// The threads; they have ended when the object has.
class Threads {
 public:
  Threads(unsigned count, Work& work, const std::function<void()>& run) : m_work(work) {
    try {
      while (m_threads.size() < count) m_threads.emplace_back(run);
    } catch (const std::system_error&) {
      // Fewer will do.
      if (m_threads.empty()) throw;
    }
  }
  ~Threads() {
    m_work.isStopped = true;
    for (std::thread& thread : m_threads) thread.join();
  }
  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;

 private:
  Work& m_work;
  std::vector<std::thread> m_threads;
};

}  // namespace

ImportCrew::ImportCrew(AudioTools& tools, base::Disk& disk, unsigned threads)
    : m_tools(tools), m_disk(disk), m_threads(threads) {
  if (m_threads == 0) m_threads = ThreadsFor(std::thread::hardware_concurrency());
}

void ImportCrew::Import(const std::vector<Order>& orders, const std::filesystem::path& folder, const Done& done,
                        const SoundImport::GoOn& goOn) {
  if (orders.empty()) return;
  SoundImport import(m_tools, m_disk);
  Work work;
  work.prepared.resize(orders.size());
  std::size_t number = 0;
  std::exception_ptr stopped;
  {
    const auto count = static_cast<unsigned>(std::min<std::size_t>(m_threads, orders.size()));
    const Threads threads(count, work, [&] { Prepare(import, orders, folder, work); });
    const auto mayGoOn = [&] {
      try {
        return !goOn || goOn();
      } catch (...) {
        stopped = std::current_exception();
        return false;
      }
    };
    // Names are given here, one after another, so that no thread is quicker with one than another.
    while (number < orders.size() && mayGoOn()) {
      std::unique_lock lock(work.mutex);
      std::optional<PreparedSound>& prepared = work.prepared[number];
      if (!work.ready.wait_for(lock, kBetweenLooks, [&] { return prepared.has_value(); })) continue;
      PreparedSound sound = *std::exchange(prepared, std::nullopt);
      lock.unlock();
      done(number++, import.Finish(std::move(sound), folder));
    }
  }
  // Without that a power cut might take whole files, but never a part of one.
  if (number > 0) static_cast<void>(m_disk.Flush(folder));
  for (; number < orders.size(); ++number) done(number, WithReason(orders[number], "Stopped.").result);
  if (stopped) std::rethrow_exception(stopped);
}

}  // namespace kestrin::core::sound
