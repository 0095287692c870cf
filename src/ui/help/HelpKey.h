// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "ui/kit/HelpContext.h"

namespace kestrin::ui::help {

/// Listens for F1 in every window of the program, also in dialogs, and says which topic the control with the focus asks
/// for. Lives as long as the application is to answer.
class HelpKey : public QObject {
  Q_OBJECT

 public:
  explicit HelpKey(QObject* parent = nullptr);

 signals:
  void topicRequested(kit::HelpContext context);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace kestrin::ui::help
