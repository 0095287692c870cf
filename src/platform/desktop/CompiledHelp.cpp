// SPDX-License-Identifier: MIT
#include "platform/desktop/CompiledHelp.h"

#ifdef _WIN32
#include <windows.h>
#endif

#include <chm_lib.h>

#include <fstream>
#include <string_view>

#include "core/base/PathText.h"
#include "ui/help/HelpContents.h"
#include "ui/help/HelpSeal.h"

namespace kestrin::platform::desktop {

namespace fs = std::filesystem;

namespace {

constexpr const char* kContentsPath = "contents.hhc";
/// No page comes near this; a size beyond it is not one of ours.
constexpr LONGINT64 kLargestPage = 4 << 20;
constexpr std::uintmax_t kLargestFile = 64 << 20;

using core::base::Quoted;

/// The path as the library takes it: bytes, on Windows those of the program's code page. That is UTF-8, as the manifest
/// says; Windows before 10 1903 takes no notice, and finds no file with a name that its own code page does not have.
std::string NativeName(const fs::path& file) {
#ifdef _WIN32
  const std::wstring& wide = file.native();
  const int length = static_cast<int>(wide.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string name(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), length, name.data(), size, nullptr, nullptr);
  return name;
#else
  return file.native();
#endif
}

/// The whole file; empty when it cannot be read or is larger than any help of ours.
std::string BytesOf(const fs::path& file) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  if (error || size > kLargestFile) return "";
  std::string bytes(size, '\0');
  std::ifstream input(file, std::ios::binary);
  if (!input.read(bytes.data(), static_cast<std::streamsize>(size))) return "";
  return bytes;
}

/// What is wrong with the file, as a text for the person; "" when it can be read.
std::string ProblemOf(const fs::path& file) {
  const std::string name = Quoted(file.filename());
  std::error_code ignored;
  if (!fs::exists(file, ignored))
    return "The help file " + name + " is missing. It belongs into the folder " + Quoted(file.parent_path()) +
           "; installing the program again puts it there.";
  const std::string bytes = BytesOf(file);
  if (!ui::help::HasValidHelpSeal(bytes))
    return "The help file " + name + " in the folder " + Quoted(file.parent_path()) +
           " is damaged. Installing the program again puts a good one there.";
  return "";
}

struct CloseFile {
  void operator()(chmFile* file) const { chm_close(file); }
};

int CollectPage(chmFile*, chmUnitInfo* unit, void* pages) {
  // Paths start with a slash, which the places of contexts and contents have not.
  const std::string_view path = unit->path;
  if (path.size() > 1 && path.ends_with(".html"))
    static_cast<std::vector<std::string>*>(pages)->emplace_back(path.substr(1));
  return CHM_ENUMERATOR_CONTINUE;
}

}  // namespace

struct CompiledHelp::Archive {
  std::unique_ptr<chmFile, CloseFile> file;

  [[nodiscard]] std::optional<std::string> Read(const std::string& path) const {
    // Folders are objects too, without bytes.
    if (path.empty() || path.ends_with('/')) return std::nullopt;
    const std::string absolute = "/" + path;
    chmUnitInfo unit{};
    if (absolute.size() > CHM_MAX_PATHLEN || absolute.find('\0') != absolute.npos) return std::nullopt;
    if (chm_resolve_object(file.get(), absolute.c_str(), &unit) != CHM_RESOLVE_SUCCESS) return std::nullopt;
    // The size is unsigned in the file and becomes what it is here: nothing to trust before it is bounded.
    const auto length = static_cast<LONGINT64>(unit.length);
    if (length < 0 || length > kLargestPage) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(length), '\0');
    const LONGINT64 got =
        length == 0 ? 0
                    : chm_retrieve_object(file.get(), &unit, reinterpret_cast<unsigned char*>(bytes.data()), 0, length);
    if (got != length) return std::nullopt;
    return bytes;
  }
};

const char* CompiledHelp::Library() { return "chmlib"; }

CompiledHelp::CompiledHelp(const fs::path& file) : m_problem(ProblemOf(file)), m_archive(std::make_unique<Archive>()) {
  if (!m_problem.empty()) return;
  m_archive->file.reset(chm_open(NativeName(file).c_str()));
  if (m_archive->file == nullptr) {
    m_problem = "The help file " + Quoted(file) + " cannot be opened. Installing the program again should help.";
    return;
  }
  m_contexts =
      ui::help::HelpContextTable(m_archive->Read("#IVB").value_or(""), m_archive->Read("#STRINGS").value_or(""));
}

CompiledHelp::~CompiledHelp() = default;

std::optional<std::string> CompiledHelp::Page(const std::string& path) const {
  return m_archive->file == nullptr ? std::nullopt : m_archive->Read(path);
}

std::optional<std::string> CompiledHelp::PlaceOf(std::uint32_t context) const { return m_contexts.PlaceOf(context); }

std::vector<ui::help::HelpEntry> CompiledHelp::Contents() const {
  return ui::help::ReadHelpContents(Page(kContentsPath).value_or(""));
}

std::vector<std::string> CompiledHelp::Pages() const {
  std::vector<std::string> pages;
  if (m_archive->file != nullptr)
    chm_enumerate(m_archive->file.get(), CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, &CollectPage, &pages);
  return pages;
}

}  // namespace kestrin::platform::desktop
