// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kestrin::cli {

/// Where a command declares its arguments before they are parsed into its variables. A `name` is "NAME" for an argument
/// known by its place, "--name VALUE" for an option with a value.
class Syntax {
 public:
  enum class Need { Optional, Required };

  virtual ~Syntax() = default;
  virtual void Text(const std::string& name, std::string& target, const std::string& help, Need need) = 0;
  /// May be given any number of times; an argument known by its place takes all that are left.
  virtual void Texts(const std::string& name, std::vector<std::string>& target, const std::string& help, Need need) = 0;
  /// Files and folders, whatever bytes their names are made of.
  virtual void Path(const std::string& name, std::filesystem::path& target, const std::string& help, Need need) = 0;
  virtual void Paths(const std::string& name, std::vector<std::filesystem::path>& target, const std::string& help,
                     Need need) = 0;
  /// A whole number from `minimum` to `maximum`; anything else is wrong usage.
  virtual void Number(const std::string& name, std::optional<std::int32_t>& target, std::int32_t minimum,
                      std::int32_t maximum, const std::string& help) = 0;
  /// One to `most` such numbers; at least one must be given, and the option may be repeated for each.
  virtual void Numbers(const std::string& name, std::vector<std::int32_t>& target, std::int32_t minimum,
                       std::int32_t maximum, int most, const std::string& help) = 0;
  /// An option without a value.
  virtual void Flag(const std::string& name, bool& target, const std::string& help) = 0;
};

}  // namespace kestrin::cli
