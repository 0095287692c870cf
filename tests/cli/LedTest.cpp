// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>

#include "support/KestrinctlTest.h"

namespace kestrin::support {
namespace {

using testing::HasSubstr;

constexpr const char* kInvalidCatalogue =
    "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";

/// Runs `led` commands with a catalogue of their own, on a board that is an LED driver.
class LedTest : public KestrinctlTest {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(m_programs);
    Catalogue(
        "KestrinLEDConfigurator#2\r\n"
        "Lamp@1#1#500+Col=whiteML2550MDC80VL3.3Coef0_0_1_0;0_0_0.02_0;\r\n"
        "RGB@12#3#1000"
        "+Col=redML900MDC80VL3Coef0_0_0.05_0;0_0.00002_0.07_2;"
        "+Col=greenML1500MDC90VL3.6Coef0_0_0.03_0;0_0.00001_0.05_1;"
        "+Col=blueML600MDC85VL3.6Coef0_0_0.1_0;0_0.0001_0.1_1;\r\n");
  }

  void Catalogue(const std::string& text) { WriteBytes(m_programs / "KestrinLEDS.ldcfg", text); }
  [[nodiscard]] std::string SettingsFile(const std::string& lines) {
    return WriteBytes(m_folder / "blade.ldset", "KestdrinLEDSettings#1\r\n" + lines).string();
  }
  [[nodiscard]] std::string GoodSettings() {
    return SettingsFile(
        "PULSE+Low=51_0_0_9+High=255_100_0_9+Times=1000_1500_500_20\r\n"
        "FOC=0_255_17_9+Times=40_60_3\r\n");
  }

  /// `led ARGUMENTS` with the catalogue.
  [[nodiscard]] Json Led(int expectedCode, Arguments arguments) const {
    arguments.insert(arguments.begin(), {"--program-folder", m_programs.string(), "led"});
    return RunJson(expectedCode, arguments);
  }
  /// The same on the LED driver that keeps its state.
  [[nodiscard]] Json LedOnBoard(int expectedCode, Arguments arguments, const std::string& options = "") const {
    arguments.insert(arguments.begin(), {"--program-folder", m_programs.string(), "led"});
    return RunOnBoard(expectedCode, arguments, "id=9000" + (options.empty() ? "" : "," + options));
  }
  void ConfigureRgb(const char* overdrive = "100") {
    static_cast<void>(LedOnBoard(0, {"config", "--type", "RGB", "--overdrive", overdrive, "--yes"}));
  }

