// Reading; Json.cpp writes.

#include <charconv>
#include <cstdint>

#include "simulator/store/Json.h"

namespace kestrin::simulator {

namespace {

/// Reads a document from the front to the back; the first thing that is wrong ends it.
class Reader {
 public:
  explicit Reader(std::string_view text) : m_text(text) {}

  Json::Parsed Document() {
    Json value;
    bool good = Value(value, 0);
    if (good) {
      SkipBlanks();
      if (m_at != m_text.size()) good = Fail("nothing may follow the value");
    }
    if (!good) return {std::nullopt, m_problem + " (at byte " + std::to_string(m_at) + ")"};
    return {std::move(value), ""};
  }

 private:
  bool Fail(std::string problem) {
    m_problem = std::move(problem);
    return false;
  }

  /// The next character, NUL at the end (a NUL of the text itself is never allowed, so the two need no telling apart).
  [[nodiscard]] char Peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

  bool Take(char c) {
    if (m_at >= m_text.size() || m_text[m_at] != c) return false;
    ++m_at;
    return true;
  }

  void SkipBlanks() {
    while (Peek() == ' ' || Peek() == '\t' || Peek() == '\r' || Peek() == '\n') ++m_at;
  }

  bool Value(Json& out, int depth) {
    SkipBlanks();
    switch (Peek()) {
      case '{':
        return depth < Json::kDeepest ? Object(out, depth) : Fail("objects stand too deep in one another");
      case '[':
        return depth < Json::kDeepest ? Array(out, depth) : Fail("arrays stand too deep in one another");
      case '"': {
        std::string text;
        if (!Text(text)) return false;
        out = Json(std::move(text));
        return true;
      }
      case 't':
        return Word("true", Json(true), out);
      case 'f':
        return Word("false", Json(false), out);
      case 'n':
        return Word("null", Json(), out);
      default:
        return Number(out);
    }
  }

  bool Word(std::string_view word, Json value, Json& out) {
    if (m_text.substr(m_at, word.size()) != word) return Fail("a value was expected");
    m_at += word.size();
    out = std::move(value);
    return true;
  }

  bool Object(Json& out, int depth) {
    Json::Object members;
    Take('{');
    SkipBlanks();
    while (!Take('}')) {
      if (!members.empty()) {
        if (!Take(',')) return Fail("\",\" or \"}\" was expected");
        SkipBlanks();
      }
      std::string name;
      if (Peek() != '"') return Fail("a name in quotation marks was expected");
      if (!Text(name)) return false;
      for (const Json::Member& member : members)
        if (member.first == name) return Fail("\"" + name + "\" stands twice in one object");
      SkipBlanks();
      if (!Take(':')) return Fail("\":\" was expected");
      Json value;
      if (!Value(value, depth + 1)) return false;
      members.emplace_back(std::move(name), std::move(value));
      SkipBlanks();
    }
    out = Json(std::move(members));
    return true;
  }

  bool Array(Json& out, int depth) {
    Json::Array elements;
    Take('[');
    SkipBlanks();
    while (!Take(']')) {
      if (!elements.empty() && !Take(',')) return Fail("\",\" or \"]\" was expected");
      Json value;
      if (!Value(value, depth + 1)) return false;
      elements.push_back(std::move(value));
      SkipBlanks();
    }
    out = Json(std::move(elements));
    return true;
  }

  bool Digits() {
    const std::size_t start = m_at;
    while (Peek() >= '0' && Peek() <= '9') ++m_at;
    return m_at > start;
  }

  bool Number(Json& out) {
    const std::size_t start = m_at;
    Take('-');
    // A 0 in front stands alone.
    if (!Take('0') && !Digits()) return Fail("a value was expected");
    if (Take('.') && !Digits()) return Fail("a digit was expected");
    if (Take('e') || Take('E')) {
      if (!Take('-')) Take('+');
      if (!Digits()) return Fail("a digit was expected");
    }
    double value = 0;
    if (std::from_chars(m_text.data() + start, m_text.data() + m_at, value).ec != std::errc())
      return Fail("the number is too large or too small");
    out = Json(value);
    return true;
  }

  bool Text(std::string& out) {
    Take('"');
    while (!Take('"')) {
      if (m_at >= m_text.size()) return Fail("a text has no end");
      const char c = m_text[m_at];
      if (static_cast<unsigned char>(c) < 0x20) return Fail("a control character stands in a text");
      ++m_at;
      if (c != '\\') {
        out += c;
      } else if (!Escape(out)) {
        return false;
      }
    }
    return true;
  }

  bool Escape(std::string& out) {
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    if (Take('u')) return CodePoint(out);
    const std::size_t letter = kLetters.find(Peek());
    if (letter == kLetters.npos) return Fail("\"\\\" must not stand before this character");
    ++m_at;
    out += kMeanings[letter];
    return true;
  }

  bool FourDigits(std::uint32_t& value) {
    value = 0;
    for (int i = 0; i < 4; ++i, ++m_at) {
      const char c = Peek();
      const int digit = c >= '0' && c <= '9'   ? c - '0'
                        : c >= 'a' && c <= 'f' ? c - 'a' + 10
                        : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                               : -1;
      if (digit < 0) return Fail("four hexadecimal digits were expected");
      value = value * 16 + static_cast<std::uint32_t>(digit);
    }
    return true;
  }

  /// The number behind "\u", and where it is the first half of a pair, the second; appended as UTF-8.
  bool CodePoint(std::string& out) {
    std::uint32_t point = 0;
    if (!FourDigits(point)) return false;
    if (point >= 0xD800 && point <= 0xDFFF) {
      std::uint32_t low = 0;
      if (point > 0xDBFF || !Take('\\') || !Take('u')) return Fail("half a character pair");
      if (!FourDigits(low)) return false;
      if (low < 0xDC00 || low > 0xDFFF) return Fail("half a character pair");
      point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
    }
    const auto tail = [point](int shift) { return static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
      out += static_cast<char>(point);
    } else if (point < 0x800) {
      out += static_cast<char>(0xC0 | (point >> 6));
      out += tail(0);
    } else if (point < 0x10000) {
      out += static_cast<char>(0xE0 | (point >> 12));
      out += tail(6);
      out += tail(0);
    } else {
      out += static_cast<char>(0xF0 | (point >> 18));
      out += tail(12);
      out += tail(6);
      out += tail(0);
    }
    return true;
  }

  std::string_view m_text;
  std::size_t m_at = 0;
  std::string m_problem;
};

}  // namespace

Json::Parsed Json::Parse(std::string_view text) { return Reader(text).Document(); }

}  // namespace kestrin::simulator
