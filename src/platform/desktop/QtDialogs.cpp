#include "platform/desktop/QtDialogs.h"

#include <QAbstractButton>
#include <QColorDialog>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>

#include "app/help/TopicOf.h"

namespace kestrin::desktop {

namespace {

/// A box that says `text` as it stands, with a title on systems that show one.
void Prepare(QMessageBox& box, QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons,
             app::HelpContext topic) {
  app::SetHelpContext(box, topic);
  box.setIcon(icon);
  box.setWindowTitle(QCoreApplication::applicationName());
  box.setTextFormat(Qt::PlainText);
  // Texts may have the line ends of the files that they come from.
  box.setText(QString(text).remove(QChar::CarriageReturn));
  box.setStandardButtons(buttons);
  // Their words say it; pictures beside them are a matter of another time.
  for (QAbstractButton* const button : box.buttons()) button->setIcon({});
}

/// Shows it and waits for the answer.
int Run(QMessageBox& box) {
  constexpr int kMargin = 16;
  box.layout()->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  return box.exec();
}

/// Asks for a file, beginning at the folder or file `start`; "" for none.
QString Choose(QFileDialog& dialog, const QString& start, app::HelpContext topic) {
  app::SetHelpContext(dialog, topic);
  const QFileInfo file(start);
  if (!file.isDir()) {
    dialog.setDirectory(file.absolutePath());
    dialog.selectFile(file.fileName());
  }
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

}  // namespace

QString QtDialogs::OpenFile(const QString& title, const QString& start, const QString& filter, app::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start, filter);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return Choose(dialog, start, topic);
}

QString QtDialogs::SaveFile(const QString& title, const QString& start, const QString& filter, const QString& suffix,
                            app::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  return Choose(dialog, start, topic);
}

QString QtDialogs::ChooseFolder(const QString& title, const QString& start, app::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return Choose(dialog, start, topic);
}

std::optional<QColor> QtDialogs::AskColor(const QColor& preset, app::HelpContext topic) {
  QColorDialog dialog(preset, Parent());
  app::SetHelpContext(dialog, topic);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.selectedColor();
}

void QtDialogs::ShowMessage(const QString& text, const QString& detail) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Information, text, QMessageBox::Ok, app::HelpContext::Messages);
  box.setInformativeText(detail);
  Run(box);
}

void QtDialogs::ShowError(const QString& text, const QString& detail) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Critical, text, QMessageBox::Ok, app::HelpContext::Messages);
  box.setInformativeText(detail);
  Run(box);
}

bool QtDialogs::ShowList(const QString& headline, const QStringList& lines, const QString& action,
                         app::HelpContext topic) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Warning, headline, QMessageBox::Close, topic);
  box.setDetailedText(lines.join('\n'));
  const QPushButton* const wanted = action.isEmpty() ? nullptr : box.addButton(action, QMessageBox::AcceptRole);
  Run(box);
  return wanted != nullptr && box.clickedButton() == wanted;
}

bool QtDialogs::AskOkCancel(const QString& question, const QString& advice, Harmless harmless, app::HelpContext topic) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Question, question, QMessageBox::Ok | QMessageBox::Cancel, topic);
  box.setInformativeText(advice);
  box.setDefaultButton(harmless == Harmless::Cancel ? QMessageBox::Cancel : QMessageBox::Ok);
  box.setEscapeButton(harmless == Harmless::Ok ? QMessageBox::Ok : QMessageBox::Cancel);
  return Run(box) == QMessageBox::Ok;
}

app::Dialogs::Unsaved QtDialogs::AskUnsaved(const QString& question) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Warning, question, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
          app::HelpContext::UnsavedSet);
  box.setDefaultButton(QMessageBox::Save);
  box.setEscapeButton(QMessageBox::Cancel);
  switch (Run(box)) {
    case QMessageBox::Save:
      return Unsaved::Save;
    case QMessageBox::Discard:
      return Unsaved::Discard;
    default:
      return Unsaved::GoBack;
  }
}

app::Dialogs::MissingSounds QtDialogs::AskMissing(const QString& question, const QString& advice) {
  QMessageBox box(Parent());
  Prepare(box, QMessageBox::Warning, question, QMessageBox::Cancel, app::HelpContext::Save);
  box.setInformativeText(advice);
  const QPushButton* const leaveOut =
      box.addButton(QCoreApplication::translate("QtDialogs", "Save without them"), QMessageBox::DestructiveRole);
  const QPushButton* const keep =
      box.addButton(QCoreApplication::translate("QtDialogs", "Keep them in the file"), QMessageBox::AcceptRole);
  box.setDefaultButton(QMessageBox::Cancel);
  box.setEscapeButton(QMessageBox::Cancel);
  Run(box);
  if (box.clickedButton() == leaveOut) return MissingSounds::LeaveOut;
  return box.clickedButton() == keep ? MissingSounds::Keep : MissingSounds::GoBack;
}

}  // namespace kestrin::desktop
