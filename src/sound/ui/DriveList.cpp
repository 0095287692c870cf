#include "sound/ui/DriveList.h"

namespace kestrin::sound::ui {

void DriveList::showPopup() {
  emit opening();
  QComboBox::showPopup();
}

}  // namespace kestrin::sound::ui
