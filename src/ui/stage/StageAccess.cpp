// SPDX-License-Identifier: MIT
#include "ui/stage/StageAccess.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "ui/stage/StageView.h"
#include "ui/stage/Timeline.h"

namespace kestrin::ui::stage {

namespace {

QAccessibleInterface* PictureOf(const QString& /*className*/, QObject* object) {
  if (qobject_cast<StageView*>(object) == nullptr && qobject_cast<Timeline*>(object) == nullptr) return nullptr;
  return new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::Graphic);
}

}  // namespace

void TellPictures() { QAccessible::installFactory(PictureOf); }

}  // namespace kestrin::ui::stage
