// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

#include "core/base/Result.h"

namespace kestrin::ui::doctor {

/// Changes the permission rule on a thread of its own, as the person may let the system's question for the password
/// stand for minutes. Nobody waits for that thread: when the program ends before, it ends with it.
class RuleWork : public QObject {
  Q_OBJECT

 public:
  using Work = std::function<core::base::Result<>()>;
  /// Called on the thread of the RuleWork.
  using Done = std::function<void(const core::base::Result<>&)>;

  explicit RuleWork(QObject* parent = nullptr);

  [[nodiscard]] bool IsRunning() const { return m_shared != nullptr; }
  /// Starts the work, which must own all that it uses. Does nothing while another one is running.
  void Start(Work work, Done done);

 private:
  struct Shared;

  void Fetch();

  QTimer m_fetching;
  /// Of the work that is running.
  std::shared_ptr<Shared> m_shared;
  Done m_done;
};

}  // namespace kestrin::ui::doctor
