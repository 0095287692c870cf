// SPDX-License-Identifier: MIT
#include "ui/help/HelpSearch.h"

#include <QRegularExpression>
#include <QTextDocument>
#include <algorithm>
#include <utility>

#include "ui/help/HelpSource.h"

namespace kestrin::ui::help {

namespace {

constexpr int kExtractLead = 40;
constexpr int kExtractLength = 120;

/// The text around the word, cut at blanks.
QString ExtractAround(const QString& text, qsizetype at) {
  qsizetype start = at > kExtractLead ? text.indexOf(' ', at - kExtractLead) + 1 : 0;
  if (start <= 0 || start > at) start = std::max<qsizetype>(0, at - kExtractLead);
  qsizetype end = std::min(text.size(), start + kExtractLength);
  if (const qsizetype blank = text.lastIndexOf(' ', end); end < text.size() && blank > at) end = blank;
  const QString front = start > 0 ? QStringLiteral("... ") : QString();
  const QString back = end < text.size() ? QStringLiteral(" ...") : QString();
  return front + text.mid(start, end - start) + back;
}

}  // namespace

QStringList HelpSearch::WordsOf(const QString& text) {
  static const QRegularExpression kSeparators(QStringLiteral("[^\\p{L}\\p{N}]+"));
  QStringList words = text.toLower().split(kSeparators, Qt::SkipEmptyParts);
  words.removeDuplicates();
  return words;
}

void HelpSearch::ReadPages() {
  m_read = true;
  QTextDocument document;
  for (const std::string& path : m_source.Pages()) {
    const auto page = m_source.Page(path);
    if (!page) continue;
    document.setHtml(QString::fromStdString(*page));
    const QString title = document.metaInformation(QTextDocument::DocumentTitle);
    m_pages.push_back({QString::fromStdString(path), title, document.toPlainText().simplified()});
  }
}

std::vector<HelpSearch::Hit> HelpSearch::Find(const QStringList& words) {
  if (words.isEmpty()) return {};
  if (!m_read) ReadPages();

  // Words that stand side by side, as in a message, are what was looked for.
  const QString phrase = words.join(' ');
  std::vector<std::pair<qsizetype, Hit>> ranked;
  for (const PageText& page : m_pages) {
    constexpr qsizetype kTitleWorth = 10000;
    constexpr qsizetype kPhraseWorth = 1000;
    qsizetype worth = 0;
    bool all = true;
    for (const QString& word : words) {
      const qsizetype inTitle = page.title.count(word, Qt::CaseInsensitive);
      const qsizetype inText = page.text.count(word, Qt::CaseInsensitive);
      all = all && inTitle + inText > 0;
      worth += (inTitle > 0 ? kTitleWorth : 0) + inText;
    }
    if (!all) continue;
    qsizetype at = page.text.indexOf(phrase, 0, Qt::CaseInsensitive);
    if (at >= 0) worth += kPhraseWorth;
    if (at < 0) at = page.text.indexOf(words.constFirst(), 0, Qt::CaseInsensitive);
    ranked.emplace_back(worth, Hit{page.path, page.title, at < 0 ? QString() : ExtractAround(page.text, at)});
  }
  std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<Hit> hits;
  hits.reserve(ranked.size());
  for (auto& [worth, hit] : ranked) hits.push_back(std::move(hit));
  return hits;
}

}  // namespace kestrin::ui::help
