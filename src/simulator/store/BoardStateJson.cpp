// SPDX-License-Identifier: MIT
#include "simulator/store/BoardStateJson.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <vector>

namespace kestrin::simulator::store {

namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;
/// Members keep their order.
using Json = nlohmann::ordered_json;

/// Objects and arrays may stand in one another this deep.
constexpr int kDeepest = 64;

/// Eight upper-case hexadecimal digits.
std::string SerialText(std::uint32_t serial) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[serial >> shift & 15];
  return text;
}

Json ToJson(const PulseState& pulse) {
  Json counts = Json::array();
  for (const ChannelCounts& c : pulse.counts) counts.push_back({c.onLow, c.offLow, c.onHigh, c.offHigh});
  return {{"low", pulse.low}, {"high", pulse.high},   {"counts", counts},   {"Trise", pulse.Trise},
          {"Ton", pulse.Ton}, {"Tfall", pulse.Tfall}, {"Toff", pulse.Toff}, {"NRep", pulse.NRep}};
}

/// The library's words, without its own number in front and without what it read last, which may be any bytes.
std::string WordsOf(const Json::exception& error) {
  std::string_view words = error.what();
  if (const std::size_t number = words.find("] "); number != words.npos) words.remove_prefix(number + 2);
  return std::string(words.substr(0, words.find("; last read")));
}

/// Reads one whole document, nothing but white space around it.
Result<Json> Parse(std::string_view text) {
  // The library takes the one for the end of the text and passes over the other.
  if (text.find('\0') != text.npos) return Failure{FailureKind::NotValid, "a zero byte stands in the text"};
  if (text.starts_with("\xEF\xBB\xBF")) return Failure{FailureKind::NotValid, "the text begins with a byte order mark"};
  std::string problem;
  // The names that the object at each depth has so far, of those that are open.
  std::vector<std::set<std::string>> names;
  const auto take = [&](int depth, Json::parse_event_t event, const Json& value) {
    const auto level = static_cast<std::size_t>(depth);
    if (!problem.empty()) return false;
    if (event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start) {
      if (depth == kDeepest) problem = "objects and arrays stand too deep in one another";
      names.resize(level);
      names.emplace_back();
    } else if (event == Json::parse_event_t::key && !names[level - 1].insert(value.get<std::string>()).second) {
      problem = value.dump() + " stands twice in one object";
    }
    return problem.empty();
  };
  try {
    Json document = Json::parse(text, take);
    if (problem.empty()) return document;
  } catch (const Json::exception& error) {
    if (problem.empty()) problem = WordsOf(error);
  }
  return Failure{FailureKind::NotValid, problem};
}

/// Reads members of one object; the first that is wrong is remembered with the way to it.
class MemberReader {
 public:
  MemberReader(const Json& object, std::string way, std::string& problem)
      : m_object(object), m_way(std::move(way)), m_problem(problem) {
    if (!object.is_object()) Fail(m_way, "must be an object");
  }

  template <typename Number>
  void Read(const char* name, Number& out) {
    if (const Json* const value = Find(name)) ReadNumber(*value, Way(name), out);
  }

  template <typename Number, std::size_t Size>
  void Read(const char* name, std::array<Number, Size>& out) {
    if (const Json* const value = Find(name)) ReadNumbers(*value, Way(name), out);
  }

  /// The member, nullptr when there is none or something was wrong before.
  [[nodiscard]] const Json* Find(const char* name) const {
    if (!m_problem.empty()) return nullptr;
    const auto found = m_object.find(name);
    return found == m_object.end() ? nullptr : &*found;
  }

  /// The member as an array of that many elements; nullptr when there is none or something is wrong.
  [[nodiscard]] const Json* FindArray(const char* name, std::size_t size) {
    const Json* const value = Find(name);
    return value != nullptr && IsArray(*value, Way(name), size) ? value : nullptr;
  }

  template <typename Number>
  void ReadNumber(const Json& value, const std::string& way, Number& out) {
    constexpr double kLargest = std::numeric_limits<Number>::max();
    const double number = value.is_number() ? value.get<double>() : -1;
    if (number < 0 || number > kLargest || number != std::floor(number)) {
      Fail(way, "must be a whole number from 0 to " + std::to_string(std::numeric_limits<Number>::max()));
    } else {
      out = static_cast<Number>(number);
    }
  }

  template <typename Number, std::size_t Size>
  void ReadNumbers(const Json& value, const std::string& way, std::array<Number, Size>& out) {
    if (!IsArray(value, way, Size)) return;
    for (std::size_t i = 0; i < Size; ++i) ReadNumber(value[i], Element(way, i), out[i]);
  }

  void Fail(const std::string& way, const std::string& what) {
    if (m_problem.empty()) m_problem = (way.empty() ? "the document " : "\"" + way + "\" ") + what;
  }

