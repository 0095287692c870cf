// SPDX-License-Identifier: MIT
#include "core/sound/import/SlotGuess.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kestrin::core::sound {
namespace {

using testing::ElementsAre;

/// "motion", "motion?" for an unsure guess, "-" for no slot, a "!" behind it for one that is left out.
std::string Said(const SlotGuess& guess) {
  std::string text = guess.slot ? std::string(SlotOf(*guess.slot).name) : "-";
  if (guess.slot && !guess.isSure) text += "?";
  return guess.isLeftOut ? text + "!" : text;
}

std::vector<std::string> Guessed(const std::vector<NamedSound>& sounds, const SlotRoom& room = kRoomOfAnEmptySet) {
  std::vector<std::string> said;
  for (const SlotGuess& guess : SlotGuess::Of(sounds, room)) said.push_back(Said(guess));
  return said;
}

std::string Guessed(const std::string& name, double seconds = 0) { return Guessed({{name, seconds}}).front(); }

struct Name {
  const char* name;
  const char* slot;
};

class OneName : public testing::TestWithParam<Name> {};

TEST_P(OneName, IsGuessed) { EXPECT_EQ(Guessed(GetParam().name), GetParam().slot) << GetParam().name; }

INSTANTIATE_TEST_SUITE_P(
    English, OneName,
    testing::Values(Name{"boot.wav", "boot"}, Name{"BOOT2.WAV", "boot"}, Name{"font.wav", "boot"},
                    Name{"startup.wav", "boot"}, Name{"Start-up.wav", "boot"}, Name{"start.wav", "boot?"},
                    Name{"ignite.wav", "pwron"}, Name{"Ignition 3.flac", "pwron"}, Name{"poweron.wav", "pwron"},
                    Name{"Power On.wav", "pwron"}, Name{"power_on_2.wav", "pwron"}, Name{"pwron2.wav", "pwron"},
                    Name{"PwrOn.lsu", "pwron"}, Name{"POWER UP.mp3", "pwron"}, Name{"out01.wav", "pwron"},
                    Name{"on.wav", "pwron"}, Name{"power.wav", "pwron?"}, Name{"preon1.wav", "pwron"},
                    Name{"retract.wav", "pwroff"}, Name{"Retraction.wav", "pwroff"}, Name{"power off.wav", "pwroff"},
                    Name{"pwroff (1).wav", "pwroff"}, Name{"power-down.wav", "pwroff"}, Name{"in01.wav", "pwroff"},
                    Name{"IN.WAV", "pwroff"}, Name{"blade in.ogg", "pwroff"}, Name{"off.wav", "pwroff"},
                    Name{"hum.wav", "idle"}, Name{"hum loop.flac", "idle"}, Name{"HUM01.wav", "idle"},
                    Name{"idle.wav", "idle"}, Name{"loop.wav", "idle?"}));

INSTANTIATE_TEST_SUITE_P(
    EnglishLists, OneName,
    testing::Values(Name{"swing01.wav", "motion"}, Name{"Swing_1.wav", "motion"}, Name{"SWING (3).wav", "motion"},
                    Name{"hswing1.wav", "motion"}, Name{"swingl02.wav", "motion"}, Name{"spin4.wav", "motion"},
                    Name{"motion 1.lsu", "motion"}, Name{"woosh swoosh.wav", "motion"},
                    Name{"saberswing.wav", "motion?"}, Name{"clash a.mp3", "impact"}, Name{"clsh02.wav", "impact"},
                    Name{"hit.wav", "impact"}, Name{"impact_12.wav", "impact"}, Name{"blaster3.wav", "impact?"},
                    Name{"blaster hit.mp3", "impact?"}, Name{"lockup.wav", "lockup"}, Name{"lock-up 2.wav", "lockup"},
                    Name{"Lock Up.wav", "lockup"}, Name{"bgnlock1.wav", "lockup"}, Name{"drag.wav", "lockup"},
                    Name{"melt1.wav", "lockup?"}));

INSTANTIATE_TEST_SUITE_P(
    OtherLanguages, OneName,
    testing::Values(
        // German
        Name{"Einschalten.wav", "pwron"}, Name{"Z\u00fcndung 1.wav", "pwron"}, Name{"an.wav", "pwron"},
        Name{"Ausschalten.wav", "pwroff"}, Name{"aus.wav", "pwroff"}, Name{"Leerlauf.wav", "idle"},
        Name{"Brummen.wav", "idle"}, Name{"Schwung 3.wav", "motion"}, Name{"Schw\u00fcnge.wav", "motion"},
        Name{"Aufprall.wav", "impact"}, Name{"Zusammensto\u00df 2.wav", "impact"}, Name{"Verriegelung.wav", "lockup"},
        // French
        Name{"d\u00e9marrage.wav", "boot"}, Name{"allumage.wav", "pwron"}, Name{"extinction.wav", "pwroff"},
        Name{"\u00e9teindre.wav", "pwroff"}, Name{"bourdonnement.wav", "idle"}, Name{"mouvement 1.wav", "motion"},
        Name{"coup 2.wav", "impact"}, Name{"choc.wav", "impact"}, Name{"verrouillage.wav", "lockup"},
        // Spanish
        Name{"arranque.wav", "boot"}, Name{"encendido.wav", "pwron"}, Name{"apagado.wav", "pwroff"},
        Name{"zumbido.wav", "idle"}, Name{"movimiento 4.wav", "motion"}, Name{"golpe.wav", "impact"},
        Name{"bloqueo.wav", "lockup"},
        // Italian
        Name{"avvio.wav", "boot"}, Name{"accensione.wav", "pwron"}, Name{"spegnimento.wav", "pwroff"},
        Name{"ronzio.wav", "idle"}, Name{"oscillazione.wav", "motion"}, Name{"colpo 1.wav", "impact"},
        Name{"blocco.wav", "lockup"},
        // Dutch
        Name{"opstarten.wav", "boot"}, Name{"inschakelen.wav", "pwron"}, Name{"aan.wav", "pwron"},
        Name{"uitschakelen.wav", "pwroff"}, Name{"uit.wav", "pwroff"}, Name{"gezoem.wav", "idle"},
        Name{"zwaai 2.wav", "motion"}, Name{"botsing.wav", "impact"}, Name{"vergrendeling.wav", "lockup"},
        // Portuguese
        Name{"inicializa\u00e7\u00e3o.wav", "boot"}, Name{"ligar.wav", "pwron"}, Name{"desligar.wav", "pwroff"},
        Name{"zumbido.wav", "idle"}, Name{"balan\u00e7o.wav", "motion"}, Name{"colis\u00e3o.wav", "impact"},
        Name{"trava.wav", "lockup"}));

INSTANTIATE_TEST_SUITE_P(NotTooClever, OneName,
                         testing::Values(Name{"insect.wav", "-"}, Name{"onion.wav", "-"}, Name{"human.wav", "-"},
                                         Name{"white.wav", "-"}, Name{"outlook.wav", "-"}, Name{"01.wav", "-"},
                                         Name{"", "-"}, Name{".wav", "-"}, Name{"hum.swing", "idle"},
                                         Name{"track 01.mp3", "-"}, Name{"quote_in.wav", "-"}, Name{"force.wav", "-"},
                                         Name{"swing in.wav", "motion"}, Name{"lockup loop.wav", "lockup"},
                                         Name{"hum swing.wav", "idle?"}, Name{"music clash.wav", "impact?"},
                                         // The ending and the folder are no words of the name.
                                         Name{"Clash/hum.wav", "idle"}, Name{"Swings/01.wav", "motion"},
                                         Name{"swings\\01.wav", "motion"}, Name{"Night heron/Hit/b/1.wav", "impact"}));

TEST(SlotGuessTest, AnUnusualLengthMakesAGuessUnsure) {
  EXPECT_EQ(Guessed("swing.wav", 1.2), "motion");
  EXPECT_EQ(Guessed("swing.wav", 6), "motion");
  EXPECT_EQ(Guessed("swing.wav", 6.1), "motion?");
  EXPECT_EQ(Guessed("hum.wav", 1), "idle");
  EXPECT_EQ(Guessed("hum.wav", 0.9), "idle?");
  EXPECT_EQ(Guessed("hum.wav", 600), "idle");
  EXPECT_EQ(Guessed("boot.wav", 21), "boot?");
}

TEST(SlotGuessTest, ANameThatSaysNothingIsGuessedByItsLength) {
  EXPECT_EQ(Guessed("x7.wav", 0.8), "impact?");
  EXPECT_EQ(Guessed("x7.wav", 2), "motion?");
  EXPECT_EQ(Guessed("x7.wav", 2.1), "-");
  EXPECT_EQ(Guessed("x7.wav"), "-") << "a length that is not known";
  EXPECT_EQ(Guessed("song.wav", 1), "-");
}

TEST(SlotGuessTest, ASingleSlotTakesTheFirstOfWhichOneCanBeSure) {
  EXPECT_THAT(Guessed({{"poweron10.wav"}, {"poweron2.wav"}, {"power.wav"}}), ElementsAre("pwron!", "pwron", "pwron?!"));
  EXPECT_THAT(Guessed({{"a power.wav"}, {"poweron.wav"}}), ElementsAre("pwron?!", "pwron"));
}

TEST(SlotGuessTest, OfTwoForIdleTheLongerOneIsTaken) {
  EXPECT_THAT(Guessed({{"hum1.wav", 2}, {"hum2.wav", 7}, {"hum3.wav", 3}}), ElementsAre("idle!", "idle", "idle!"));
  EXPECT_THAT(Guessed({{"hum2.wav"}, {"hum1.wav"}}), ElementsAre("idle!", "idle"));
}

TEST(SlotGuessTest, AListTakesTwelveByTheirNumbersTheSureOnesFirst) {
  std::vector<NamedSound> sounds;
  // From 14 down to 1, so that neither the order nor the letters give the right one.
  for (int number = 14; number >= 1; --number) sounds.push_back({"swing" + std::to_string(number) + ".wav"});
  sounds.push_back({"a slash.wav"});
  std::vector<std::string> wanted(14, "motion");
  wanted[0] = wanted[1] = "motion!";
  wanted.emplace_back("motion?!");
  EXPECT_EQ(Guessed(sounds), wanted);
}

TEST(SlotGuessTest, TheRoomThatTheSetHasLeftCounts) {
  SlotRoom room{};
  room[4] = 2;
  EXPECT_THAT(Guessed({{"swing1"}, {"swing2"}, {"swing3"}, {"clash"}}, room),
              ElementsAre("motion", "motion", "motion!", "impact!"));
}

TEST(SlotGuessTest, TheOrderIsThatOfTheSlotsAndThenOfTheNumbers) {
  const std::vector<NamedSound> sounds{{"blaster.wav"}, {"clash.wav"},  {"hum.wav"},    {"x.wav"},
                                       {"swing10.wav"}, {"swing2.wav"}, {"ignite.wav"}, {"boot.wav"}};
  EXPECT_THAT(SlotGuess::Order(sounds, SlotGuess::Of(sounds)), ElementsAre(7, 6, 2, 5, 4, 1, 0, 3));
}

}  // namespace
}  // namespace kestrin::core::sound
