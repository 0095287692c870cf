// SPDX-License-Identifier: MIT
#include "platform/process/Arguments.h"

#if defined(_WIN32)
#include <windows.h>
// After the line above, which it needs.
#include <shellapi.h>

#include <memory>

#include "platform/process/WideText.h"
#endif

namespace kestrin::platform::process {

Arguments::Arguments(int argc, const char* const* argv) : m_texts(argv, argv + argc) {
#if defined(_WIN32)
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> wide(CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  if (wide) {
    m_texts.clear();
    for (int i = 0; i < count; ++i) m_texts.push_back(Utf8Of(wide.get()[i]));
  }
#endif
  for (const std::string& text : m_texts) m_pointers.push_back(text.c_str());
  m_pointers.push_back(nullptr);
}

}  // namespace kestrin::platform::process