  [[nodiscard]] static std::string Element(const std::string& way, std::size_t index) {
    return way + "[" + std::to_string(index) + "]";
  }

 private:
  [[nodiscard]] std::string Way(const char* name) const { return m_way.empty() ? name : m_way + "." + name; }

  [[nodiscard]] bool IsArray(const Json& value, const std::string& way, std::size_t size) {
    if (value.is_array() && value.size() == size) return true;
    Fail(way, "must be an array of " + std::to_string(size));
    return false;
  }

  const Json& m_object;
  std::string m_way;
  std::string& m_problem;
};

void Read(const Json& json, const std::string& way, PulseState& pulse, std::string& problem) {
  MemberReader reader(json, way, problem);
  reader.Read("low", pulse.low);
  reader.Read("high", pulse.high);
  if (const Json* const channels = reader.FindArray("counts", pulse.counts.size())) {
    for (std::size_t channel = 0; channel < channels->size(); ++channel) {
      std::array<std::uint16_t, 4> counts{};
      reader.ReadNumbers((*channels)[channel], MemberReader::Element(way + ".counts", channel), counts);
      pulse.counts[channel] = {counts[0], counts[1], counts[2], counts[3]};
    }
  }
  reader.Read("Trise", pulse.Trise);
  reader.Read("Ton", pulse.Ton);
  reader.Read("Tfall", pulse.Tfall);
  reader.Read("Toff", pulse.Toff);
  reader.Read("NRep", pulse.NRep);
}

void Read(const Json& json, LedConfigState& config, std::string& problem) {
  constexpr double kLargest = std::numeric_limits<std::uint16_t>::max();
  MemberReader reader(json, "ledConfig", problem);
  reader.Read("code", config.code);
  if (const Json* const value = reader.Find("voltage")) {
    const double tenths = value->is_number() ? std::round(value->get<double>() * 10) : -1;
    if (tenths < 0 || tenths > kLargest) {
      reader.Fail("ledConfig.voltage", "must be a number from 0 to 6553.5");
    } else {
      config.voltageTenths = static_cast<std::uint16_t>(tenths);
    }
  }
  reader.Read("overdrive", config.overdrive);
}

void ReadSerial(MemberReader& reader, std::uint32_t& serial) {
  const Json* const value = reader.Find("serial");
  if (value == nullptr) return;
  const std::string text = value->is_string() ? value->get<std::string>() : "";
  const char* const end = text.data() + text.size();
  if (text.size() != 8 || std::from_chars(text.data(), end, serial, 16).ptr != end)
    reader.Fail("serial", "must be a text of 8 hexadecimal digits");
}

}  // namespace

std::string ToJson(const BoardState& state) {
  const LedConfigState& config = state.ledConfig;
  // Whole volts without a fraction.
  const Json voltage =
      config.voltageTenths % 10 == 0 ? Json(config.voltageTenths / 10) : Json(config.voltageTenths / 10.0);
  const Json document = {{"id", state.id},
                         {"serial", SerialText(state.serial)},
                         {"accelerometer", state.accelerometer},
                         {"ledParam", state.ledParam},
                         {"ledConfig", {{"code", config.code}, {"voltage", voltage}, {"overdrive", config.overdrive}}},
                         {"ledPulses", Json::array({ToJson(state.ledPulses[0]), ToJson(state.ledPulses[1])})},
                         {"pulseStarted", state.pulseStarted ? Json(*state.pulseStarted) : Json()},
                         {"resets", state.resets},
                         {"byes", state.byes}};
  return document.dump(2) + '\n';
}

Result<BoardState> FromJson(std::string_view text) {
  const Result<Json> document = Parse(text);
  if (!document) return document.Why();
  BoardState state;
  std::string problem;
  MemberReader reader(*document, "", problem);
  reader.Read("id", state.id);
  ReadSerial(reader, state.serial);
  reader.Read("accelerometer", state.accelerometer);
  reader.Read("ledParam", state.ledParam);
  if (const Json* const value = reader.Find("ledConfig")) Read(*value, state.ledConfig, problem);
  if (const Json* const pulses = reader.FindArray("ledPulses", state.ledPulses.size()))
    for (std::size_t i = 0; i < pulses->size(); ++i)
      Read((*pulses)[i], MemberReader::Element("ledPulses", i), state.ledPulses[i], problem);
  if (const Json* const value = reader.Find("pulseStarted"); value != nullptr && !value->is_null())
    reader.ReadNumber(*value, "pulseStarted", state.pulseStarted.emplace());
  reader.Read("resets", state.resets);
  reader.Read("byes", state.byes);
  if (!problem.empty()) return Failure{FailureKind::NotValid, problem};
  return state;
}

}  // namespace kestrin::simulator::store
