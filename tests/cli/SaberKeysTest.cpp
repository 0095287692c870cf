// SPDX-License-Identifier: MIT
#include "cli/SaberKeys.h"

#include <gtest/gtest.h>

namespace kestrin::cli {
namespace {

using core::saber::Event;
using core::saber::State;
using std::chrono::milliseconds;

TEST(SaberKeys, EachKeyHasItsEvent) {
  struct Case {
    Key key;
    State state;
    std::optional<Event> event;
  };
  for (const Case& one : {Case{Key::Space, State::Off, Event::On}, Case{Key::Space, State::Boot, Event::On},
                          Case{Key::Space, State::Ignition, Event::Off}, Case{Key::Space, State::On, Event::Off},
                          Case{Key::Space, State::Lockup, Event::Off}, Case{Key::Arrow, State::On, Event::Swing},
                          Case{Key::Enter, State::On, Event::Hit}, Case{Key::L, State::On, Event::LockupBegin},
                          Case{Key::Other, State::On, std::nullopt}}) {
    SaberKeys keys;
    EXPECT_EQ(keys.Press(one.key, one.state, milliseconds(0)), one.event) << static_cast<int>(one.key);
  }
}

// As terminals repeat: half a second after the first time, then 30 times a second.
TEST(SaberKeys, AKeyThatIsHeldDownCountsOnceMoreAtTheMost) {
  SaberKeys keys;
  EXPECT_EQ(keys.Press(Key::Arrow, State::On, milliseconds(0)), Event::Swing);
  EXPECT_EQ(keys.Press(Key::Arrow, State::On, milliseconds(500)), Event::Swing);
  for (int now = 533; now < 3000; now += 33)
    EXPECT_EQ(keys.Press(Key::Arrow, State::On, milliseconds(now)), std::nullopt) << now;
  EXPECT_EQ(keys.Press(Key::Enter, State::On, milliseconds(3001)), Event::Hit) << "another key counts at once";
  EXPECT_EQ(keys.Press(Key::Arrow, State::On, milliseconds(4000)), Event::Swing);
  EXPECT_EQ(keys.Press(Key::Arrow, State::On, milliseconds(4100)), Event::Swing) << "as quickly as people press";
}

TEST(SaberKeys, ALockUpLastsWhileItsKeyIsHeld) {
  SaberKeys keys;
  EXPECT_EQ(keys.Press(Key::L, State::On, milliseconds(1000)), Event::LockupBegin);
  int now = 1000;
  const auto pass = [&](int until) {
    for (; now < until; now += 20) EXPECT_EQ(keys.Pass(milliseconds(now)), std::nullopt) << now;
  };
  pass(1660);
  for (int repeated = 1660; repeated < 4000; repeated += 33) {
    EXPECT_EQ(keys.Press(Key::L, State::Lockup, milliseconds(repeated)), std::nullopt);
    pass(repeated);
  }
  EXPECT_EQ(keys.Pass(milliseconds(4500)), std::nullopt);
  EXPECT_EQ(keys.Pass(milliseconds(4800)), Event::LockupEnd);
  EXPECT_EQ(keys.Pass(milliseconds(4820)), std::nullopt) << "once";
  EXPECT_EQ(keys.Press(Key::L, State::On, milliseconds(5000)), Event::LockupBegin);
}

}  // namespace
}  // namespace kestrin::cli
