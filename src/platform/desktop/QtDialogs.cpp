// SPDX-License-Identifier: MIT
#include "platform/desktop/QtDialogs.h"

#include <QColorDialog>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTreeView>
#include <array>

#include "platform/desktop/MessageWindow.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::platform::desktop {

namespace {

using Button = QDialogButtonBox::StandardButton;

/// Makes Qt's own file dialog, for desktops without one, as large as names, dates and places need.
void MakeRoom(QFileDialog& dialog) {
  constexpr QSize kSize{900, 560};
  constexpr int kBeside = 32;
  constexpr int kPlaces = 150;
  // Size, type and date, in characters of their usual contents.
  constexpr std::array kColumns{11, 18, 19};
  auto* const files = dialog.findChild<QTreeView*>("treeView");
  if (files == nullptr) return;
  dialog.resize(kSize.boundedTo(dialog.screen()->availableSize() - QSize(kBeside, 2 * kBeside)));
  QHeaderView& header = *files->header();
  header.setStretchLastSection(false);
  header.setSectionResizeMode(0, QHeaderView::Stretch);
  const int character = dialog.fontMetrics().horizontalAdvance('0');
  for (std::size_t i = 0; i < kColumns.size(); ++i)
    header.resizeSection(static_cast<int>(i) + 1, kColumns.at(i) * character);
  if (auto* const splitter = dialog.findChild<QSplitter*>("splitter"))
    splitter->setSizes({kPlaces, dialog.width() - kPlaces});
}

}  // namespace

void QtDialogs::Dismiss() {
  m_dismissed = true;
  for (auto dialog = m_open.rbegin(); dialog != m_open.rend(); ++dialog) (*dialog)->reject();
}

bool QtDialogs::Run(QDialog& dialog, ui::kit::HelpContext topic) {
  if (m_dismissed) return false;
  ui::kit::SetHelpContext(dialog, topic);
  m_open.push_back(&dialog);
  const bool accepted = dialog.exec() == QDialog::Accepted;
  m_open.pop_back();
  return accepted;
}

QStringList QtDialogs::Choose(QFileDialog& dialog, const QString& start, ui::kit::HelpContext topic) {
  MakeRoom(dialog);
  const QFileInfo file(start);
  if (!file.isDir()) {
    dialog.setDirectory(file.absolutePath());
    dialog.selectFile(file.fileName());
  }
  return Run(dialog, topic) ? dialog.selectedFiles() : QStringList();
}

QString QtDialogs::OpenFile(const QString& title, const QString& start, const QString& filter,
                            ui::kit::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start, filter);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return Choose(dialog, start, topic).value(0);
}

QStringList QtDialogs::OpenFiles(const QString& title, const QString& start, const QString& filter,
                                 ui::kit::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start, filter);
  dialog.setFileMode(QFileDialog::ExistingFiles);
  return Choose(dialog, start, topic);
}

QString QtDialogs::SaveFile(const QString& title, const QString& start, const QString& filter, const QString& suffix,
                            ui::kit::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  return Choose(dialog, start, topic).value(0);
}

QString QtDialogs::ChooseFolder(const QString& title, const QString& start, ui::kit::HelpContext topic) {
  QFileDialog dialog(Parent(), title, start);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return Choose(dialog, start, topic).value(0);
}

std::optional<QColor> QtDialogs::AskColor(const QColor& preset, ui::kit::HelpContext topic) {
  QColorDialog dialog(preset, Parent());
  if (!Run(dialog, topic)) return std::nullopt;
  return dialog.selectedColor();
}

void QtDialogs::Tell(MessageWindow& message) {
  message.Prepare(message.AddButton(Button::Ok));
  Run(message, ui::kit::HelpContext::Messages);
}

void QtDialogs::ShowMessage(const QString& text, const QString& detail) {
  MessageWindow message(QStyle::SP_MessageBoxInformation, text, detail, Parent());
  Tell(message);
}

