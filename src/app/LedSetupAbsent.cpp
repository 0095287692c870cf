#include "app/LedSetupAbsent.h"

#include <QCoreApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

#include "app/theme/Theme.h"

namespace kestrin::app {

QWidget* LedSetupAbsent::MakeFrame(QWidget& parent) {
  auto* const frame = new QWidget(&parent);
  auto* const title = new QLabel(QCoreApplication::translate("LedSetupAbsent", "An LED driver is connected"), frame);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  large.setBold(true);
  title->setFont(large);
  title->setAlignment(Qt::AlignCenter);
  auto* const text = new QLabel(
      QCoreApplication::translate(
          "LedSetupAbsent",
          "It gives the blade its colours and light pulses. This version of the program cannot set them up; the board "
          "keeps what it has.\n\nSounds, downloads and motion detection belong to sound boards: connect one to use "
          "them."),
      frame);
  text->setWordWrap(true);
  text->setAlignment(Qt::AlignCenter);
  Theme::MakeSoft(*text);
  auto* const layout = new QVBoxLayout(frame);
  layout->addStretch(1);
  layout->addWidget(title);
  layout->addWidget(text);
  layout->addStretch(1);
  return frame;
}

bool LedSetupAbsent::InitLedDrivers(device::TLS&) { return true; }

}  // namespace kestrin::app
