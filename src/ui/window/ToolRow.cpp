// SPDX-License-Identifier: MIT
#include "ui/window/ToolRow.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/device/SessionState.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/Translated.h"

namespace kestrin::ui::window {

namespace {

constexpr int kIcon = kit::Pictures::kIconSide;
constexpr int kLogoHeight = 40;
constexpr int kOnlineSide = 24;

struct ToolFacts {
  const char* control;
  const char* caption;
  const char* purpose;
  /// What the help line says.
  const char* hint;
  const char* shortcut;
  const char* picture;
  /// "" for buttons whose picture turns grey.
  const char* disabledPicture;
  kit::HelpContext help;
};

/// In the order of ToolRow::Tool and of the row.
constexpr std::array<ToolFacts, ToolRow::kTools.size()> kFacts{{
    {"LoadBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Open"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Open a sound set"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "LOAD Configuration File"), "Ctrl+O", "open.bmp", "",
     kit::HelpContext::Open},
    {"SaveBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Save"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Save the sound set"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "SAVE Configuration File"), "Ctrl+Shift+S", "save.bmp", "",
     kit::HelpContext::Save},
    {"ImportBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Import"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Make your own sounds ready for the board"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "IMPORT Sounds of any kind"), "Ctrl+I", "import.bmp", "",
     kit::HelpContext::Import},
    {"TryBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Try"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Try the sound set with a saber on the screen"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "TRY the Sounds with a Saber on the Screen"), "Ctrl+T",
     "try.bmp", "", kit::HelpContext::Try},
    {"ConfigBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Setup"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Set up how the board detects motion and impact"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "CONFIGURE Hardware"), "Ctrl+E", "setup.bmp", "setup_off.bmp",
     kit::HelpContext::Setup},
    {"UpdateBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Update"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Fetch new sounds from the Internet"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "UPDATE Sound Files (Requires Internet)"), "Ctrl+U",
     "update.bmp", "update_off.bmp", kit::HelpContext::Update},
    {"SendBtn", QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Download"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "Write the sound set into the board"),
     QT_TRANSLATE_NOOP("kestrin::ui::window::ToolRow", "DOWNLOAD Sound Files to Kestrin"), "Ctrl+D", "download.bmp",
     "download_off.bmp", kit::HelpContext::Download},
}};

const ToolFacts& FactsOf(ToolRow::Tool tool) { return kFacts[static_cast<std::size_t>(tool)]; }

/// The width of the button with that style.
int WidthOf(const QToolButton& button, Qt::ToolButtonStyle style) {
  if (button.toolButtonStyle() == style) return button.sizeHint().width();
  QStyleOptionToolButton option;
  option.initFrom(&button);
  option.iconSize = button.iconSize();
  option.toolButtonStyle = style;
  int width = button.iconSize().width();
  if (style == Qt::ToolButtonTextUnderIcon)
    width = std::max(width, button.fontMetrics().size(Qt::TextShowMnemonic, button.text()).width() +
                                2 * button.fontMetrics().horizontalAdvance(QLatin1Char(' ')));
  if (button.popupMode() == QToolButton::MenuButtonPopup) {
    option.features = QStyleOptionToolButton::MenuButtonPopup;
    width += button.style()->pixelMetric(QStyle::PM_MenuButtonIndicator, &option, &button);
  }
  const QSize contents(width, button.iconSize().height());
  return button.style()->sizeFromContents(QStyle::CT_ToolButton, &option, contents, &button).width();
}

/// Adds the only picture of `disabled`, if it has one, for the disabled state.
void AddPicture(QIcon& icon, const QIcon& disabled) {
  if (!icon.isNull() && !disabled.isNull())
    icon.addPixmap(disabled.pixmap(disabled.availableSizes().constFirst()), QIcon::Disabled);
}

}  // namespace

ToolRow::ToolRow(const kit::Pictures& pictures, QWidget* parent) : QWidget(parent), m_pictures(pictures) {
  setObjectName("ToolRow");
  kit::SetHelpOfGround(*this);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kit::kWide, kit::kGrid, kit::kWide, kit::kGrid);
  row->setSpacing(kit::kHalf);
  m_logo = kit::MakeLabel("LogoPicture", kit::TextStyle::Plain, "", this);
  m_logo->setAccessibleName(tr("Corvent"));
  row->addWidget(m_logo);
  row->addSpacing(kit::kGrid);
  MakeButtons(*row);
  row->addLayout(MakeLabels(), 1);
  m_view = MakeMenuButton("ViewBtn", tr("View"), tr("Choose the colors of the window"));
  kit::SetHelpContext(*m_view, kit::HelpContext::View);
  m_help = MakeMenuButton("HelpBtn", tr("Help"),
                          tr("Read the help, find out about the connection with the board or about this program"));
  kit::SetHelpContext(*m_help, kit::HelpContext::HelpMenu);
  row->addWidget(m_view);
  row->addWidget(m_help);
  ShowSession({});
}