  std::filesystem::path m_programs = m_folder / "program";
};

TEST_F(LedTest, TypesListsTheCatalogue) {
  const Json document = Led(0, {"types"});
  const Json expected = {{"types",
                          {{{"name", "Lamp"},
                            {"code", 1},
                            {"period", 500},
                            {"channels", {{{"color", "white"}, {"maxLum", 2550}, {"maxDC", 80}, {"voltage", 3.3}}}}},
                           {{"name", "RGB"},
                            {"code", 12},
                            {"period", 1000},
                            {"channels",
                             {{{"color", "red"}, {"maxLum", 900}, {"maxDC", 80}, {"voltage", 3.0}},
                              {{"color", "green"}, {"maxLum", 1500}, {"maxDC", 90}, {"voltage", 3.6}},
                              {{"color", "blue"}, {"maxLum", 600}, {"maxDC", 85}, {"voltage", 3.6}}}}}}}};
  EXPECT_EQ(document, expected);
}

TEST_F(LedTest, TheProgramsOwnFolderHasACatalogue) {
  const Json document = RunJson(0, {"led", "types"});
  EXPECT_GE(document["types"].size(), 4u);
  const Finished finished = Run({"led", "types"});
  EXPECT_THAT(finished.out, HasSubstr(document["types"][0]["name"].get<std::string>()));
  EXPECT_EQ(RunJson(0, {"--board", "sim:id=9000", "led", "status"})["code"], 1) << "a new board's type is in it";
}

TEST_F(LedTest, ABadCatalogueFailsEveryCommandThatNeedsItAndSaysWhere) {
  const std::string file = GoodSettings();
  const std::pair<const char*, const char*> catalogues[] = {
      {"KestrinLEDConfigurator#3\r\n", "line 1"},
      {"KestrinLEDConfigurator#2\r\n\r\nLamp@1#1#9+Col=whiteML2550MDC80VL3.3Coef0_0_1_0;0_0_0.02_0;\r\n",
       "KestrinLEDS.ldcfg, line 3, record: period is 9"},
      {"KestrinLEDConfigurator#2\r\n", "KestrinLEDS.ldcfg"}};
  for (const auto& [text, detail] : catalogues) {
    Catalogue(text);
    for (const Arguments& arguments :
         {Arguments{"types"}, Arguments{"status"}, Arguments{"preview", "--level", "1"},
          Arguments{"counts", "--type", "Lamp", "--overdrive", "100", "--level", "1"},
          Arguments{"config", "--type", "Lamp", "--overdrive", "100", "--yes"}, Arguments{"send", "idle", file}}) {
      const Json document = LedOnBoard(1, arguments);
      EXPECT_EQ(document["error"], kInvalidCatalogue) << arguments[0];
      EXPECT_THAT(document["detail"].get<std::string>(), HasSubstr(detail)) << arguments[0];
    }
  }
  std::filesystem::remove(m_programs / "KestrinLEDS.ldcfg");
  EXPECT_EQ(Led(1, {"types"})["error"], kInvalidCatalogue);
  const Json state = BoardState();
  EXPECT_EQ(state["ledConfig"], (Json{{"code", 1}, {"voltage", 3.7}, {"overdrive", 100}}));
  EXPECT_EQ(state["pulseStarted"], nullptr);
}

TEST_F(LedTest, CountsNeedNoBoard) {
  // Lamp: level 51 is luminance 510, d = 10.2 % of 500 = 51, and 1; 120 %: d = 12.24, 61.2 + 1.
  const Json plain = Led(0, {"counts", "--type", "Lamp", "--overdrive", "100", "--level", "51"});
  const Json channel = {{"level", 51}, {"luminance", 510}, {"on", 1}, {"off", 52}};
  EXPECT_EQ(plain, (Json{{"period", 500}, {"channels", {channel}}}));
  EXPECT_EQ(Led(0, {"counts", "--type", "Lamp", "--overdrive", "120", "--level", "51"})["channels"][0]["off"], 62);

  // 100 of red is luminance 353, 200 of green 1176.
  const Json expected = {{"period", 1000},
                         {"channels",
                          {{{"level", 100}, {"luminance", 353}, {"on", 1}, {"off", 293}},
                           {{"level", 200}, {"luminance", 1176}, {"on", 1}, {"off", 737}},
                           {{"level", 0}, {"luminance", 0}, {"on", 0}, {"off", 1}}}}};
  EXPECT_EQ(Led(0, {"counts", "--type", "RGB", "--overdrive", "100", "--level", "100", "200", "0"}), expected);
  EXPECT_EQ(
      Led(0, {"counts", "--level", "100", "--level", "200", "--level", "0", "--overdrive", "100", "--type", "RGB"}),
      expected);
}

TEST_F(LedTest, TheOverdriveIsLoweredToWhatTheStrongestChannelBears) {
  // 10000 / 80 = 125: d = 12.75, 63.75 + 1 = 64.75.
  for (const char* overdrive : {"125", "126", "2147483647"}) {
    const Finished finished = Run({"--program-folder", m_programs.string(), "--json", "led", "counts", "--type", "Lamp",
                                   "--overdrive", overdrive, "--level", "51"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(Json::parse(finished.out)["channels"][0]["off"], 65);
    EXPECT_EQ(finished.errors.find("lowered to 125%") != std::string::npos, overdrive != std::string("125"));
  }
  EXPECT_EQ(LedOnBoard(0, {"config", "--type", "RGB", "--overdrive", "300", "--yes"})["overdrive"], 111);
  EXPECT_EQ(BoardState()["ledConfig"]["overdrive"], 111);
}

TEST_F(LedTest, ConfigWritesTypeSixVoltsAndOverdrive) {
  const Json document = LedOnBoard(0, {"config", "--type", "RGB", "--overdrive", "90", "--yes"});
  EXPECT_EQ(Keys(document), (std::vector<std::string>{"code", "name", "voltage", "overdrive", "pulses"}));
  EXPECT_EQ(document["code"], 12);
  EXPECT_EQ(document["name"], "RGB");
  EXPECT_EQ(document["voltage"], 6.0);
  EXPECT_EQ(document["overdrive"], 90);
  EXPECT_EQ(BoardState()["ledConfig"], (Json{{"code", 12}, {"voltage", 6.0}, {"overdrive", 90}}));
  EXPECT_EQ(LedOnBoard(0, {"status"}), document);
}

TEST_F(LedTest, ConfigWithoutYesOnlyWarns) {
  const Finished finished = Run({"--board", Board("id=9000"), "--program-folder", m_programs.string(), "led", "config",
                                 "--type", "RGB", "--overdrive", "90"});
  EXPECT_EQ(finished.code, 2);
  EXPECT_THAT(finished.errors,
              HasSubstr("WARNING: Setting a different LED than actually installed may damage the LED and driver\n"
                        "Are you sure you want to continue ?\n"));
  EXPECT_FALSE(std::filesystem::exists(m_board / "board.json")) << "the board was not even opened";
}

TEST_F(LedTest, ConfigHelpsABoardWhoseTypeTheCatalogueDoesNotHave) {
  ConfigureRgb();
  Catalogue("KestrinLEDConfigurator#2\r\nLamp@1#1#500+Col=whiteML2550MDC80VL3.3Coef0_0_1_0;0_0_0.02_0;\r\n");
  const Json document = LedOnBoard(1, {"status"});
  EXPECT_EQ(document["error"], kInvalidCatalogue);
  EXPECT_THAT(document["detail"].get<std::string>(), HasSubstr("code 12, which KestrinLEDS.ldcfg does not have"));
  EXPECT_EQ(LedOnBoard(0, {"config", "--type", "Lamp", "--overdrive", "100", "--yes"})["name"], "Lamp");
}

TEST_F(LedTest, AnUnknownTypeIsRefused) {
  for (const Arguments& arguments : {Arguments{"counts", "--type", "lamp", "--overdrive", "100", "--level", "1"},
                                     Arguments{"config", "--type", "lamp", "--overdrive", "100", "--yes"}})
    EXPECT_THAT(LedOnBoard(1, arguments)["error"].get<std::string>(), HasSubstr("There is no LED type \"lamp\""));
}

TEST_F(LedTest, PreviewSendsTheCountsOfTheFittedType) {
  ConfigureRgb();
  const Json document = LedOnBoard(0, {"preview", "--level", "100", "200"});
  EXPECT_EQ(document, Led(0, {"counts", "--type", "RGB", "--overdrive", "100", "--level", "100", "200"}));
  EXPECT_EQ(BoardState()["ledParam"], Json::array({1000, 1, 293, 1, 737, 0, 1, 0, 0}));
  EXPECT_EQ(BoardState()["pulseStarted"], nullptr);
  EXPECT_THAT(LedOnBoard(2, {"preview", "--level", "1", "2", "3", "4"})["error"].get<std::string>(),
              HasSubstr("\"RGB\" has 3 channels, but 4 levels are given"));
  EXPECT_EQ(BoardState()["ledParam"][2], 293) << "nothing was sent";
}

TEST_F(LedTest, SettingsShowsWhatAFileHolds) {
  const Json expected = {{"idle",
                          {{"low", {51, 0, 0, 9}},
                           {"high", {255, 100, 0, 9}},
                           {"Ton", 1000},
                           {"Toff", 1500},
                           {"Trise", 500},
                           {"Tfall", 20},
                           {"NRep", 0}}},
                         {"foc",
                          {{"low", {0, 0, 0, 0}},
                           {"high", {0, 255, 17, 9}},
                           {"Ton", 40},
                           {"Toff", 60},
                           {"Trise", 0},
                           {"Tfall", 0},
                           {"NRep", 3}}}};
  EXPECT_EQ(RunJson(0, {"led", "settings", GoodSettings()}), expected);
  const Json fractions = RunJson(
      0, {"led", "settings", SettingsFile("PULSE+Low=1_2_3_4+High=1_2_3_4+Times=2.5_0_0_0\nFOC=1_2_3_4+Times=1_2_3")});
  EXPECT_EQ(fractions["idle"]["Ton"], 2.5);

  const Json document = RunJson(1, {"led", "settings", SettingsFile("PULSE+Low=1_2_3+High=1_2_3_4+Times=1_2_3_4\n")});
  EXPECT_EQ(document["error"], "File is corrupted, could not read !");
  EXPECT_THAT(document["detail"].get<std::string>(), HasSubstr("blade.ldset, line 2: 4 numbers"));
  EXPECT_EQ(RunJson(1, {"led", "settings", "no such file"})["error"], "File is corrupted, could not read !");
}

TEST_F(LedTest, SendIdlePutsThePulseOnTheBoardAndStartsIt) {
  ConfigureRgb();
  const Json document = LedOnBoard(0, {"send", "idle", GoodSettings()});
  // Red: level 51 is luminance 180, d = 15.248 %, t = 153.48; 255 is full. Green: level 100 is luminance 588,
  // d = 33.85744, t = 339.5744. The fourth channel is none of this type.
  const Json counts = Json::array({Json::array({1, 153, 1, 1001}), Json::array({0, 1, 1, 340}),
                                   Json::array({0, 1, 0, 1}), Json::array({0, 0, 0, 0})});
  EXPECT_EQ(Keys(document),
            (std::vector<std::string>{"low", "high", "Ton", "Toff", "Trise", "Tfall", "NRep", "counts"}));
  EXPECT_EQ(document["counts"], counts);
  const Json held = BoardState()["ledPulses"][0];
  EXPECT_EQ(held["counts"], counts);
  for (const char* key : {"low", "high", "Ton", "Toff", "Trise", "Tfall", "NRep"})
    EXPECT_EQ(document[key], held[key]) << key;
  EXPECT_EQ(held["low"], Json::array({51, 0, 0, 9}));
  EXPECT_EQ(held["high"], Json::array({255, 100, 0, 9}));
  EXPECT_EQ(held["Ton"], 1000);
  EXPECT_EQ(held["Toff"], 1500);
  EXPECT_EQ(held["Trise"], 500);
  EXPECT_EQ(held["Tfall"], 20);
  EXPECT_EQ(BoardState()["pulseStarted"], 0);
  EXPECT_EQ(LedOnBoard(0, {"status"})["pulses"][0]["Toff"], 1500);
}

TEST_F(LedTest, SendFocFlashesFromTheIdleColour) {
  ConfigureRgb();
  const Json document = LedOnBoard(0, {"send", "foc", GoodSettings()});
  EXPECT_EQ(document["low"], Json::array({255, 100, 0, 9}));
  EXPECT_EQ(document["high"], Json::array({0, 255, 17, 9}));
  const Json held = BoardState()["ledPulses"][1];
  // Blue: level 17 is luminance 40, d = 5.16 %, t = 52.6.
  EXPECT_EQ(held["counts"], Json::array({Json::array({1, 1001, 0, 1}), Json::array({1, 340, 1, 1001}),
                                         Json::array({0, 1, 1, 53}), Json::array({0, 0, 0, 0})}));
  EXPECT_EQ(held["NRep"], 3);
  EXPECT_EQ(held["Trise"], 0);
  EXPECT_EQ(BoardState()["pulseStarted"], 1);
  EXPECT_EQ(BoardState()["ledPulses"][0]["Ton"], 500) << "the idle pulse is still the factory's";
}

TEST_F(LedTest, ATimeThatTheBoardCannotHoldIsWarnedOf) {
  ConfigureRgb();
  struct Row {
    const char* milliseconds;
    /// Files go through the boxes, which have two decimals.
    int asked;
    int held;
    bool warned;
  };
  for (const Row& row : {Row{"65534", 65530, 65530, false}, Row{"65540", 65540, 4, true}}) {
    const std::string times = row.milliseconds;
    const std::string file = SettingsFile("PULSE+Low=51_0_0_9+High=255_100_0_9+Times=" + times +
                                          "_1_2_3\r\nFOC=0_255_17_9+Times=40_60_3\r\n");
    const Finished finished = Run(
        {"--board", Board("id=9000"), "--program-folder", m_programs.string(), "--json", "led", "send", "idle", file});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(Json::parse(finished.out)["Ton"], row.asked) << "what was asked for";
    EXPECT_EQ(BoardState()["ledPulses"][0]["Ton"], row.held);
    EXPECT_EQ(finished.errors.find("holds times up to 65.535 s") != std::string::npos, row.warned) << finished.errors;
  }
}

TEST_F(LedTest, ACorruptedFileSendsNothing) {
  const Json document = LedOnBoard(1, {"send", "foc", SettingsFile("FOC=1_2_3_4+Times=1_2_3\n")});
  EXPECT_EQ(document["error"], "File is corrupted, could not read !");
  EXPECT_EQ(BoardState()["pulseStarted"], nullptr);
}

TEST_F(LedTest, ABoardThatDoesNotConfirmFails) {
  const std::string file = GoodSettings();
  struct Row {
    Arguments arguments;
    /// Its place among the reports that are written: two identify the board.
    const char* fault;
    const char* error;
  };
  for (const Row& row :
       {Row{{"status"}, "fault=write:3", "The board did not answer."},
        Row{{"status"}, "fault=write:5", "The board did not answer."},
        Row{{"config", "--type", "Lamp", "--overdrive", "50", "--yes"},
            "fault=write:3",
            "did not confirm the LED type"},
        Row{{"config", "--type", "Lamp", "--overdrive", "50", "--yes"}, "fault=write:4", "has taken the LED type, but"},
        Row{{"preview", "--level", "9"}, "fault=write:6", "did not confirm the levels"},
        Row{{"send", "idle", file}, "fault=write:6", "did not confirm the pulse"},
        Row{{"send", "foc", file}, "fault=write:7", "did not confirm the pulse"}})
    EXPECT_THAT(LedOnBoard(1, row.arguments, row.fault)["error"].get<std::string>(), HasSubstr(row.error));
  EXPECT_EQ(BoardState()["pulseStarted"], 0) << "also a pulse that did not arrive is started";
  EXPECT_EQ(BoardState()["ledPulses"][0]["Ton"], 500);
  EXPECT_EQ(BoardState()["ledPulses"][1]["NRep"], 3);
}

TEST_F(LedTest, ASoundBoardIsRefused) {
  const std::string file = GoodSettings();
  for (const Arguments& arguments :
       {Arguments{"status"}, Arguments{"config", "--type", "Lamp", "--overdrive", "100", "--yes"},
        Arguments{"preview", "--level", "9"}, Arguments{"send", "idle", file}}) {
    Arguments all{"--program-folder", m_programs.string(), "led"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    EXPECT_THAT(RunOnBoard(1, all)["error"].get<std::string>(), HasSubstr("This board is a sound board"));
  }
  EXPECT_EQ(BoardState()["ledConfig"]["code"], 1);
}

TEST_F(LedTest, WrongUsageEndsWithTwo) {
  for (const Arguments& arguments :
       {Arguments{}, Arguments{"counts", "--overdrive", "100", "--level", "1"},
        Arguments{"counts", "--type", "Lamp", "--level", "1"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "1"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "0", "--level", "1"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "1", "--level", "256"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "1", "--level", "-1"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "1", "--level", "1.5"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "1", "--level", "1", "2"},
        Arguments{"counts", "--type", "Lamp", "--overdrive", "1", "--level", "1", "2", "3", "4", "5"},
        Arguments{"config", "--type", "Lamp", "--yes"}, Arguments{"config", "--overdrive", "100", "--yes"},
        Arguments{"preview"}, Arguments{"settings"}, Arguments{"send", "idle"}, Arguments{"send", "both", "x"}})
    static_cast<void>(Led(2, arguments));
}

TEST_F(LedTest, PeopleReadAlignedText) {
  ConfigureRgb();
  const auto text = [this](Arguments arguments) {
    arguments.insert(arguments.begin(), {"--board", Board("id=9000"), "--program-folder", m_programs.string(), "led"});
    return Run(arguments).out;
  };
  EXPECT_THAT(text({"status"}), HasSubstr("LED type   RGB (code 12)\nvoltage    6 V\noverdrive  100 %\n"));
  EXPECT_THAT(text({"status"}), HasSubstr("\nfoc    0 0 0 0  0 0 0 0        40         40 "));
  EXPECT_THAT(text({"types"}), HasSubstr("\n                      2  green    1500         90          3.6\n"));
  EXPECT_THAT(text({"preview", "--level", "100"}), HasSubstr("\n1          100        353   1  293\n"));
  EXPECT_THAT(text({"settings", GoodSettings()}), HasSubstr("\nidle   51 0 0 9  255 100 0 9 "));
  EXPECT_THAT(text({"send", "idle", GoodSettings()}), HasSubstr("\n1         51   1  153   255   1  1001\n"));
}

}  // namespace
}  // namespace kestrin::support
