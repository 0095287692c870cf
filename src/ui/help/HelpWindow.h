// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "ui/help/HelpSearch.h"
#include "ui/kit/HelpContext.h"

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QStackedWidget;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class QUrl;

namespace kestrin::ui::help {

class HelpBrowser;
class HelpSource;

/// The window of the help: contents or search results on the left, the page on the right, back and forward.
///
/// Where the help file is missing or damaged, the window says so and what to do about it.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  /// The source must outlive the window.
  explicit HelpWindow(const HelpSource& source, QWidget* parent = nullptr);

  /// Shows the topic, the first page where the help does not know it, and brings the window to the front. It can be
  /// used even while a dialog waits for its answer.
  void ShowTopic(kit::HelpContext context);

 private:
  void MakeLayout();
  QWidget* MakeToolRow();
  QWidget* MakeSidePane();
  QWidget* MakeResultPane();
  QToolButton* MakeNavigation(const QString& name, const QString& text, Qt::ArrowType arrow);
  QAction* MakeShortcut(const QKeySequence& keys);
  void ConnectControls();
  void FillContents();
  void PresentWindow();

  void SearchFor(const QString& text);
  void ShowResult(const QListWidgetItem* item);
  void ShowEntry(const QTreeWidgetItem* item);
  void FollowPage(const QUrl& page);

  const HelpSource& m_source;
  HelpSearch m_search;
  QToolButton* m_back = nullptr;
  QToolButton* m_forward = nullptr;
  QToolButton* m_first = nullptr;
  QLineEdit* m_searchText = nullptr;
  QStackedWidget* m_side = nullptr;
  QTreeWidget* m_contents = nullptr;
  QWidget* m_resultPane = nullptr;
  QLabel* m_resultCount = nullptr;
  QListWidget* m_results = nullptr;
  HelpBrowser* m_page = nullptr;
};

}  // namespace kestrin::ui::help