QVBoxLayout* ToolRow::MakeLabels() {
  m_online = kit::MakeLabel("OnlinePicture", kit::TextStyle::Plain, "", this);
  m_noBoard = kit::MakeLabel("NoBoardLabel", kit::TextStyle::Soft, tr("No board connected"), this);
  m_why = new kit::LinkButton("WhyLink", tr("Why?"), this);
  m_why->setAccessibleName(tr("Why is no board connected?"));
  kit::SetHelp(*m_why, tr("Find out what keeps this program from your board"), kit::HelpContext::Doctor);
  m_why->hide();
  connect(m_why, &QPushButton::clicked, this, &ToolRow::whyPressed);
  m_serial = kit::MakeLabel("SerialLabel", kit::TextStyle::Plain, "", this);
  m_serial->setTextInteractionFlags(Qt::TextSelectableByMouse);
  for (QLabel* const label : {m_noBoard, m_serial}) {
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  kit::SetHelpOfGround(*m_online, kit::HelpContext::OnlinePicture);
  for (QLabel* const label : {m_noBoard, m_serial}) kit::SetHelpContext(*label, kit::HelpContext::OnlinePicture);

  auto* const board = new QHBoxLayout;
  board->setSpacing(kit::kHalf);
  board->addWidget(m_noBoard, 1);
  board->addWidget(m_why);
  board->addWidget(m_serial, 1);
  board->addSpacing(kit::kHalf);
  board->addWidget(m_online);
  m_board = new QVBoxLayout;
  m_board->setSpacing(kit::kHair);
  m_board->addLayout(board);
  return m_board;
}

void ToolRow::AddBoardChip(QWidget& chip) {
  m_board->addStretch(1);
  m_board->insertStretch(0, 1);
  m_board->insertWidget(2, &chip, 0, Qt::AlignRight);
  setTabOrder(m_why, &chip);
}

QToolButton* ToolRow::MakeMenuButton(const char* name, const QString& caption, const QString& purpose) {
  auto* const button = new QToolButton(this);
  button->setObjectName(name);
  button->setText(caption);
  button->setAccessibleName(caption);
  button->setAccessibleDescription(purpose);
  button->setToolTip(purpose);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setIconSize({kIcon, kIcon});
  button->setAutoRaise(true);
  button->setPopupMode(QToolButton::InstantPopup);
  button->setFocusPolicy(Qt::TabFocus);
  button->installEventFilter(this);
  kit::SetHelp(*button, purpose);
  return button;
}

void ToolRow::MakeButtons(QHBoxLayout& layout) {
  for (const Tool tool : kTools) {
    const ToolFacts& facts = FactsOf(tool);
    if (tool == Tool::Import) {
      m_edit = new QWidget(this);
      auto* const edit = new QHBoxLayout(m_edit);
      edit->setContentsMargins(0, 0, 0, 0);
      edit->setSpacing(kit::kHalf);
      layout.addWidget(m_edit);
      layout.addSpacing(kit::kGrid);
    }
    auto* const button = new QToolButton(this);
    button->setObjectName(facts.control);
    button->setText(tr(facts.caption));
    button->setAccessibleName(tr(facts.caption));
    button->setAccessibleDescription(tr(facts.purpose));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setIconSize({kIcon, kIcon});
    button->setAutoRaise(true);
    // A click does something; the keyboard stays where it is.
    button->setFocusPolicy(Qt::TabFocus);
    button->setShortcut(QKeySequence(facts.shortcut));
    kit::SetHelp(*button, tr(facts.hint), facts.help);
    connect(button, &QToolButton::clicked, this, [this, tool] { emit pressed(tool); });
    layout.addWidget(button);
    m_buttons[static_cast<std::size_t>(tool)] = button;
    ShowWhyNot(tool, {});
  }
  Button(Tool::Import).hide();
  Button(Tool::Try).setCheckable(true);
  kit::Theme::MakePrimary(Button(Tool::Send));
}

void ToolRow::ShowPictures() {
  for (const Tool tool : kTools) {
    QToolButton& button = Button(tool);
    const QString active = FactsOf(tool).picture;
    const QString disabled = FactsOf(tool).disabledPicture;
    // On the accent's ground the picture takes the colour of the text there.
    QIcon icon = kit::Theme::IsPrimary(&button)
                     ? m_pictures.Tinted(active, kit::ColorOf(kit::ColorRole::AccentText, palette()))
                     : m_pictures.Icon(active);
    if (disabled.isEmpty())
      AddDisabledPicture(icon, active);
    else
      AddPicture(icon, m_pictures.Icon(disabled));
    button.setIcon(icon);
  }
  m_view->setIcon(m_pictures.Icon("view.bmp"));
  m_help->setIcon(m_pictures.Icon("help.bmp"));
  for (const auto& [action, picture] : m_edits) {
    QIcon icon = m_pictures.Icon(picture);
    AddDisabledPicture(icon, picture);
    action->setIcon(icon);
  }
}

void ToolRow::AddDisabledPicture(QIcon& icon, const QString& picture) const {
  AddPicture(icon, m_pictures.Tinted(picture, palette().color(QPalette::Disabled, QPalette::ButtonText)));
}

void ToolRow::ShowWhyNot(Tool tool, const QString& reason) const {
  QToolButton& button = Button(tool);
  button.setEnabled(reason.isEmpty());
  if (!reason.isEmpty()) return button.setToolTip(reason);
  const QString purpose =
      tr("%1 (%2)").arg(tr(FactsOf(tool).purpose), button.shortcut().toString(QKeySequence::NativeText));
  if (button.menu() == nullptr) return button.setToolTip(purpose);
  // Only the first tools have menus.
  const QString menus[] = {tr("%1\nArrow down: recent sets"), tr("%1\nArrow down: pack the set with its sounds"),
                           tr("%1\nArrow down: a whole folder")};
  button.setToolTip(menus[static_cast<std::size_t>(tool)].arg(purpose));
}

void ToolRow::AddUndoAndRedo(QAction& undo, QAction& redo) {
  m_edits = {{&undo, "undo.bmp"}, {&redo, "redo.bmp"}};
  ShowPictures();
  QToolButton* const undoButton = MakeActionButton("UndoBtn", undo);
  QToolButton* const redoButton = MakeActionButton("RedoBtn", redo);
  m_edit->layout()->addWidget(undoButton);
  m_edit->layout()->addWidget(redoButton);
  setTabOrder(&Button(Tool::Save), undoButton);
  setTabOrder(undoButton, redoButton);
  setTabOrder(redoButton, &Button(Tool::Import));
}

void ToolRow::EnableUndoAndRedo(bool enabled) const {
  // Not the actions, whose state is their owner's: keys go to what can be seen and used.
  m_edit->setEnabled(enabled);
}

QToolButton* ToolRow::MakeActionButton(const char* name, QAction& action) {
  auto* const button = new QToolButton(m_edit);
  button->setObjectName(name);
  kit::SetHelpContext(*button, kit::HelpContext::Undo);
  button->setDefaultAction(&action);
  button->setToolButtonStyle(action.icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  button->setIconSize({kIcon, kIcon});
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

void ToolRow::SetImportMenu(QMenu& menu) {
  SetArrowMenu(Tool::Import, menu);
  Button(Tool::Import).show();
}

void ToolRow::SetArrowMenu(Tool tool, QMenu& menu) {
  QToolButton& button = Button(tool);
  button.setMenu(&menu);
  button.setPopupMode(QToolButton::MenuButtonPopup);
  button.installEventFilter(this);
  ShowWhyNot(tool, {});
  ForgetPointerAfter(menu, button);
}

void ToolRow::SetViewMenu(QMenu& menu) { SetMenu(*m_view, menu); }

void ToolRow::SetHelpMenu(QMenu& menu) { SetMenu(*m_help, menu); }

void ToolRow::SetMenu(QToolButton& button, QMenu& menu) {
  button.setMenu(&menu);
  ForgetPointerAfter(menu, button);
}

void ToolRow::OfferWhy(const QString& whyNot) {
  m_why->setVisible(!m_isOnline);
  m_why->setEnabled(whyNot.isEmpty());
  m_why->setToolTip(whyNot);
}

void ToolRow::ForgetPointerAfter(QMenu& menu, QToolButton& button) {
  // Once it is gone: a button is not told that the pointer leaves it while a menu has the mouse.
  connect(
      &menu, &QMenu::aboutToHide, this,
      [&button] {
        if (button.rect().contains(button.mapFromGlobal(QCursor::pos()))) return;
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        button.update();
      },
      Qt::QueuedConnection);
}

int ToolRow::WidthFor(bool hasCaptions) const {
  const auto style = hasCaptions ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly;
  int width = QWidget::minimumSizeHint().width();
  for (const QToolButton* const button : m_buttons)
    if (!button->isHidden()) width += WidthOf(*button, style) - button->sizeHint().width();
  return width;
}

QSize ToolRow::minimumSizeHint() const { return {WidthFor(false), QWidget::minimumSizeHint().height()}; }

void ToolRow::FitCaptions() {
  const bool hasCaptions = WidthFor(true) <= width();
  const auto style = hasCaptions ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly;
  for (QToolButton* const button : m_buttons)
    if (button->toolButtonStyle() != style) button->setToolButtonStyle(style);
}

bool ToolRow::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  // A label has become longer or shorter, or a tool has come.
  if (event->type() == QEvent::LayoutRequest) FitCaptions();
  return handled;
}

void ToolRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitCaptions();
}

void ToolRow::ShowLogo() {
  const QPixmap logo = m_pictures.Pixmap("corvent_small.bmp", {4 * kLogoHeight, kLogoHeight}, devicePixelRatioF());
  m_logo->setPixmap(logo);
  m_logo->setVisible(!logo.isNull());
}

void ToolRow::ShowSession(const core::device::SessionState& session) {
  const bool online = session.IsOnline();
  m_isOnline = online;
  const QString file = online ? "LS_on.bmp" : "LS_off.bmp";
  m_online->setPixmap(m_pictures.Pixmap(file, {kOnlineSide, kOnlineSide}, devicePixelRatioF()));
  m_online->setProperty("picture", file);
  const QString state = online ? tr("A board is connected") : tr("No board is connected");
  m_online->setToolTip(state);
  m_online->setAccessibleName(state);

  const QString problem = kit::Translated(session.accessProblem);
  const QString advice = problem.isEmpty() ? kit::Translated(session.passedOver) : problem;
  m_noBoard->setVisible(!online);
  m_noBoard->setText(problem.isEmpty() ? tr("No board connected") : tr("Board found, not usable yet"));
  m_noBoard->setToolTip(advice);
  m_noBoard->setAccessibleDescription(advice);

  const QString serial = QString::fromStdString(session.serialLabel);
  m_serial->setText(serial);
  m_serial->setVisible(!serial.isEmpty());
  m_serial->setAccessibleName(serial);
  m_serial->setToolTip(online && session.boards > 1
                           ? tr("%1 boards are connected; this is the first one, which is used.").arg(session.boards)
                           : QString());
}

void ToolRow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && m_help != nullptr) ShowPictures();
}

bool ToolRow::eventFilter(QObject* watched, QEvent* event) {
  auto* const button = qobject_cast<QToolButton*>(watched);
  if (button != nullptr && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
    button->showMenu();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace kestrin::ui::window
