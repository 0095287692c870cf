// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace kestrin::ui::help {

class HelpSource;

/// Word search over all pages of the help.
class HelpSearch {
 public:
  struct Hit {
    QString path;
    QString title;
    /// Some text around the first word found; empty when only the title holds it.
    QString extract;
  };

  /// The source must outlive the search. The pages are read at the first search.
  explicit HelpSearch(const HelpSource& source) : m_source(source) {}

  /// The words of what a person typed: letters and digits, everything else separates; nothing twice.
  [[nodiscard]] static QStringList WordsOf(const QString& text);
  /// The pages that hold every word, whatever its letter case, also as a part of a longer one; pages with words in
  /// their title first, then those where the words stand more often. No words: no pages.
  [[nodiscard]] std::vector<Hit> Find(const QStringList& words);

 private:
  struct PageText {
    QString path;
    QString title;
    QString text;
  };

  void ReadPages();

  const HelpSource& m_source;
  bool m_read = false;
  std::vector<PageText> m_pages;
};

}  // namespace kestrin::ui::help
