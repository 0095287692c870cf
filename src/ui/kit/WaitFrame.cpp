// SPDX-License-Identifier: MIT
#include "ui/kit/WaitFrame.h"

#include <QHBoxLayout>
#include <QLabel>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::ui::kit {

WaitFrame::WaitFrame(QWidget& window) : Card(&window) {
  setObjectName("WaitFrame");
  SetHelpContext(*this, HelpContext::Preview);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(kBroad, kBroad, kBroad, kBroad);
  layout->addWidget(MakeLabel("WaitLabel", TextStyle::Plain, tr("Please wait ..."), this));
  hide();
}

void WaitFrame::showEvent(QShowEvent* event) {
  Card::showEvent(event);
  adjustSize();
  move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
  raise();
}

}  // namespace kestrin::ui::kit
