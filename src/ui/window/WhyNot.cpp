#include "ui/window/WhyNot.h"

#include <QCoreApplication>

#include "ui/window/Pages.h"

namespace kestrin::ui::window {

namespace {

QString Text(const char* text) { return QCoreApplication::translate("WhyNot", text); }

}  // namespace

QString WhyNot::Set() const {
  if (isRunning) return Text("Please wait until this is done.");
  return isSetSeen ? QString() : Text("The sound set is on the page \"%1\".").arg(Pages::NameOf(Pages::Page::Sounds));
}

QString WhyNot::Board() const {
  if (isRunning) return Text("Please wait until this is done.");
  if (hasSoundBoard) return {};
  if (boards == 0)
    return accessProblem.empty() ? Text("No sound board is connected.") : QString::fromStdString(accessProblem);
  if (isLedDriver) return Text("The board is an LED driver: it has neither sounds nor an acceleration sensor.");
  if (isFinishing) return Text("The board is still erasing its memory. It comes back by itself, please wait.");
  return Text("The board does not answer. Unplug it and plug it in again.");
}

QString WhyNot::Send() const {
  QString noBoard = Board();
  if (!noBoard.isEmpty() || setFits) return noBoard;
  return Text("The sounds do not fit into the board's memory. Remove some or choose shorter ones.");
}

}  // namespace kestrin::ui::window
