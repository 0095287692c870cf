// SPDX-License-Identifier: MIT
#include "ui/kit/Translated.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>

namespace kestrin::ui::kit {
namespace {

/// Knows one text of the core, and says something of itself for no text.
class OneText final : public QTranslator {
 public:
  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* text, const char*, int) const override {
    if (QLatin1String(context) != QLatin1String("core")) return {};
    if (*text == '\0') return "Language: German";
    return QLatin1String(text) == QLatin1String("Close") ? QString("Schließen") : QString();
  }
};

TEST(Translated, SaysTheCoresTextInTheLanguageOfTheWindow) {
  EXPECT_EQ(Translated("Close"), "Close");
  OneText language;
  QCoreApplication::installTranslator(&language);
  EXPECT_EQ(Translated("Close"), QString::fromUtf8("Schließen"));
  EXPECT_EQ(Translated("The file \"Gr\xC3\xBC\xC3\x9F"
                       "e.lsu\" 100 %n"),
            QString::fromUtf8("The file \"Grüße.lsu\" 100 %n"));
  EXPECT_EQ(Translated(""), "");
  QCoreApplication::removeTranslator(&language);
}

}  // namespace
}  // namespace kestrin::ui::kit
