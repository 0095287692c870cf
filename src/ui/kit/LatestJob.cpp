// SPDX-License-Identifier: MIT
#include "ui/kit/LatestJob.h"

namespace kestrin::ui::kit {

namespace {

/// Too short to be noticed, long enough to cost nothing.
constexpr int kFetchMilliseconds = 10;

}  // namespace

LatestJob::LatestJob(QObject* parent) : QObject(parent) {
  m_fetching.setObjectName("FetchTimer");
  m_fetching.setParent(this);
  m_fetching.setInterval(kFetchMilliseconds);
  connect(&m_fetching, &QTimer::timeout, this, &LatestJob::Fetch);
}

LatestJob::~LatestJob() {
  Cancel();
  {
    const std::lock_guard lock(m_mutex);
    m_ends = true;
  }
  m_wake.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void LatestJob::Cancel() {
  if (m_wanted) m_wanted->store(false);
}

void LatestJob::Start(Job job) {
  Cancel();
  m_wanted = std::make_shared<std::atomic<bool>>(true);
  {
    const std::lock_guard lock(m_mutex);
    m_next = std::move(job);
    m_nextWanted = m_wanted;
  }
  if (!m_thread.joinable()) m_thread = std::thread([this] { Work(); });
  m_wake.notify_one();
  m_fetching.start();
}

void LatestJob::Work() {
  std::unique_lock lock(m_mutex);
  while (true) {
    m_wake.wait(lock, [this] { return m_ends || m_next; });
    if (m_ends) return;
    const Job job = std::exchange(m_next, nullptr);
    const Wanted wanted = std::exchange(m_nextWanted, nullptr);
    m_isWorking = true;
    lock.unlock();
    if (wanted->load())
      job([&] { return wanted->load(); },
          [&](std::function<void()> result) {
            const std::lock_guard results(m_mutex);
            m_results.emplace_back(wanted, std::move(result));
          });
    lock.lock();
    m_isWorking = false;
  }
}

void LatestJob::Fetch() {
  std::vector<std::pair<Wanted, std::function<void()>>> results;
  {
    const std::lock_guard lock(m_mutex);
    results.swap(m_results);
    if (!m_isWorking && !m_next) m_fetching.stop();
  }
  for (const auto& [wanted, result] : results)
    if (wanted->load()) result();
}

}  // namespace kestrin::ui::kit
