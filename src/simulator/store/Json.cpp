// Writing; JsonReader.cpp reads.

#include "simulator/store/Json.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kestrin::simulator {

namespace {

void AppendText(std::string& out, std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  out += '"';
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (byte < 0x20) {
      out += "\\u00";
      out += kDigits[byte >> 4];
      out += kDigits[byte & 15];
    } else {
      out += c;
    }
  }
  out += '"';
}

void AppendNumber(std::string& out, double value) {
  // The format has no word for what is not a number.
  if (!std::isfinite(value)) {
    out += "null";
    return;
  }
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  out.append(digits.data(), end);
}

}  // namespace

const Json* Json::Find(std::string_view name) const {
  const Object* const members = Members();
  if (members == nullptr) return nullptr;
  const auto found =
      std::find_if(members->begin(), members->end(), [name](const Member& member) { return member.first == name; });
  return found == members->end() ? nullptr : &found->second;
}

std::string Json::Format() const {
  std::string out;
  Append(out, 0);
  return out + '\n';
}

void Json::Append(std::string& out, std::size_t indent) const {
  const auto newLine = [&out](std::size_t blanks) { (out += '\n').append(blanks, ' '); };
  if (const bool* const truth = Bool()) {
    out += *truth ? "true" : "false";
  } else if (const double* const number = Number()) {
    AppendNumber(out, *number);
  } else if (const std::string* const text = Text()) {
    AppendText(out, *text);
  } else if (const Array* const elements = Elements()) {
    const bool oneLine = std::none_of(elements->begin(), elements->end(), [](const Json& element) {
      return element.Elements() != nullptr || element.Members() != nullptr;
    });
    out += '[';
    for (const Json& element : *elements) {
      const bool first = &element == elements->data();
      if (!first) out += oneLine ? ", " : ",";
      if (!oneLine) newLine(indent + 2);
      element.Append(out, indent + 2);
    }
    if (!oneLine) newLine(indent);
    out += ']';
  } else if (const Object* const members = Members()) {
    out += '{';
    for (const auto& member : *members) {
      if (&member != members->data()) out += ',';
      newLine(indent + 2);
      AppendText(out, member.first);
      out += ": ";
      member.second.Append(out, indent + 2);
    }
    if (!members->empty()) newLine(indent);
    out += '}';
  } else {
    out += "null";
  }
}

}  // namespace kestrin::simulator
