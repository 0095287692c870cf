#include "ui/kit/WaitFrame.h"

#include <QHBoxLayout>
#include <QLabel>

#include "ui/kit/TopicOf.h"

namespace kestrin::ui::kit {

WaitFrame::WaitFrame(QWidget& window) : Card(&window) {
  constexpr int kMargin = 24;
  setObjectName("WaitFrame");
  SetHelpContext(*this, HelpContext::Preview);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->addWidget(new QLabel(tr("Please wait ..."), this));
  hide();
}

void WaitFrame::showEvent(QShowEvent* event) {
  Card::showEvent(event);
  adjustSize();
  move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
  raise();
}

}  // namespace kestrin::ui::kit
