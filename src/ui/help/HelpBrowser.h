// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTextBrowser>

namespace kestrin::ui::help {

class HelpSource;

/// Shows pages of the help. Links lead to other pages only, never out of the program.
class HelpBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  /// The source must outlive the browser.
  explicit HelpBrowser(const HelpSource& source, QWidget* parent = nullptr);

  /// Shows a place ("slots.html#boot").
  void ShowPlace(const QString& place);
  /// Marks every occurrence of the words on the page and goes to where they stand side by side, else to the first one;
  /// no words: no marks.
  void Mark(const QStringList& words);

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
  void changeEvent(QEvent* event) override;

 private:
  void Restyle();
  void MarkWords();

  const HelpSource& m_source;
  QStringList m_words;
};

}  // namespace kestrin::ui::help
