#include "platform/desktop/QtDialogs.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace kestrin::desktop {

namespace {

/// A box that says `text` as it stands, with a title on systems that show one.
void Prepare(QMessageBox& box, QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons) {
  box.setIcon(icon);
  box.setWindowTitle(QCoreApplication::applicationName());
  box.setTextFormat(Qt::PlainText);
  // Texts may have the line ends of the files that they come from.
  box.setText(QString(text).remove(QChar::CarriageReturn));
  box.setStandardButtons(buttons);
  // Their words say it; pictures beside them are a matter of another time.
  for (QAbstractButton* const button : box.buttons()) button->setIcon({});
}

}  // namespace

QString QtDialogs::OpenFile(const QString& title, const QString& start, const QString& filter) {
  return QFileDialog::getOpenFileName(Parent(), title, start, filter);
}

QString QtDialogs::SaveFile(const QString& title, const QString& start, const QString& filter, const QString& suffix) {
  QFileDialog dialog(Parent(), title, start, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  const QFileInfo file(start);
  if (!file.isDir()) {
    dialog.setDirectory(file.absolutePath());
    dialog.selectFile(file.fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst();
}

void QtDialogs::ShowMessage(const QString& text) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Information, text, QMessageBox::Ok);
  box.exec();
}

void QtDialogs::ShowError(const QString& text) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Critical, text, QMessageBox::Ok);
  box.exec();
}

bool QtDialogs::AskOkCancel(const QString& question, const QString& advice, Harmless harmless) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Question, question, QMessageBox::Ok | QMessageBox::Cancel);
  box.setInformativeText(advice);
  const auto button = harmless == Harmless::Ok ? QMessageBox::Ok : QMessageBox::Cancel;
  box.setEscapeButton(button);
  box.setDefaultButton(QMessageBox::Ok);
  return box.exec() == QMessageBox::Ok;
}

app::Dialogs::Unsaved QtDialogs::AskUnsaved(const QString& question) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Warning, question, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
  box.setDefaultButton(QMessageBox::Save);
  box.setEscapeButton(QMessageBox::Cancel);
  switch (box.exec()) {
    case QMessageBox::Save:
      return Unsaved::Save;
    case QMessageBox::Discard:
      return Unsaved::Discard;
    default:
      return Unsaved::GoBack;
  }
}

}  // namespace kestrin::desktop
