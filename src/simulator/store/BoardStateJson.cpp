#include "simulator/store/BoardStateJson.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace kestrin::simulator {

namespace {

template <typename Number, std::size_t Size>
Json NumbersToJson(const std::array<Number, Size>& numbers) {
  return Json(Json::Array(numbers.begin(), numbers.end()));
}

Json ToJson(const PulseState& pulse) {
  Json::Array counts;
  for (const ChannelCounts& c : pulse.counts)
    counts.push_back(NumbersToJson(std::array<std::uint16_t, 4>{c.onLow, c.offLow, c.onHigh, c.offHigh}));
  return Json(Json::Object{{"low", NumbersToJson(pulse.low)},
                           {"high", NumbersToJson(pulse.high)},
                           {"counts", Json(std::move(counts))},
                           {"Trise", pulse.Trise},
                           {"Ton", pulse.Ton},
                           {"Tfall", pulse.Tfall},
                           {"Toff", pulse.Toff},
                           {"NRep", pulse.NRep}});
}

/// Reads members of one object; the first that is wrong is remembered with the way to it.
class MemberReader {
 public:
  MemberReader(const Json& object, std::string way, std::string& problem)
      : m_object(object), m_way(std::move(way)), m_problem(problem) {
    if (object.Members() == nullptr) Fail(m_way, "must be an object");
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
  [[nodiscard]] const Json* Find(const char* name) const { return m_problem.empty() ? m_object.Find(name) : nullptr; }

  /// The elements of a member that must be an array of that many; nullptr when there is none or something is wrong.
  [[nodiscard]] const Json::Array* FindArray(const char* name, std::size_t size) {
    const Json* const value = Find(name);
    return value == nullptr ? nullptr : ArrayOf(*value, Way(name), size);
  }

  template <typename Number>
  void ReadNumber(const Json& value, const std::string& way, Number& out) {
    constexpr double kLargest = std::numeric_limits<Number>::max();
    const double* const number = value.Number();
    if (number == nullptr || *number < 0 || *number > kLargest || *number != std::floor(*number)) {
      Fail(way, "must be a whole number from 0 to " + std::to_string(std::numeric_limits<Number>::max()));
    } else {
      out = static_cast<Number>(*number);
    }
  }

  template <typename Number, std::size_t Size>
  void ReadNumbers(const Json& value, const std::string& way, std::array<Number, Size>& out) {
    const Json::Array* const elements = ArrayOf(value, way, out.size());
    for (std::size_t i = 0; elements != nullptr && i < out.size(); ++i)
      ReadNumber((*elements)[i], Element(way, i), out[i]);
  }

  void Fail(const std::string& way, const std::string& what) {
    if (m_problem.empty()) m_problem = (way.empty() ? "the document " : "\"" + way + "\" ") + what;
  }

  [[nodiscard]] static std::string Element(const std::string& way, std::size_t index) {
    return way + "[" + std::to_string(index) + "]";
  }

 private:
  [[nodiscard]] std::string Way(const char* name) const { return m_way.empty() ? name : m_way + "." + name; }

  const Json::Array* ArrayOf(const Json& value, const std::string& way, std::size_t size) {
    const Json::Array* const elements = value.Elements();
    if (elements != nullptr && elements->size() == size) return elements;
    Fail(way, "must be an array of " + std::to_string(size));
    return nullptr;
  }

  const Json& m_object;
  std::string m_way;
  std::string& m_problem;
};

void FromJson(const Json& json, const std::string& way, PulseState& pulse, std::string& problem) {
  MemberReader reader(json, way, problem);
  reader.Read("low", pulse.low);
  reader.Read("high", pulse.high);
  if (const Json::Array* const channels = reader.FindArray("counts", pulse.counts.size())) {
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

void FromJson(const Json& json, LedConfigState& config, std::string& problem) {
  constexpr double kLargest = std::numeric_limits<std::uint16_t>::max();
  MemberReader reader(json, "ledConfig", problem);
  reader.Read("code", config.code);
  if (const Json* const value = reader.Find("voltage")) {
    const double* const voltage = value->Number();
    const double tenths = voltage == nullptr ? -1 : std::round(*voltage * 10);
    if (tenths < 0 || tenths > kLargest) {
      reader.Fail("ledConfig.voltage", "must be a number from 0 to 6553.5");
    } else {
      config.voltageTenths = static_cast<std::uint16_t>(tenths);
    }
  }
  reader.Read("overdrive", config.overdrive);
}

}  // namespace

std::string SerialText(std::uint32_t serial) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[serial >> shift & 15];
  return text;
}

Json ToJson(const BoardState& state) {
  const LedConfigState& config = state.ledConfig;
  return Json(Json::Object{{"id", state.id},
                           {"serial", SerialText(state.serial)},
                           {"accelerometer", NumbersToJson(state.accelerometer)},
                           {"ledParam", NumbersToJson(state.ledParam)},
                           {"ledConfig", Json(Json::Object{{"code", config.code},
                                                           {"voltage", config.voltageTenths / 10.0},
                                                           {"overdrive", config.overdrive}})},
                           {"ledPulses", Json(Json::Array{ToJson(state.ledPulses[0]), ToJson(state.ledPulses[1])})},
                           {"pulseStarted", state.pulseStarted ? Json(*state.pulseStarted) : Json()},
                           {"resets", state.resets},
                           {"byes", state.byes}});
}

std::string FromJson(const Json& json, BoardState& state) {
  std::string problem;
  MemberReader reader(json, "", problem);
  reader.Read("id", state.id);
  if (const Json* const value = reader.Find("serial")) {
    const std::string* const text = value->Text();
    if (text == nullptr || text->size() != 8 ||
        std::from_chars(text->data(), text->data() + 8, state.serial, 16).ptr != text->data() + 8)
      reader.Fail("serial", "must be a text of 8 hexadecimal digits");
  }
  reader.Read("accelerometer", state.accelerometer);
  reader.Read("ledParam", state.ledParam);
  if (const Json* const value = reader.Find("ledConfig")) FromJson(*value, state.ledConfig, problem);
  if (const Json::Array* const pulses = reader.FindArray("ledPulses", state.ledPulses.size()))
    for (std::size_t i = 0; i < pulses->size(); ++i)
      FromJson((*pulses)[i], MemberReader::Element("ledPulses", i), state.ledPulses[i], problem);
  if (const Json* const value = reader.Find("pulseStarted"); value != nullptr && !value->IsNull()) {
    std::uint8_t number = 0;
    reader.ReadNumber(*value, "pulseStarted", number);
    state.pulseStarted = number;
  }
  reader.Read("resets", state.resets);
  reader.Read("byes", state.byes);
  return problem;
}

}  // namespace kestrin::simulator
