#include "KestrinctlTest.h"
#include "SoundSet.h"
#include "support/ReferenceCoder.h"

namespace kestrin::support {
namespace {

class SoundTest : public KestrinctlTest {
 protected:
  static unsigned Sum(std::span<const std::uint8_t> bytes) {
    unsigned sum = 0;
    for (const std::uint8_t byte : bytes) sum = (sum + byte) % 65536;
    return sum;
  }

  std::vector<std::int16_t> m_samples = SomeSamples(12001, 15000, 7);
  std::string m_file = WriteSoundFile(m_folder / "hum.lsu", m_samples).string();
};

TEST_F(SoundTest, InfoMeasuresEveryFile) {
  const std::vector<std::int16_t> shortest = SomeSamples(49, 32767, 3);
  const std::string other = WriteSoundFile(m_folder / "short.lsu", shortest).string();
  const Json document = RunJson(0, {"sound", "info", m_file, other});
  const Json expected = {{"files",
                          {{{"path", m_file},
                            {"valid", true},
                            {"samples", 12001},
                            {"seconds", 12001 / 48000.0},
                            {"peak", 15000},
                            {"codedBytes", 18003},
                            {"checksum", Sum(ReferenceStream(m_samples, 15000, 100))}},
                           {{"path", other},
                            {"valid", true},
                            {"samples", 49},
                            {"seconds", 49 / 48000.0},
                            {"peak", 32767},
                            {"codedBytes", 75},
                            {"checksum", Sum(ReferenceStream(shortest, 32767, 100))}}}}};
  EXPECT_EQ(document, expected);
  EXPECT_EQ(Keys(document["files"][0]), Keys(expected["files"][0]));
}

TEST_F(SoundTest, InfoCodesAtTheVolumeThatIsGiven) {
  const Json document = RunJson(0, {"sound", "info", m_file, "--volume", "37"});
  EXPECT_EQ(document["files"][0]["checksum"], Sum(ReferenceStream(m_samples, 15000, 37)));
}

TEST_F(SoundTest, OfAFileThatIsNotValidOnlyThatIsSaid) {
  const std::string silent = WriteSoundFile(m_folder / "silent.lsu", std::vector<std::int16_t>(100, 0)).string();
  const Json document = RunJson(1, {"sound", "info", silent, m_file, "nowhere.lsu"});
  ASSERT_EQ(document["files"].size(), 3U);
  const Json notValid = {{"path", silent}, {"valid", false}};
  EXPECT_EQ(document["files"][0], notValid);
  EXPECT_EQ(document["files"][1]["valid"], true);
  EXPECT_EQ(document["files"][2]["valid"], false);
  EXPECT_EQ(Keys(document["files"][2]), Keys(notValid));
}

TEST_F(SoundTest, PeopleGetAlignedColumns) {
  const Finished finished = Run({"sound", "info", m_file});
  EXPECT_EQ(finished.code, 0);
  const std::size_t second = finished.out.find('\n') + 1;
  const std::string heading = finished.out.substr(0, second - 1);
  const std::string line = finished.out.substr(second, finished.out.find('\n', second) - second);
  EXPECT_EQ(line.rfind(m_file, 0), 0U);
  EXPECT_EQ(heading.find("samples") + 7, line.find("12001") + 5) << finished.out;
}

TEST_F(SoundTest, AVolumeThatTheFormatCannotHoldFailsWithItsText) {
  const Json document = RunJson(1, {"sound", "info", m_file, "--volume", "200"});
  EXPECT_EQ(document["files"][0]["samples"], 12001);
  EXPECT_EQ(document["files"][0]["codedBytes"], nullptr);
  EXPECT_EQ(document["files"][0]["checksum"], nullptr);
  const std::string error = Run({"sound", "info", m_file, "--volume", "200"}).errors;
  EXPECT_NE(error.find("hum.lsu"), std::string::npos) << error;
  EXPECT_NE(error.find("too loud at 200 %"), std::string::npos) << error;
  EXPECT_EQ(Run({"sound", "code", m_file, "--volume", "200", "--output", (m_folder / "out").string()}).code, 1);
  EXPECT_FALSE(std::filesystem::exists(m_folder / "out"));
}

TEST_F(SoundTest, CodeWritesTheStream) {
  const std::filesystem::path out = m_folder / "hum.bin";
  const Json document = RunJson(0, {"sound", "code", m_file, "--volume", "50", "--output", out.string()});
  const std::vector<std::uint8_t> stream = ReferenceStream(m_samples, 15000, 50);
  const Json expected = {{"codedBytes", stream.size()}, {"checksum", Sum(stream)}};
  EXPECT_EQ(document, expected);
  EXPECT_EQ(Keys(document), Keys(expected));
  EXPECT_EQ(ReadBytes(out), std::string(stream.begin(), stream.end()));
}

TEST_F(SoundTest, CodeWritesTheWholeFileOrNone) {
  const std::string out = (m_folder / "no such folder" / "hum.bin").string();
  const Json document = RunJson(1, {"sound", "code", m_file, "--output", out});
  EXPECT_EQ(Keys(document), std::vector<std::string>{"error"});
  EXPECT_EQ(RunJson(1, {"sound", "code", "nowhere.lsu", "--output", (m_folder / "x").string()})["error"],
            "Not a valid file: nowhere.lsu");
  EXPECT_FALSE(std::filesystem::exists(m_folder / "x"));
}

TEST_F(SoundTest, WavHoldsTheSamplesAsTheyStandInTheFile) {
  const std::filesystem::path out = m_folder / "hum.wav";
  const Json document = RunJson(0, {"sound", "wav", m_file, "--output", out.string()});
  const Json expected = {{"samples", 12001}};
  EXPECT_EQ(document, expected);
  const std::string wav = ReadBytes(out);
  ASSERT_EQ(wav.size(), 44U + 2 * 12001);
  EXPECT_EQ(wav.substr(44), ReadBytes(m_file).substr(4));
}

TEST_F(SoundTest, WavFailsWhereItCannotWrite) {
  EXPECT_EQ(Run({"sound", "wav", m_file, "--output", (m_folder / "none" / "hum.wav").string()}).code, 1);
  EXPECT_EQ(Run({"sound", "wav", "nowhere.lsu", "--output", (m_folder / "hum.wav").string()}).code, 1);
}

TEST_F(SoundTest, TheSoundItselfIsNeverOverwritten) {
  const std::string before = ReadBytes(m_file);
  EXPECT_EQ(Run({"sound", "wav", m_file, "--output", m_file}).code, 2);
  EXPECT_EQ(Run({"sound", "code", m_file, "--output", m_file}).code, 2);
  EXPECT_EQ(ReadBytes(m_file), before);
}

}  // namespace
}  // namespace kestrin::support
