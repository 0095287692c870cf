// SPDX-License-Identifier: MIT
#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace kestrin::support {

/// Makes the comma the decimal point, and the point the mark between groups of digits, of everything that follows the
/// locale.
class DecimalComma {
 public:
  DecimalComma() : m_before(std::locale::global(std::locale(std::locale(), new Facet))) {
    m_beforeC = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // where it is installed
  }
  ~DecimalComma() {
    std::setlocale(LC_NUMERIC, m_beforeC.c_str());
    std::locale::global(m_before);
  }
  DecimalComma(const DecimalComma&) = delete;
  DecimalComma& operator=(const DecimalComma&) = delete;

 private:
  struct Facet : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale m_before;
  std::string m_beforeC;
};

}  // namespace kestrin::support
