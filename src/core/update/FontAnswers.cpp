// SPDX-License-Identifier: MIT
#include "update/FontAnswers.h"

#include <utility>
#include <vector>

#include "base/Text.h"
#include "update/PlainName.h"

namespace kestrin::core::update {

namespace {

constexpr std::string_view kAccepted = "status:OK\r\nclientv:1";
constexpr std::string_view kRefusal = "status:REFUSED\r\nclientv:1";

/// The fields of a request: "svc=dld&did=SERIAL&fid=FONT&ffd=FILE". Values are not escaped: what ends one is the next
/// field's whole name.
struct Fields {
  explicit Fields(std::string_view body) {
    static constexpr std::string_view kNames[] = {"&ffd=", "&fid=", "&did=", "svc="};
    std::string_view* const values[] = {&file, &font, &board, &service};
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
      const std::size_t at = body.find(kNames[i]);
      if (at == body.npos) continue;
      *values[i] = body.substr(at + kNames[i].size());
      body = body.substr(0, at);
    }
    // Nothing stands before the first field.
    if (!body.empty()) service = "";
  }

  std::string_view service, board, font, file;
};

FontAnswers::Answer Accept(const std::vector<std::string>& lines, std::string note) {
  FontAnswers::Answer answer;
  answer.text = kAccepted;
  for (const std::string& line : lines) answer.text.append(base::kLineEnd).append(line);
  answer.note = std::move(note);
  return answer;
}

FontAnswers::Answer Refuse(std::string_view what) {
  FontAnswers::Answer answer;
  answer.text = kRefusal;
  answer.note = "refused: " + ShownName(what);
  return answer;
}

}  // namespace

FontAnswers::Answer FontAnswers::Text(std::string_view body) const {
  const Fields fields(body);
  if (fields.service == "gct") return Catalogue();
  if (fields.service == "fqr") return Query(fields.font);
  return Refuse("an unknown request");
}

FontAnswers::Answer FontAnswers::Download(std::string_view body) const {
  const Fields fields(body);
  const std::string what = ShownName(fields.font) + ": " + ShownName(fields.file);
  Answer answer;
  if (fields.service == "dld") answer.file = m_fonts.SoundFile(fields.font, fields.file);
  answer.status = answer.file ? 200 : 404;
  answer.note = answer.file ? what : "refused: " + what;
  return answer;
}

FontAnswers::Answer FontAnswers::Catalogue() const {
  std::vector<std::string> names;
  for (FontCollection::Font& font : m_fonts.Fonts())
    if (font.lines) names.push_back(std::move(font.name));
  const std::string note = "list of " + std::to_string(names.size()) + (names.size() == 1 ? " font" : " fonts");
  // A list of a single line counts as empty, so a single font's line is ended, which makes a second, empty one.
  if (names.size() == 1) names.emplace_back();
  return Accept(names, note);
}

FontAnswers::Answer FontAnswers::Query(std::string_view name) const {
  // The empty line of the list is asked for like a font; it has nothing.
  if (name.empty()) return Accept({}, "nothing");
  const std::optional<FontCollection::Font> font = m_fonts.Find(name);
  return font ? Accept(*font->lines, font->name) : Refuse(name);
}

}  // namespace kestrin::core::update
