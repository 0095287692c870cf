// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::core::update {

/// What the files of the font store are called.
struct FontFiles {
  /// The folder of all fonts, in the program folder or the person's own.
  static constexpr const char* kFolderName = "fonts";
  /// In a font's folder, its lines as the server sent them.
  static constexpr const char* kDescriptor = "descriptor";
  /// Behind the font's name, in its folder: the same as a set that opens.
  static constexpr const char* kConfigurationEnding = ".lscfg";
  /// An empty file in a font's folder: every sound is there.
  static constexpr const char* kCompleteMarker = "fnt";
  /// A download in progress, in the folder that its file is meant for.
  static constexpr const char* kTemporaryName = "tmp";
  /// The file in the fonts folder whose lock belongs to who puts fonts there. It is empty and stays.
  static constexpr const char* kLock = ".lock";
  /// An empty file in the fonts folder for a moment: whether writing is permitted there. A number may follow.
  static constexpr const char* kTrial = ".trial";
};

}  // namespace kestrin::core::update
