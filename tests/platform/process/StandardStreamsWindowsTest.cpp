// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>

#include <cstdio>

#include "platform/process/StandardStreams.h"

namespace kestrin::platform::process {
namespace {

TEST(GuardStandardStreams, LinesEndWithALineFeedAlone) {
  GuardStandardStreams();
  for (std::FILE* const stream : {stdout, stderr}) {
    // _setmode() tells what was set before.
    EXPECT_EQ(_setmode(_fileno(stream), _O_BINARY) & (_O_BINARY | _O_TEXT), _O_BINARY);
  }
}

}  // namespace
}  // namespace kestrin::platform::process
