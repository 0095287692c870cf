// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "update/FontCollection.h"
#include "update/HttpRequest.h"

namespace kestrin::core::update {

/// What an update server answers to a request, given a collection of fonts. See docs/sound-fonts.md.
class FontAnswers {
 public:
  struct Answer {
    /// The status of the HTTP answer: 200, or 404 for what is not on offer.
    int status = 200;
    /// The body, unless a file is it.
    std::string text;
    std::optional<std::filesystem::path> file;
    /// What happened, for the person who runs the server: "list of 2 fonts", "Ember: blade on.lsu".
    std::string note;
  };

  explicit FontAnswers(FontCollection fonts) : m_fonts(std::move(fonts)) {}

  /// The answer to a catalogue ("svc=gct") or a font query ("svc=fqr"), which go to the server's root. Anything else
  /// gets a text that refuses it.
  [[nodiscard]] Answer Text(std::string_view body) const;
  /// The answer to a download ("svc=dld"), which goes to kDownloadPath.
  [[nodiscard]] Answer Download(std::string_view body) const;

  static constexpr const char* kTextPath = "/";
  static constexpr const char* kDownloadPath = HttpRequest::kDataPath;

 private:
  [[nodiscard]] Answer Catalogue() const;
  [[nodiscard]] Answer Query(std::string_view name) const;

  FontCollection m_fonts;
};

}  // namespace kestrin::core::update
