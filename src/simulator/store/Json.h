#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace kestrin::simulator {

/// A JSON value. Members of an object keep their order.
class Json {
 public:
  using Array = std::vector<Json>;
  using Member = std::pair<std::string, Json>;
  using Object = std::vector<Member>;

  /// Objects and arrays may stand in one another this deep.
  static constexpr int kDeepest = 64;

  struct Parsed;
  /// Reads one whole document, nothing but white space around it. Strict: what the format does not allow is a problem,
  /// and so is a name that an object has twice. Bytes above 127 in texts are taken as they are.
  [[nodiscard]] static Parsed Parse(std::string_view text);

  /// null.
  Json() = default;
  Json(bool value) : m_value(value) {}
  /// A text in quotation marks would become a truth value.
  Json(const char* value) = delete;
  /// A number of any type that a double holds exactly.
  template <typename Number>
  requires(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool> &&
           (sizeof(Number) < sizeof(double) || std::is_same_v<Number, double>)) Json(Number value)
      : m_value(static_cast<double>(value)) {}
  Json(std::string value) : m_value(std::move(value)) {}
  Json(Array value) : m_value(std::move(value)) {}
  Json(Object value) : m_value(std::move(value)) {}

  [[nodiscard]] bool IsNull() const { return std::holds_alternative<std::monostate>(m_value); }
  /// What the value is, nullptr when it is something else.
  [[nodiscard]] const bool* Bool() const { return std::get_if<bool>(&m_value); }
  [[nodiscard]] const double* Number() const { return std::get_if<double>(&m_value); }
  [[nodiscard]] const std::string* Text() const { return std::get_if<std::string>(&m_value); }
  [[nodiscard]] const Array* Elements() const { return std::get_if<Array>(&m_value); }
  [[nodiscard]] const Object* Members() const { return std::get_if<Object>(&m_value); }
  /// The member of that name; nullptr when this is no object or has none.
  [[nodiscard]] const Json* Find(std::string_view name) const;

  /// The value for people: one member or element a line, indented by 2 blanks; arrays of single values on one line.
  [[nodiscard]] std::string Format() const;

  friend bool operator==(const Json&, const Json&) = default;

 private:
  void Append(std::string& out, std::size_t indent) const;

  std::variant<std::monostate, bool, double, std::string, Array, Object> m_value;
};

/// What became of a text: the value, or what is wrong with it and where.
struct Json::Parsed {
  std::optional<Json> value;
  /// "" when there is a value.
  std::string problem;
};

}  // namespace kestrin::simulator
