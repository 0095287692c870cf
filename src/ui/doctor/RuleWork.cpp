// SPDX-License-Identifier: MIT
#include "ui/doctor/RuleWork.h"

#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace kestrin::ui::doctor {

namespace {

/// Too short to be noticed, long enough to cost nothing.
constexpr int kFetchMilliseconds = 50;

}  // namespace

/// All that the threads share.
struct RuleWork::Shared {
  std::mutex mutex;
  std::optional<core::base::Result<>> result;
};

RuleWork::RuleWork(QObject* parent) : QObject(parent) {
  m_fetching.setInterval(kFetchMilliseconds);
  connect(&m_fetching, &QTimer::timeout, this, &RuleWork::Fetch);
}

void RuleWork::Start(Work work, Done done) {
  if (IsRunning()) return;
  m_shared = std::make_shared<Shared>();
  m_done = std::move(done);
  m_fetching.start();
  std::thread([shared = m_shared, work = std::move(work)] {
    core::base::Result<> result;
    try {
      result = work();
    } catch (const std::exception& error) {
      result = core::base::Failure{core::base::FailureKind::Failed, error.what()};
    }
    const std::lock_guard lock(shared->mutex);
    shared->result = std::move(result);
  }).detach();
}

void RuleWork::Fetch() {
  std::optional<core::base::Result<>> result;
  {
    const std::lock_guard lock(m_shared->mutex);
    result = m_shared->result;
  }
  if (!result) return;
  m_fetching.stop();
  m_shared.reset();
  std::exchange(m_done, nullptr)(*result);
}

}  // namespace kestrin::ui::doctor
