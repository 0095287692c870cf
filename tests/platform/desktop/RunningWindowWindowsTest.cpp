// SPDX-License-Identifier: MIT
#include <vector>

#include "platform/desktop/RunningWindowFixture.h"

// Where the starts of a session meet on Windows: at a pipe.

namespace kestrin::support {
namespace {

TEST(PlaceOfSession, DiffersByTheVariableOfTests) {
  std::vector<RunningWindow::Place> places;
  for (const char* const test : {"", "a", "b"}) {
    qputenv(RunningWindow::kEnvironment, test);
    const RunningWindow::Place place = RunningWindow::PlaceOfSession();
    EXPECT_TRUE(place.lock.is_absolute());
    EXPECT_FALSE(place.socket.contains('/') || place.socket.contains('\\')) << "a pipe is in no folder";
    for (const RunningWindow::Place& other : places) {
      EXPECT_NE(other.lock, place.lock);
      EXPECT_NE(other.socket, place.socket);
    }
    places.push_back(place);
    EXPECT_EQ(RunningWindow::PlaceOfSession().lock, place.lock) << "the same each time";
    EXPECT_EQ(RunningWindow::PlaceOfSession().socket, place.socket) << "the same each time";
  }
  qunsetenv(RunningWindow::kEnvironment);
}

}  // namespace
}  // namespace kestrin::support
