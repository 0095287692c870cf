// SPDX-License-Identifier: MIT
#include "cli/Output.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "core/base/Text.h"

namespace kestrin::cli {

namespace {

/// The document with U+007F to U+009F written as "\u009b": a terminal may obey them like the control characters before
/// the blank, which never stand raw in a document. Outside of strings there are none.
std::string WithoutLateControls(std::string_view document) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string escaped;
  escaped.reserve(document.size());
  for (std::size_t i = 0; i < document.size(); ++i) {
    auto byte = static_cast<unsigned char>(document[i]);
    // Two bytes in UTF-8, the second of which is the character's number.
    const bool isPair = byte == 0xC2 && i + 1 < document.size();
    if (isPair) byte = static_cast<unsigned char>(document[i + 1]);
    if (!(isPair ? byte <= 0x9F : byte == 0x7F)) {
      escaped += document[i];
      continue;
    }
    escaped.append("\\u00").append({kDigits[byte >> 4U], kDigits[byte & 0xFU]});
    i += static_cast<std::size_t>(isPair);
  }
  return escaped;
}

}  // namespace

void Output::Print(const Report& report) {
  if (m_json && report.document.is_null() && report.message.empty()) {
    // The command has said everything while it ran.
  } else if (m_json) {
    const Document document = report.document.is_null() ? Document{{"error", report.message}} : report.document;
    // Paths are bytes on many systems; what is no UTF-8 in them must not cost the whole document.
    m_out << WithoutLateControls(document.dump(2, ' ', false, Document::error_handler_t::replace)) << '\n';
  } else {
    m_out << core::base::ShownLines(report.text);
  }
  m_out.flush();
  if (!report.message.empty()) m_errors << "kestrinctl: " << core::base::ShownLines(report.message) << '\n';
  m_errors.flush();
}

}  // namespace kestrin::cli
