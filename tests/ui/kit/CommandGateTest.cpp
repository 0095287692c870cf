// SPDX-License-Identifier: MIT
#include "ui/kit/CommandGate.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <string>

namespace kestrin::support {
namespace {

using ui::kit::CommandGate;

class Gate : public testing::Test {
 protected:
  CommandGate gate{std::chrono::milliseconds(0)};
  std::string done;
};

TEST_F(Gate, RunsAnActionAtOnceWhenNobodyIsInTheWay) {
  gate.WhenFree([this] { done += "a"; });
  EXPECT_EQ(done, "a");
}

TEST_F(Gate, LetsActionsWaitInTheirOrderUntilTheLastPassageHasEnded) {
  {
    const CommandGate::Passage outer(gate);
    {
      const CommandGate::Passage inner(gate);
      gate.WhenFree([this] { done += "a"; });
    }
    gate.WhenFree([this] { done += "b"; });
    QCoreApplication::processEvents();
    EXPECT_EQ(done, "");
    EXPECT_TRUE(gate.IsBusy());
  }
  EXPECT_EQ(done, "");
  QCoreApplication::processEvents();
  EXPECT_EQ(done, "ab");
  EXPECT_FALSE(gate.IsBusy());
}

TEST_F(Gate, AnActionThatTakesThePassageMakesTheNextOneWait) {
  {
    const CommandGate::Passage passage(gate);
    gate.WhenFree([this] {
      const CommandGate::Passage own(gate);
      gate.WhenFree([this] { done += "b"; });
      done += "a";
    });
  }
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_EQ(done, "ab");
}

TEST_F(Gate, ThePumpHandlesEventsButNotFromInsideOne) {
  const core::base::EventPump pump = gate.Pump();
  QTimer::singleShot(0, [this, &pump] {
    done += "[";
    QTimer::singleShot(0, [this] { done += "x"; });
    pump();
    done += "]";
  });
  pump();
  EXPECT_EQ(done, "[]");
  pump();
  EXPECT_EQ(done, "[]x");
}

TEST_F(Gate, ThePumpGivesTurnsNoMoreOftenThanTheInterval) {
  CommandGate slow{std::chrono::hours(1)};
  const core::base::EventPump pump = slow.Pump();
  pump();
  QTimer::singleShot(0, [this] { done += "a"; });
  pump();
  EXPECT_EQ(done, "");
  QCoreApplication::processEvents();
  EXPECT_EQ(done, "a");
}

}  // namespace
}  // namespace kestrin::support