void QtDialogs::ShowError(const QString& text, const QString& detail) {
  MessageWindow message(QStyle::SP_MessageBoxCritical, text, detail, Parent());
  Tell(message);
}

bool QtDialogs::ShowList(const QString& headline, const QStringList& lines, const QString& action,
                         ui::kit::HelpContext topic) {
  MessageWindow message(QStyle::SP_MessageBoxWarning, headline, "", Parent());
  message.SetList(lines);
  QPushButton* const wanted =
      action.isEmpty() ? nullptr : &message.AddButton(action, QDialogButtonBox::ButtonRole::AcceptRole);
  QPushButton& close = message.AddButton(action.isEmpty() ? Button::Ok : Button::Close);
  message.Prepare(wanted != nullptr ? *wanted : close);
  Run(message, topic);
  return wanted != nullptr && message.Pressed() == wanted;
}

bool QtDialogs::AskOkCancel(const QString& question, const QString& advice, Harmless harmless,
                            ui::kit::HelpContext topic) {
  MessageWindow message(QStyle::SP_MessageBoxQuestion, question, advice, Parent());
  QPushButton& ok = message.AddButton(Button::Ok);
  QPushButton& cancel = message.AddButton(Button::Cancel);
  message.Prepare(harmless == Harmless::Cancel ? cancel : ok);
  // Escape and closing it are the harmless answer too.
  if (!Run(message, topic)) return harmless == Harmless::Ok;
  return message.Pressed() == &ok;
}

ui::kit::Dialogs::Unsaved QtDialogs::AskUnsaved(const QString& question) {
  MessageWindow message(QStyle::SP_MessageBoxWarning, question, "", Parent());
  QPushButton& save = message.AddButton(Button::Save);
  const QPushButton& discard = message.AddButton(Button::Discard);
  message.AddButton(Button::Cancel);
  message.Prepare(save);
  Run(message, ui::kit::HelpContext::UnsavedSet);
  if (message.Pressed() == &save) return Unsaved::Save;
  return message.Pressed() == &discard ? Unsaved::Discard : Unsaved::GoBack;
}

ui::kit::Dialogs::LeftSet QtDialogs::AskLeftSet(const QString& question, const QString& advice) {
  using Role = QDialogButtonBox::ButtonRole;
  MessageWindow message(QStyle::SP_MessageBoxQuestion, question, advice, Parent());
  QPushButton& open = message.AddButton(QCoreApplication::translate("QtDialogs", "Open it again"), Role::AcceptRole);
  const QPushButton& throwAway =
      message.AddButton(QCoreApplication::translate("QtDialogs", "Throw it away"), Role::DestructiveRole);
  message.AddButton(QCoreApplication::translate("QtDialogs", "Leave it"), Role::RejectRole);
  message.Prepare(open);
  Run(message, ui::kit::HelpContext::UnsavedSet);
  if (message.Pressed() == &open) return LeftSet::Open;
  return message.Pressed() == &throwAway ? LeftSet::ThrowAway : LeftSet::Leave;
}

ui::kit::Dialogs::MissingSounds QtDialogs::AskMissing(const QString& question, const QString& advice) {
  using Role = QDialogButtonBox::ButtonRole;
  MessageWindow message(QStyle::SP_MessageBoxWarning, question, advice, Parent());
  const QPushButton& leaveOut =
      message.AddButton(QCoreApplication::translate("QtDialogs", "Save without them"), Role::DestructiveRole);
  const QPushButton& keep =
      message.AddButton(QCoreApplication::translate("QtDialogs", "Keep them in the file"), Role::AcceptRole);
  message.Prepare(message.AddButton(Button::Cancel));
  Run(message, ui::kit::HelpContext::Save);
  if (message.Pressed() == &leaveOut) return MissingSounds::LeaveOut;
  return message.Pressed() == &keep ? MissingSounds::Keep : MissingSounds::GoBack;
}

}  // namespace kestrin::platform::desktop
