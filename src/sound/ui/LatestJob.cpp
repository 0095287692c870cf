#include "sound/ui/LatestJob.h"

#include <QMetaObject>
#include <utility>

namespace kestrin::sound::ui {

LatestJob::LatestJob(QObject* parent) : QObject(parent), m_there(new QObject) {
  m_there->moveToThread(&m_thread);
  connect(&m_thread, &QThread::finished, m_there, &QObject::deleteLater);
  m_thread.start();
}

LatestJob::~LatestJob() {
  Cancel();
  m_thread.quit();
  m_thread.wait();
}

void LatestJob::Cancel() {
  if (m_wanted) m_wanted->store(false);
}

void LatestJob::Start(Job job) {
  Cancel();
  m_wanted = std::make_shared<std::atomic<bool>>(true);
  QMetaObject::invokeMethod(
      m_there,
      [this, job = std::move(job), wanted = m_wanted] {
        if (!wanted->load()) return;
        job([wanted] { return wanted->load(); },
            [this, wanted](std::function<void()> result) {
              QMetaObject::invokeMethod(
                  this,
                  [wanted, result = std::move(result)] {
                    if (wanted->load()) result();
                  },
                  Qt::QueuedConnection);
            });
      },
      Qt::QueuedConnection);
}

}  // namespace kestrin::sound::ui
