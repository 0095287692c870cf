#include "cli/Output.h"

#include <ostream>

#include "core/base/Text.h"

namespace kestrin::cli {

void Output::Print(const Report& report) {
  if (m_json && report.document.is_null() && report.message.empty()) {
    // The command has said everything while it ran.
  } else if (m_json) {
    const Document document = report.document.is_null() ? Document{{"error", report.message}} : report.document;
    // Paths are bytes on many systems; what is no UTF-8 in them must not cost the whole document.
    m_out << document.dump(2, ' ', false, Document::error_handler_t::replace) << '\n';
  } else {
    m_out << core::base::ShownLines(report.text);
  }
  m_out.flush();
  if (!report.message.empty()) m_errors << "kestrinctl: " << core::base::ShownLines(report.message) << '\n';
  m_errors.flush();
}

}  // namespace kestrin::cli
