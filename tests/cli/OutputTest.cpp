// SPDX-License-Identifier: MIT
#include "cli/Output.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kestrin::cli {
namespace {

TEST(Output, ADocumentHoldsControlCharactersAsEscapes) {
  struct Row {
    std::string text;
    std::string written;
  };
  for (const Row& row : {Row{"plain", "plain"},
                         {"\x1F\x7E\x7F", R"(\u001f~\u007f)"},
                         // U+0080 and U+009F are the ends of the late ones; U+00A0, U+00BF and U+00C0 are none.
                         {"\u0080\u008F\u0090\u009F", R"(\u0080\u008f\u0090\u009f)"},
                         {"\u00A0\u00BF\u00C0gr\u00FC\u00DFe \u58F0", "\u00A0\u00BF\u00C0gr\u00FC\u00DFe \u58F0"},
                         {"\u0080", R"(\u0080)"}}) {
    std::ostringstream out;
    std::ostringstream errors;
    Output(out, errors, true).Print({ExitCode::Done, {{"name", row.text}}, "", ""});
    EXPECT_EQ(out.str(), "{\n  \"name\": \"" + row.written + "\"\n}\n");
    // A reader gets the same text.
    EXPECT_EQ(Document::parse(out.str())["name"], row.text);
    EXPECT_EQ(errors.str(), "");
  }
}

}  // namespace
}  // namespace kestrin::cli
