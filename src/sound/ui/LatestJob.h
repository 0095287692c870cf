#pragma once

#include <QObject>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

namespace kestrin::sound::ui {

/// Does one thing at a time on a thread of its own; only the latest counts. A newer job cancels the one before, and
/// nothing of a cancelled job arrives.
class LatestJob : public QObject {
  Q_OBJECT

 public:
  /// Whether the job is still wanted.
  using GoOn = std::function<bool()>;
  /// Hands a result over to the thread of the LatestJob.
  using Deliver = std::function<void(std::function<void()>)>;
  using Job = std::function<void(const GoOn&, const Deliver&)>;

  explicit LatestJob(QObject* parent = nullptr);
  /// Waits for the job's next look at its GoOn.
  ~LatestJob() override;

  void Start(Job job);
  void Cancel();

 private:
  QThread m_thread;
  /// Lives on the thread.
  QObject* m_there;
  std::shared_ptr<std::atomic<bool>> m_wanted;
};

}  // namespace kestrin::sound::ui
