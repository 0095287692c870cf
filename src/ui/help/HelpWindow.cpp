// SPDX-License-Identifier: MIT
#include "ui/help/HelpWindow.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>
#include <initializer_list>

#include "ui/help/HelpBrowser.h"
#include "ui/help/HelpSource.h"
#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"

namespace kestrin::ui::help {

namespace {

constexpr const char* kFirstPage = "overview.html";
constexpr int kPlaceRole = Qt::UserRole;
constexpr QSize kSize(960, 640);
constexpr int kSideWidth = 280;

/// A name for tests and one for people who hear the window instead of seeing it.
void Name(QWidget& widget, const QString& name, const QString& accessibleName) {
  widget.setObjectName(name);
  widget.setAccessibleName(accessibleName);
}

}  // namespace

HelpWindow::HelpWindow(const HelpSource& source, QWidget* parent)
    : QWidget(parent, Qt::Window), m_source(source), m_search(source) {
  setObjectName(QStringLiteral("helpWindow"));
  setWindowTitle(tr("Kestrin Launcher Help"));
  MakeLayout();
  ConnectControls();
  FillContents();
  resize(kSize);
  m_page->ShowPlace(QString::fromLatin1(kFirstPage));

  const bool usable = m_source.Problem().empty();
  m_first->setEnabled(usable);
  m_searchText->setEnabled(usable);
  m_side->setVisible(usable);
}

void HelpWindow::MakeLayout() {
  m_page = new HelpBrowser(m_source);
  Name(*m_page, QStringLiteral("helpPage"), tr("Help page"));

  auto* const splitter = new QSplitter(Qt::Horizontal);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(MakeSidePane());
  splitter->addWidget(m_page);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kSideWidth, kSize.width() - kSideWidth});

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(kit::kGrid, kit::kGrid, kit::kGrid, kit::kGrid);
  layout->setSpacing(kit::kGrid);
  layout->addWidget(MakeToolRow());
  layout->addWidget(splitter, 1);
  QWidget* before = m_back;
  for (QWidget* next :
       std::initializer_list<QWidget*>{m_forward, m_first, m_searchText, m_contents, m_results, m_page}) {
    setTabOrder(before, next);
    before = next;
  }
}

QWidget* HelpWindow::MakeToolRow() {
  m_back = MakeNavigation(QStringLiteral("helpBack"), tr("Back"), Qt::LeftArrow);
  m_forward = MakeNavigation(QStringLiteral("helpForward"), tr("Forward"), Qt::RightArrow);
  m_first = MakeNavigation(QStringLiteral("helpFirst"), tr("First page"), Qt::NoArrow);
  m_back->setToolTip(tr("The page before (Alt+Left)"));
  m_forward->setToolTip(tr("The page after (Alt+Right)"));
  m_first->setToolTip(tr("What the program does (Alt+Home)"));

  m_searchText = new QLineEdit;
  Name(*m_searchText, QStringLiteral("helpSearch"), tr("Search the help"));
  m_searchText->setPlaceholderText(tr("Search all pages (Ctrl+F)"));
  m_searchText->setClearButtonEnabled(true);

  auto* const row = new QWidget;
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kit::kGrid);
  layout->addWidget(m_back);
  layout->addWidget(m_forward);
  layout->addWidget(m_first);
  layout->addSpacing(kit::kGrid);
  layout->addWidget(m_searchText, 1);
  return row;
}

