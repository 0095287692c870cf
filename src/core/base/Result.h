// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

namespace kestrin::core::base {

/// What kind of failure it is, as far as somebody acts on it.
enum class FailureKind {
  /// The text says all there is.
  Failed,
  /// A file or folder is not there.
  NotFound,
  /// The system does not permit it.
  NotPermitted,
  /// The disk has no room left.
  DiskFull,
  /// Something that is left alone has the name.
  InTheWay,
  /// Something has changed since it was looked at.
  Changed,
  /// Another program has it.
  InUse,
  /// Something else is under way; it can be tried again when that is over.
  Busy,
  /// What it should go into holds no more.
  Full,
  /// What was read is not what it should be.
  NotValid,
  /// The board does not answer, or not as it should.
  NoAnswer,
  /// The person stopped it.
  Cancelled,
};

/// What kind of failure a system's error is: NotFound, NotPermitted, DiskFull, InTheWay, on Windows InUse, or Failed.
[[nodiscard]] FailureKind KindOf(const std::error_code& error);

/// Why something could not be done: the kind for whoever acts on it, the text for the person.
struct Failure {
  FailureKind kind = FailureKind::Failed;
  std::string text;

  friend bool operator==(const Failure&, const Failure&) = default;
};

/// What is said of a file that the system leaves alone because a program has it open.
inline constexpr const char* kOpenElsewhere = "another program has it open; close it there first";

/// A system's error as a failure; the text is the system's, but for what another program has open.
[[nodiscard]] Failure FailureOf(const std::error_code& error);

/// What a method has made, or why it could not.
template <class T = void>
class [[nodiscard]] Result {
 public:
  // Both are what a method returns, so both become a result by themselves.
  Result(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
  Result(Failure failure) : m_content(std::in_place_index<1>, std::move(failure)) {}

  /// Whether it worked.
  [[nodiscard]] explicit operator bool() const { return m_content.index() == 0; }
  /// What was made. Throws std::bad_variant_access when it failed.
  [[nodiscard]] T& operator*() & { return std::get<0>(m_content); }
  [[nodiscard]] const T& operator*() const& { return std::get<0>(m_content); }
  [[nodiscard]] T&& operator*() && { return std::get<0>(std::move(m_content)); }
  [[nodiscard]] T* operator->() { return &**this; }
  [[nodiscard]] const T* operator->() const { return &**this; }

  /// Why it failed. Throws std::bad_variant_access when it worked.
  [[nodiscard]] const Failure& Why() const { return std::get<1>(m_content); }
  /// The failure's text for the person; "" when it worked.
  [[nodiscard]] std::string Text() const { return *this ? std::string() : Why().text; }

 private:
  std::variant<T, Failure> m_content;
};

/// That something was done, or why it could not be.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Failure failure) : m_failure(std::move(failure)) {}

  /// Whether it worked.
  [[nodiscard]] explicit operator bool() const { return !m_failure.has_value(); }
  /// Why it failed. Throws std::bad_optional_access when it worked.
  [[nodiscard]] const Failure& Why() const { return m_failure.value(); }
  /// The failure's text for the person; "" when it worked.
  [[nodiscard]] std::string Text() const { return m_failure ? m_failure->text : std::string(); }

 private:
  std::optional<Failure> m_failure;
};

}  // namespace kestrin::core::base
