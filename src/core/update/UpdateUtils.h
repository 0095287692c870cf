#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Disk.h"
#include "update/Association.h"

namespace kestrin::core::update {

/// The font store: one folder per font ("item") under the fonts folder, named as the catalogue names the font. A font
/// is complete when its folder holds the marker "fnt".
///
/// All paths are full ones; the process's working folder plays no part. The item "" is the fonts folder itself. A
/// font's folder that is a link is never written through, nor is a link inside it. Methods that write return "" or a
/// text for the person that names the file and says what is wrong.
class UpdateUtils {
 public:
  static constexpr const char* kFolderName = "fonts";
  static constexpr const char* kDescriptor = "descriptor";
  static constexpr const char* kConfigurationEnding = ".lscfg";
  static constexpr const char* kCompleteMarker = "fnt";
  /// The file in the fonts folder whose lock belongs to who puts fonts there. It is empty and stays.
  static constexpr const char* kLock = ".lock";
  /// An empty file in the fonts folder for a moment: whether writing is permitted there. A number may follow.
  static constexpr const char* kTrial = ".trial";

  /// The first line of an answer that is neither status nor verdict.
  static constexpr std::size_t kFirstPayloadLine = 2;

  /// A font on disk.
  struct Font {
    std::string name;
    bool complete = false;
    /// Names of its sound files, sorted.
    std::vector<std::string> files;
  };

  /// The fonts folder in the first of the folders (program folder, the person's own) in which fonts can be written; it
  /// is made. When there is none, the one in the last folder: writing there then says why it failed. `folders` is not
  /// empty.
  [[nodiscard]] static std::filesystem::path PlaceIn(std::span<const std::filesystem::path> folders);

  /// All fonts in a fonts folder, sorted by name; none when there is no such folder. Writes nothing.
  [[nodiscard]] static std::vector<Font> FontsIn(const std::filesystem::path& fontsFolder);

  /// Makes the fonts folder when it does not exist. The disk must outlive this object.
  UpdateUtils(const std::filesystem::path& fontsFolder, base::Disk& disk);

  /// Does nothing: the work is done on creation.
  void Initialize() {}
  [[nodiscard]] const std::filesystem::path& FontsFolder() const { return m_fontsFolder; }
  /// The item's own folder.
  [[nodiscard]] std::filesystem::path FolderOf(const std::string& item) const;
  /// The item's configuration file, as WriteDescriptor() writes it.
  [[nodiscard]] std::filesystem::path ConfigurationOf(const std::string& item) const;
  /// All fonts on disk, sorted by name.
  [[nodiscard]] std::vector<Font> Fonts() const { return FontsIn(m_fontsFolder); }

  /// Takes the fonts folder for one update: while the lock lives nobody else gets it. `problem` says why that could not
  /// even be asked for; "" when it could.
  [[nodiscard]] base::Disk::LockResult Lock(std::string& problem) const;
  /// Removes what updates left that were ended by force. For who has the lock.
  void RemoveLeftOvers() const;

  /// The lines of an answer, split at every CR LF. An empty text has none; a CR LF at the end leaves an empty last
  /// line.
  [[nodiscard]] static std::vector<std::string> SliceText(std::string_view text);
  /// How many lines SliceText() gives.
  [[nodiscard]] static std::size_t CountLines(std::string_view text);
  /// Name and value of a line, split at its first ":". Both are empty without one, or when the line starts with it.
  [[nodiscard]] static Association ExtractPair(std::string_view line);
  /// Whether the line names a sound file: it contains ".lsu", in any letter case.
  [[nodiscard]] static bool NamesSound(std::string_view line);

  [[nodiscard]] bool FontExists(const std::string& item) const;
  [[nodiscard]] bool FontExistsAndCompleted(const std::string& item) const;
  /// Makes the item's folder when it does not exist.
  [[nodiscard]] std::string CreateFont(const std::string& item) const;
  /// Marks the item as complete.
  [[nodiscard]] std::string CompleteFont(const std::string& item) const;
  /// Writes the descriptor (lines 2 and on of the answer, each ended by CR LF) and the item's configuration file (the
  /// same, with the full path of the item's folder before the names of sound files).
  [[nodiscard]] std::string WriteDescriptor(const std::string& item, std::span<const std::string> lines) const;
  [[nodiscard]] bool FontItemExists(const std::string& item, const std::string& fileName) const;
  /// Removes what an interrupted download left in the item's folder.
  [[nodiscard]] std::string RemoveTemporary(const std::string& item) const;

 private:
  /// Whether the item's folder is a link, asked before every step: it may have become one since the last.
  [[nodiscard]] std::string ProblemOfLink(const std::string& item) const;
  [[nodiscard]] std::string WriteFile(const std::filesystem::path& path, const std::string& content) const;

  std::filesystem::path m_fontsFolder;
  base::Disk& m_disk;
};

}  // namespace kestrin::core::update
