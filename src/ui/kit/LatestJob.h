// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace kestrin::ui::kit {

/// Does one thing at a time on a thread of its own; only the latest counts. A newer job cancels the one before, and
/// nothing of a cancelled job arrives.
///
/// The thread never touches Qt's event queue: results wait under a lock until a short timer, which runs only while
/// there is a job, fetches them. So all that threads share is in this class, where tools can check it.
class LatestJob : public QObject {
  Q_OBJECT

 public:
  /// Whether the job is still wanted.
  using GoOn = std::function<bool()>;
  /// Has a result called on the thread of the LatestJob.
  using Deliver = std::function<void(std::function<void()>)>;
  using Job = std::function<void(const GoOn&, const Deliver&)>;

  explicit LatestJob(QObject* parent = nullptr);
  /// Waits for the job's next look at its GoOn.
  ~LatestJob() override;

  void Start(Job job);
  void Cancel();

 private:
  using Wanted = std::shared_ptr<std::atomic<bool>>;

  void Work();
  void Fetch();

  QTimer m_fetching;
  /// Of the latest job.
  Wanted m_wanted;

  /// Guards everything below but the thread.
  std::mutex m_mutex;
  std::condition_variable m_wake;
  Job m_next;
  Wanted m_nextWanted;
  std::vector<std::pair<Wanted, std::function<void()>>> m_results;
  bool m_isWorking = false;
  bool m_ends = false;
  /// Runs from the first job on.
  std::thread m_thread;
};

}  // namespace kestrin::ui::kit
