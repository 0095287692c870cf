// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

#include "core/device/TLS.h"
#include "core/led/LED_Driver.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::device {
namespace {

using Bytes = std::vector<std::uint8_t>;

class TLSCommands : public ::testing::Test {
 protected:
  TLSCommands() {
    m_agent.Open(support::ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(m_board.BindVars(m_agent), 0);
    // A command must leave the elements behind its own as they were.
    for (int i = 0; i < 1028; ++i) m_board.Set_LS_Command(i, kStale);
  }

  /// The only report written so far starts with `elements` and is stale behind them.
  void ExpectWritten(const Bytes& elements) {
    ASSERT_EQ(m_agent.written.size(), 1u);
    const Bytes& report = m_agent.written[0];
    ASSERT_EQ(report.size(), 1028u);
    EXPECT_EQ(Bytes(report.begin(), report.begin() + static_cast<std::ptrdiff_t>(elements.size())), elements);
    EXPECT_TRUE(std::all_of(report.begin() + static_cast<std::ptrdiff_t>(elements.size()), report.end(),
                            [](std::uint8_t element) { return element == kStale; }));
  }

  /// `command` fails when the write fails, and then reads nothing.
  template <typename Command>
  void ExpectFailureWhenTheWriteFails(Command command) {
    m_agent.failWrites = {m_agent.writesTried + 1};
    const int reads = m_agent.readsTried;
    command();
    EXPECT_EQ(m_agent.readsTried, reads);
  }

  static constexpr std::uint8_t kStale = 0xEE;
  support::ScriptedAgent m_agent;
  TLS m_board;
};

struct PlainCommand {
  std::uint8_t code;
  bool (TLS::*send)();
};

TEST_F(TLSCommands, CommandsWithoutAnswerSendTheirCodeAndReadNothing) {
  const PlainCommand commands[] = {{0, &TLS::Reset}, {7, &TLS::Bye}, {10, &TLS::ClearFlash}};
  for (const PlainCommand& command : commands) {
    m_agent.written.clear();
    EXPECT_TRUE((m_board.*command.send)());
    ExpectWritten({command.code});
    ExpectFailureWhenTheWriteFails([&] { EXPECT_FALSE((m_board.*command.send)()); });
  }
  EXPECT_EQ(m_agent.readsTried, 0);
}

TEST_F(TLSCommands, GetSNJoinsFourBytesAsUpperCaseHexadecimal) {
  m_agent.Answers({{0x4B, 0x0A}, {0x00, 0xFF}});
  EXPECT_EQ(m_board.GetSN(), "4B0A00FF");
  ExpectWritten({1});
}

TEST_F(TLSCommands, GetSNOfABoardThatAnswersOnceHasFourDigits) {
  m_agent.Answers({{0x0A, 0xBC}});
  EXPECT_EQ(m_board.GetSN(), "0ABC");
}

TEST_F(TLSCommands, GetSNOfABoardThatDoesNotAnswerIsNoSerialNumber) {
  EXPECT_EQ(m_board.GetSN(), "NoSerialNumber");
  ExpectFailureWhenTheWriteFails([&] { EXPECT_EQ(m_board.GetSN(), "NoSerialNumber"); });
}

TEST_F(TLSCommands, GetIDTakesBothBytes) {
  m_agent.Answers({{0x10, 0x25}});
  EXPECT_EQ(m_board.GetID(), 4133);
  ExpectWritten({3});
  EXPECT_EQ(m_board.GetID(), 0) << "nothing was answered";
  m_agent.Answers({{0x10, 0x25}});
  ExpectFailureWhenTheWriteFails([&] { EXPECT_EQ(m_board.GetID(), 0); });
}

TEST_F(TLSCommands, GetMemorySizeSendsTheSameCodeAndTakesTheFirstByte) {
  m_agent.Answers({{0x10, 0x25}});
  EXPECT_EQ(m_board.GetMemorySize(), 16);
  ExpectWritten({3});
  EXPECT_EQ(m_board.GetMemorySize(), 0);
}

TEST_F(TLSCommands, CheckCompletionSendsNothingAndAcceptsOnlyTenTen) {
  m_agent.Answers({{10, 10}, {10, 11}, {11, 10}, {0, 0}, {50, 0}});
  EXPECT_TRUE(m_board.CheckCompletion());
  for (int other = 0; other < 4; ++other) EXPECT_FALSE(m_board.CheckCompletion());
  EXPECT_FALSE(m_board.CheckCompletion()) << "nothing was answered";
  EXPECT_TRUE(m_agent.written.empty());
}

TEST_F(TLSCommands, Write1kSendsAddressAndData) {
  Bytes data(1024);
  std::iota(data.begin(), data.end(), std::uint8_t{0});
  // Four times 0 + 1 + ... + 255 = 4 * 32640 = 130560 = 65536 + 65024 = 0xFE00 in 16 bits.
  m_agent.Answers({{0xFE, 0x00}});
  EXPECT_TRUE(m_board.Write1k(0x012345, data));
  Bytes expected = {20, 0x01, 0x23, 0x45};
  expected.insert(expected.end(), data.begin(), data.end());
  ExpectWritten(expected);
}

TEST_F(TLSCommands, Write1kFailsOnAnyOtherSum) {
  const Bytes data(1024, 1);  // sum 1024 = 0x0400
  m_agent.Answers({{0x04, 0x01}, {0x00, 0x04}, {0x04, 0x00}});
  EXPECT_FALSE(m_board.Write1k(0, data));
  EXPECT_FALSE(m_board.Write1k(0, data));
  EXPECT_TRUE(m_board.Write1k(0, data));
  EXPECT_FALSE(m_board.Write1k(0, data)) << "nothing was answered";
  ExpectFailureWhenTheWriteFails([&] { EXPECT_FALSE(m_board.Write1k(0, data)); });
}

TEST_F(TLSCommands, Write1kTakesTheFirst1024BytesAndRefusesLess) {
  Bytes data(1025, 1);
  data.back() = 200;
  m_agent.Answers({{0x04, 0x00}});
  EXPECT_TRUE(m_board.Write1k(0, data));
  EXPECT_THROW(static_cast<void>(m_board.Write1k(0, Bytes(1023))), std::out_of_range);
}

TEST_F(TLSCommands, WriteLessSendsAddressCountAndData) {
  m_agent.Answers({{0x01, 0x2F}});  // 200 + 100 + 3 = 303
  EXPECT_TRUE(m_board.WriteLess(0xFEDCBA, 3, Bytes{200, 100, 3, 99}));
  ExpectWritten({21, 0xFE, 0xDC, 0xBA, 0, 0, 3, 200, 100, 3});
}

TEST_F(TLSCommands, WriteLessTakesUpTo1021Bytes) {
  m_agent.Answers({{0x03, 0xFD}, {0, 0}});
  EXPECT_TRUE(m_board.WriteLess(12, 1021, Bytes(1021, 1)));
  Bytes expected = {21, 0, 0, 12, 0, 0x03, 0xFD};
  expected.resize(1028, 1);
  ExpectWritten(expected);
  EXPECT_TRUE(m_board.WriteLess(12, 0, {}));
  for (const int tooMany : {1022, 1023, 1024})
    EXPECT_THROW(static_cast<void>(m_board.WriteLess(12, tooMany, Bytes(1024))), std::out_of_range);
  EXPECT_THROW(static_cast<void>(m_board.WriteLess(12, -1, Bytes(1))), std::out_of_range);
  EXPECT_THROW(static_cast<void>(m_board.WriteLess(12, 2, Bytes(1))), std::out_of_range);
  EXPECT_EQ(m_agent.writesTried, 2) << "a refused count sends nothing";
}

TEST_F(TLSCommands, CheckCRCLeavesTheAnswerToTheCaller) {
  m_agent.Answers({{0x12, 0x34}});
  EXPECT_TRUE(m_board.CheckCRC(0x000200, 0x0A0B0C));
  ExpectWritten({30, 0, 2, 0, 0x0A, 0x0B, 0x0C});
  EXPECT_EQ(m_board.Get_LS_Response(0), 0x12);
  EXPECT_EQ(m_board.Get_LS_Response(1), 0x34);
  EXPECT_FALSE(m_board.CheckCRC(0, 0));
  ExpectFailureWhenTheWriteFails([&] { EXPECT_FALSE(m_board.CheckCRC(0, 0)); });
}

TEST_F(TLSCommands, GetACCDecodesSignAndMagnitude) {
  const struct {
    std::uint8_t byte;
    int value;
  } cases[] = {{0, 0}, {1, 1}, {31, 31}, {32, 0}, {33, -1}, {63, -31}};
  for (const auto& c : cases) {
    std::int32_t x = 99, y = 99, z = 99, w = 99;
    m_agent.Answers({{c.byte, c.byte}, {c.byte, c.byte}});
    EXPECT_TRUE(m_board.GetACC(x, y, z, w));
    EXPECT_EQ(x, c.value);
    EXPECT_EQ(y, c.value);
    EXPECT_EQ(z, c.value);
    EXPECT_EQ(w, c.byte) << "w is taken as it comes";
  }
  EXPECT_EQ(m_agent.written[0][0], 40);
}

TEST_F(TLSCommands, GetACCHasXAndYFromTheFirstReportWhenTheSecondIsMissing) {
  std::int32_t x = 99, y = 99, z = 99, w = 99;
  m_agent.Answers({{5, 40}});
  EXPECT_FALSE(m_board.GetACC(x, y, z, w));
  EXPECT_EQ(x, 5);
  EXPECT_EQ(y, -8);
  EXPECT_EQ(z, 99);
  EXPECT_EQ(w, 99);
}

TEST_F(TLSCommands, GetAccParamTakesSixBytesInOrder) {
  AccParam parameters;
  m_agent.Answers({{180, 2}, {10, 50}, {125, 13}});
  EXPECT_TRUE(m_board.GetAccParam(parameters));
  ExpectWritten({41});
  EXPECT_EQ(parameters, (AccParam{180, 2, 10, 50, 125, 13}));
}

TEST_F(TLSCommands, GetAccParamKeepsWhatArrivedBeforeAFailure) {
  AccParam parameters;
  m_agent.Answers({{180, 2}, {10, 50}});
  EXPECT_FALSE(m_board.GetAccParam(parameters));
  EXPECT_EQ(parameters, (AccParam{180, 2, 10, 50, 0, 0}));
}

TEST_F(TLSCommands, SetAccParamSendsOneByteEach) {
  m_agent.Answers({{10, 10}, {10, 0}});
  EXPECT_TRUE(m_board.SetAccParam({180, 2, 10, 50, 125, 250}));
  ExpectWritten({42, 180, 2, 10, 50, 125, 250});
  EXPECT_FALSE(m_board.SetAccParam({})) << "not acknowledged";
  EXPECT_FALSE(m_board.SetAccParam({})) << "not answered";
  ExpectFailureWhenTheWriteFails([&] { EXPECT_FALSE(m_board.SetAccParam({})); });
}

TEST_F(TLSCommands, LEDParamGoesBothWaysAsNine16BitValues) {
  const std::array<std::int32_t, 9> sent{1, 256, 65535, 4133, 5, 6, 7, 8, 0x0909};
  m_agent.Answers({{10, 10}});
  EXPECT_TRUE(m_board.SetLEDParam(sent));
  ExpectWritten({51, 0, 1, 1, 0, 255, 255, 0x10, 0x25, 0, 5, 0, 6, 0, 7, 0, 8, 9, 9});

  std::array<std::int32_t, 9> received{};
  m_agent.Answers({{0, 1}, {1, 0}, {255, 255}, {0x10, 0x25}, {0, 5}, {0, 6}, {0, 7}, {0, 8}, {9, 9}});
  EXPECT_TRUE(m_board.GetLEDParam(received));
  EXPECT_EQ(m_agent.written[1][0], 50);
  EXPECT_EQ(received, sent);

  received.fill(-1);
  m_agent.Answers({{0, 1}});
  EXPECT_FALSE(m_board.GetLEDParam(received));
  EXPECT_EQ(received[0], 1);
  EXPECT_EQ(received[1], -1);
  EXPECT_FALSE(m_board.SetLEDParam(sent)) << "not answered";
}

TEST_F(TLSCommands, SetLEDPulsesSendsLevelsCountsAndTimes) {
  // Duty cycle = half the luminance, luminance = level (full level 255); a period has 1,000 counts.
  led::LED_Driver driver;
  std::string record = "Test@1#4#1000";
  for (int channel = 0; channel < 4; ++channel) record += "+Col=whiteML255MDC100VL3.5Coef0_0_0_0;0_0_0.5_0;";
  ASSERT_TRUE(driver.Init(record));
  led::LED_Pulse pulse;
  const int low[] = {0, 40, 100, 255};
  const int high[] = {255, 100, 40, 0};
  for (int channel = 1; channel <= 4; ++channel) {
    pulse.SetLow(channel, static_cast<std::int16_t>(low[channel - 1]));
    pulse.SetHigh(channel, static_cast<std::int16_t>(high[channel - 1]));
  }
  pulse.CalculateTimes(driver);
  pulse.Trise = 1000;
  pulse.Ton = 290.00000000000006;  // 0.29 s typed into a box
  pulse.Tfall = 258;
  pulse.Toff = 65535;
  pulse.NRep = 3;
  m_agent.Answers({{10, 10}});
  EXPECT_TRUE(m_board.SetLEDPulses(1, pulse));
  // Level 0: on 0, off 1. Level 40: 20 % of 1,000 counts + 1 = 201. Level 100: 501. Level 255: 1,001.
  ExpectWritten({53,   1,    0,    255,  0,   0,  0,    1,    0,    1,    0x03, 0xE9, 40,   100,  0,   1, 0, 0xC9,
                 0,    1,    0x01, 0xF5, 100, 40, 0,    1,    0x01, 0xF5, 0,    1,    0,    0xC9, 255, 0, 0, 1,
                 0x03, 0xE9, 0,    0,    0,   1,  0x03, 0xE8, 0x01, 0x22, 0x01, 0x02, 0xFF, 0xFF, 0,   3});
  EXPECT_FALSE(m_board.SetLEDPulses(0, pulse)) << "not answered";
}

TEST_F(TLSCommands, GetLEDPulsesTakesHighBeforeLowThenTheTimes) {
  led::LED_Pulse pulse;
  m_agent.Answers({{255, 1}, {200, 2}, {100, 3}, {50, 4}, {0x03, 0xE8}, {0, 200}, {0, 30}, {1, 0}, {0, 7}});
  EXPECT_TRUE(m_board.GetLEDPulses(1, pulse));
  ExpectWritten({52, 1});
  const int high[] = {255, 200, 100, 50};
  for (int channel = 1; channel <= 4; ++channel) {
    EXPECT_EQ(pulse.GetHigh(channel), high[channel - 1]);
    EXPECT_EQ(pulse.GetLow(channel), channel);
  }
  EXPECT_EQ(pulse.Trise, 1000);
  EXPECT_EQ(pulse.Ton, 200);
  EXPECT_EQ(pulse.Tfall, 30);
  EXPECT_EQ(pulse.Toff, 256);
  EXPECT_EQ(pulse.NRep, 7);
}

TEST_F(TLSCommands, GetLEDPulsesFailsUntilAllNineReportsCame) {
  for (std::size_t answers = 0; answers < 9; ++answers) {
    m_agent.answers.assign(answers, support::ScriptedAgent::Answer{1, 1});
    led::LED_Pulse pulse;
    EXPECT_FALSE(m_board.GetLEDPulses(0, pulse)) << answers;
    EXPECT_EQ(pulse.GetHigh(1), answers > 0 ? 1 : 0);
  }
}

TEST_F(TLSCommands, StartPulseSendsTheNumber) {
  m_agent.Answers({{10, 10}});
  EXPECT_TRUE(m_board.StartPulse(1));
  ExpectWritten({54, 1});
  EXPECT_FALSE(m_board.StartPulse(1)) << "not answered";
}

TEST_F(TLSCommands, SetLEDConfigSendsTheVoltageInWholeTenths) {
  m_agent.Answers({{10, 10}});
  EXPECT_TRUE(m_board.SetLEDConfig(0x0102, 3.79, 120));
  ExpectWritten({61, 1, 2, 0, 37, 0, 120});
  EXPECT_FALSE(m_board.SetLEDConfig(1, 3.7, 100)) << "not answered";
}

TEST_F(TLSCommands, GetLEDConfigReadsTenthsOfAVolt) {
  std::int32_t code = 0, overdrive = 0;
  double voltage = 0;
  m_agent.Answers({{1, 2}, {0, 37}, {0, 120}});
  EXPECT_TRUE(m_board.GetLEDConfig(code, voltage, overdrive));
  ExpectWritten({60});
  EXPECT_EQ(code, 258);
  EXPECT_DOUBLE_EQ(voltage, 3.7);
  EXPECT_EQ(overdrive, 120);
  m_agent.Answers({{0, 9}, {0, 33}});
  EXPECT_FALSE(m_board.GetLEDConfig(code, voltage, overdrive));
  EXPECT_EQ(code, 9);
  EXPECT_DOUBLE_EQ(voltage, 3.3);
  EXPECT_EQ(overdrive, 120) << "kept, its report never came";
}

TEST_F(TLSCommands, AShortCommandCarriesTheTailOfTheOneBefore) {
  m_agent.Answers({{10, 10}});
  ASSERT_TRUE(m_board.SetAccParam({1, 2, 3, 4, 5, 6}));
  ASSERT_TRUE(m_board.Bye());
  EXPECT_EQ(m_agent.written[1][0], 7);
  EXPECT_EQ(Bytes(m_agent.written[1].begin() + 1, m_agent.written[1].begin() + 7), (Bytes{1, 2, 3, 4, 5, 6}));
}

}  // namespace
}  // namespace kestrin::core::device