QToolButton* HelpWindow::MakeNavigation(const QString& name, const QString& text, Qt::ArrowType arrow) {
  auto* const button = new QToolButton;
  Name(*button, name, text);
  button->setText(text);
  button->setArrowType(arrow);
  button->setToolButtonStyle(arrow == Qt::NoArrow ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

QWidget* HelpWindow::MakeSidePane() {
  m_contents = new QTreeWidget;
  Name(*m_contents, QStringLiteral("helpContents"), tr("Contents"));
  m_contents->setHeaderHidden(true);
  m_contents->setTextElideMode(Qt::ElideNone);

  m_side = new QStackedWidget;
  m_side->addWidget(m_contents);
  m_side->addWidget(MakeResultPane());
  return m_side;
}

QWidget* HelpWindow::MakeResultPane() {
  m_resultCount = kit::MakeLabel(QStringLiteral("helpResultCount"), kit::TextStyle::Plain, {}, nullptr);
  m_resultCount->setWordWrap(true);
  m_results = new QListWidget;
  Name(*m_results, QStringLiteral("helpResults"), tr("Pages found"));
  m_results->setWordWrap(true);
  m_results->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_results->setSpacing(kit::kHair);

  m_resultPane = new QWidget;
  auto* const layout = new QVBoxLayout(m_resultPane);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kit::kGrid);
  layout->addWidget(m_resultCount);
  layout->addWidget(m_results, 1);
  return m_resultPane;
}

QAction* HelpWindow::MakeShortcut(const QKeySequence& keys) {
  auto* const action = new QAction(this);
  action->setShortcut(keys);
  addAction(action);
  return action;
}

void HelpWindow::ConnectControls() {
  const auto showFirst = [this] { m_page->ShowPlace(QString::fromLatin1(kFirstPage)); };
  connect(m_back, &QToolButton::clicked, m_page, &HelpBrowser::backward);
  connect(m_forward, &QToolButton::clicked, m_page, &HelpBrowser::forward);
  connect(m_first, &QToolButton::clicked, m_page, showFirst);
  m_back->setEnabled(false);
  m_forward->setEnabled(false);
  connect(m_page, &HelpBrowser::backwardAvailable, m_back, &QToolButton::setEnabled);
  connect(m_page, &HelpBrowser::forwardAvailable, m_forward, &QToolButton::setEnabled);
  connect(m_page, &HelpBrowser::sourceChanged, this, &HelpWindow::FollowPage);

  connect(m_searchText, &QLineEdit::textChanged, this, &HelpWindow::SearchFor);
  connect(m_searchText, &QLineEdit::returnPressed, this, [this] { ShowResult(m_results->currentItem()); });
  connect(m_results, &QListWidget::itemClicked, this, &HelpWindow::ShowResult);
  connect(m_results, &QListWidget::itemActivated, this, &HelpWindow::ShowResult);
  connect(m_contents, &QTreeWidget::itemClicked, this, &HelpWindow::ShowEntry);
  connect(m_contents, &QTreeWidget::itemActivated, this, &HelpWindow::ShowEntry);

  connect(MakeShortcut(Qt::ALT | Qt::Key_Left), &QAction::triggered, m_page, &HelpBrowser::backward);
  connect(MakeShortcut(Qt::ALT | Qt::Key_Right), &QAction::triggered, m_page, &HelpBrowser::forward);
  connect(MakeShortcut(Qt::ALT | Qt::Key_Home), &QAction::triggered, m_page, showFirst);
  connect(MakeShortcut(Qt::Key_Escape), &QAction::triggered, this, [this] {
    // One step back at a time: out of the search first.
    if (m_searchText->text().isEmpty())
      close();
    else
      m_searchText->clear();
  });
  connect(MakeShortcut(Qt::CTRL | Qt::Key_F), &QAction::triggered, m_searchText, [this] {
    m_searchText->setFocus(Qt::ShortcutFocusReason);
    m_searchText->selectAll();
  });
}

void HelpWindow::FillContents() {
  QList<QTreeWidgetItem*> branch;
  for (const HelpEntry& entry : m_source.Contents()) {
    // An entry can be at most one deeper than the one before.
    while (branch.size() > entry.depth) branch.removeLast();
    auto* const item = branch.isEmpty() ? new QTreeWidgetItem(m_contents) : new QTreeWidgetItem(branch.constLast());
    item->setText(0, QString::fromStdString(entry.title));
    item->setData(0, kPlaceRole, QString::fromStdString(entry.place));
    item->setSizeHint(0, QSize(0, fontMetrics().height() + kit::kGrid));
    branch.append(item);
  }
  m_contents->expandAll();
}

void HelpWindow::ShowTopic(kit::HelpContext context) {
  const auto place = m_source.PlaceOf(static_cast<std::uint32_t>(context));
  m_searchText->clear();
  m_page->ShowPlace(place ? QString::fromStdString(*place) : QString::fromLatin1(kFirstPage));
  PresentWindow();
  m_page->setFocus(Qt::OtherFocusReason);
}

void HelpWindow::PresentWindow() {
  // A dialog that waits for its answer locks every window but those that belong to it.
  const QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog != nullptr && dialog->windowHandle() != nullptr) {
    static_cast<void>(winId());
    if (windowHandle()->transientParent() != dialog->windowHandle()) {
      hide();
      windowHandle()->setTransientParent(dialog->windowHandle());
    }
  }
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void HelpWindow::SearchFor(const QString& text) {
  const QStringList words = HelpSearch::WordsOf(text);
  m_results->clear();
  if (words.isEmpty()) {
    m_side->setCurrentWidget(m_contents);
    m_page->Mark({});
    return;
  }
  for (const HelpSearch::Hit& hit : m_search.Find(words)) {
    auto* const item = new QListWidgetItem(hit.title + QChar('\n') + hit.extract, m_results);
    item->setData(kPlaceRole, hit.path);
  }
  const int count = m_results->count();
  m_resultCount->setText(count == 0   ? tr("No page has all of these words. Try fewer or shorter ones.")
                         : count == 1 ? tr("1 page")
                                      : tr("%1 pages").arg(count));
  m_results->setCurrentRow(0);
  m_side->setCurrentWidget(m_resultPane);
}

void HelpWindow::ShowResult(const QListWidgetItem* item) {
  if (item == nullptr) return;
  m_page->ShowPlace(item->data(kPlaceRole).toString());
  m_page->Mark(HelpSearch::WordsOf(m_searchText->text()));
}

void HelpWindow::ShowEntry(const QTreeWidgetItem* item) {
  const QString place = item->data(0, kPlaceRole).toString();
  if (!place.isEmpty()) m_page->ShowPlace(place);
}

void HelpWindow::FollowPage(const QUrl& page) {
  QTreeWidgetItem* best = nullptr;
  for (QTreeWidgetItemIterator entry(m_contents); *entry != nullptr; ++entry) {
    const QString place = (*entry)->data(0, kPlaceRole).toString();
    if (place == page.toString()) {
      best = *entry;
      break;
    }
    if (best == nullptr && place == page.path()) best = *entry;
  }
  m_contents->setCurrentItem(best);
}

}  // namespace kestrin::ui::help
