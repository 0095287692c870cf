// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ui/help/HelpSource.h"

namespace kestrin::testing {

/// A help of a few pages, made up in the test.
class FakeHelp : public ui::help::HelpSource {
 public:
  std::map<std::string, std::string> pages;
  std::map<std::uint32_t, std::string> places;
  std::vector<ui::help::HelpEntry> contents;
  std::string problem;

  /// Adds a page with a title and a body.
  void Add(const std::string& path, const std::string& title, const std::string& body) {
    pages[path] =
        "<html><head><title>" + title + "</title></head><body><h1>" + title + "</h1>" + body + "</body></html>";
  }

  [[nodiscard]] std::string Problem() const override { return problem; }
  [[nodiscard]] std::optional<std::string> Page(const std::string& path) const override {
    const auto found = pages.find(path);
    return found == pages.end() ? std::nullopt : std::optional(found->second);
  }
  [[nodiscard]] std::optional<std::string> PlaceOf(std::uint32_t context) const override {
    const auto found = places.find(context);
    return found == places.end() ? std::nullopt : std::optional(found->second);
  }
  [[nodiscard]] std::vector<ui::help::HelpEntry> Contents() const override { return contents; }
  [[nodiscard]] std::vector<std::string> Pages() const override {
    std::vector<std::string> paths;
    for (const auto& [path, page] : pages) paths.push_back(path);
    return paths;
  }
};

}  // namespace kestrin::testing
