// SPDX-License-Identifier: MIT
#include "ui/help/HelpBrowser.h"

#include <QEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QUrl>
#include <QVariant>

#include "ui/help/HelpSource.h"
#include "ui/help/HelpStyle.h"
#include "ui/kit/Grid.h"

namespace kestrin::ui::help {

namespace {

QString MissingPage(const QString& path) {
  return HelpBrowser::tr(
             "<h1>This page is missing</h1><p>The help file has no page \"%1\". Installing the program again should "
             "put a complete help file into its folder.</p><p><a href=\"overview.html\">To the first page</a></p>")
      .arg(path.toHtmlEscaped());
}

QString ProblemPage(const QString& problem) {
  return HelpBrowser::tr(
             "<h1>The help cannot be shown</h1><p>%1</p><p>Everything else works without it. Point at a button to read "
             "in the line at the bottom of the window what the button does.</p>")
      .arg(problem.toHtmlEscaped());
}

}  // namespace

HelpBrowser::HelpBrowser(const HelpSource& source, QWidget* parent) : QTextBrowser(parent), m_source(source) {
  setOpenExternalLinks(false);
  setFrameShape(QFrame::NoFrame);
  document()->setDocumentMargin(kit::kWide);
  Restyle();
}

void HelpBrowser::ShowPlace(const QString& place) { setSource(QUrl(place)); }

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
  // The pages' own style sheet is for other help viewers; here the window's colours hold.
  if (type == QTextDocument::StyleSheetResource) return QString();
  if (type != QTextDocument::HtmlResource) return {};
  if (const std::string problem = m_source.Problem(); !problem.empty())
    return ProblemPage(QString::fromStdString(problem));
  const QString path = name.path();
  const auto page = m_source.Page(path.toStdString());
  return page ? QString::fromStdString(*page) : MissingPage(path);
}

void HelpBrowser::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
  const QUrl target = source().resolved(name);
  if (!target.scheme().isEmpty() || !target.host().isEmpty()) return;
  QTextBrowser::doSetSource(target, type == QTextDocument::UnknownResource ? QTextDocument::HtmlResource : type);
  // Every page comes with a document of its own.
  MarkWords();
}

void HelpBrowser::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) Restyle();
}

void HelpBrowser::Restyle() {
  document()->setDefaultStyleSheet(HelpStyle(palette()));
  if (source().isEmpty()) return;
  const int position = verticalScrollBar()->value();
  reload();
  verticalScrollBar()->setValue(position);
  MarkWords();
}

void HelpBrowser::Mark(const QStringList& words) {
  m_words = words;
  MarkWords();
  if (extraSelections().isEmpty()) return;
  QTextCursor first = document()->find(words.join(' '));
  if (first.isNull()) {
    first = extraSelections().constFirst().cursor;
    for (const ExtraSelection& selection : extraSelections()) {
      if (selection.cursor.selectionStart() < first.selectionStart()) first = selection.cursor;
    }
  }
  first.clearSelection();
  setTextCursor(first);
  // Not at the very edge of the page, so that the lines around it can be read as well.
  constexpr int kShareAbove = 3;
  QScrollBar& bar = *verticalScrollBar();
  bar.setValue(bar.value() + cursorRect(first).top() - viewport()->height() / kShareAbove);
}

void HelpBrowser::MarkWords() {
  QList<ExtraSelection> selections;
  for (const QString& word : m_words) {
    for (QTextCursor found = document()->find(word, 0); !found.isNull(); found = document()->find(word, found)) {
      ExtraSelection selection;
      selection.cursor = found;
      selection.format.setBackground(palette().link());
      selection.format.setForeground(palette().base());
      selections.append(selection);
    }
  }
  setExtraSelections(selections);
}

}  // namespace kestrin::ui::help
