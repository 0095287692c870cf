// SPDX-License-Identifier: MIT
#include "ui/stage/PlayedPieces.h"

#include <gtest/gtest.h>

#include "ui/stage/StagePlaces.h"

namespace kestrin::ui::stage {
namespace {

using core::sound::SlotKind;
using Piece = PlayedPieces::Piece;

TEST(PlayedPieces, LastFromTheirBeginningToTheirEnd) {
  PlayedPieces pieces;
  pieces.Begin(kHum, "hum", 100, 5000);
  pieces.Begin(kSwing, "swing", 200, 900);
  pieces.End(kSwing, 1100);
  pieces.Advance(1200);
  EXPECT_EQ(pieces.Now(), 1200);
  EXPECT_EQ(pieces.All(), (std::vector<Piece>{{kHum, "hum", 100, {}, 5000}, {kSwing, "swing", 200, 1100, 900}}));
}

TEST(PlayedPieces, OfTwoInARowTheOlderEndsFirst) {
  PlayedPieces pieces;
  pieces.Begin(kSwing, "swing", 0, 900);
  pieces.Begin(kSwing, "swing", 500, 900);
  pieces.End(kSwing, 500);
  EXPECT_EQ(pieces.All()[0].to, 500);
  EXPECT_FALSE(pieces.All()[1].to);
  pieces.End({SlotKind::Boot, 1}, 600);
  EXPECT_FALSE(pieces.All()[1].to) << "that one does not sound";
}

TEST(PlayedPieces, AreForgottenTwelveSecondsAfterTheirEnd) {
  constexpr std::int64_t kTwelve = 12 * 48000;
  PlayedPieces pieces;
  pieces.Begin(kHum, "hum", 0, 5000);
  pieces.Begin(kSwing, "swing", 0, 900);
  pieces.End(kSwing, 900);
  pieces.Advance(kTwelve + 900);
  EXPECT_EQ(pieces.All().size(), 2U);
  pieces.Advance(kTwelve + 901);
  ASSERT_EQ(pieces.All().size(), 1U);
  EXPECT_EQ(pieces.All()[0].place, kHum) << "it sounds still";
  pieces.Clear();
  EXPECT_TRUE(pieces.All().empty());
  EXPECT_EQ(pieces.Now(), 0);
}

}  // namespace
}  // namespace kestrin::ui::stage
