// SPDX-License-Identifier: MIT
// Any bytes as the answers of an update server, one behind the other, separated by four bytes 0xFF: catalogue, queries,
// files, in the order in which they are asked for.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "MemoryFolder.h"
#include "core/base/Text.h"
#include "core/update/TransferControl.h"
#include "core/update/UpdateManager.h"
#include "core/update/UpdateView.h"
#include "support/RecordingDisk.h"

namespace {

using kestrin::fuzz::MemoryFolder;
using kestrin::fuzz::Require;
using namespace kestrin::core::update;
namespace fs = std::filesystem;

constexpr std::string_view kSeparator = "\xFF\xFF\xFF\xFF";

/// Gives out the pieces of the input, whatever is asked. When there are none left, nothing can be reached.
class Pieces final : public TransferControl {
 public:
  explicit Pieces(std::string_view input) : m_pieces(kestrin::core::base::Split(input, kSeparator)) {}

  void OnStateChanged(StateChanged callback) override { m_callback = std::move(callback); }
  void Demand(std::int64_t) override {}
  bool Execute(const std::string&, const std::string&, const std::string& body, const std::string&) override {
    // Names go into requests as they are: none may hold what could end a line.
    Require(body.find_first_of("\r\n") == body.npos);
    if (m_next == m_pieces.size()) return false;
    m_body = m_pieces[m_next++];
    m_length = m_body.size();
    return true;
  }
  bool StillExecuting() override { return false; }
  void Cancel() override { m_body = {}; }
  [[nodiscard]] std::string Trouble() const override { return ""; }
  [[nodiscard]] int HttpStatus() const override { return 200; }
  [[nodiscard]] std::string GetHeader(const std::string&) const override { return std::to_string(m_length); }
  std::string NextChunk(std::size_t most) override {
    const std::string chunk(m_body.substr(0, most));
    m_body.remove_prefix(chunk.size());
    return chunk;
  }

 private:
  StateChanged m_callback;
  std::vector<std::string_view> m_pieces;
  std::size_t m_next = 0;
  std::string_view m_body;
  std::size_t m_length = 0;
};

/// Checks what it is shown: percentages in their range, and one end.
class Watch final : public UpdateView {
 public:
  int ends = 0;

  void resetForm() override {}
  void showStep(const std::string& text) override { Require(text.starts_with('(')); }
  void showElement(const std::string&) override {}
  void progressA(std::int32_t percentage) override { Require(percentage >= 0 && percentage <= 100); }
  void progressB(std::int32_t percentage) override { Require(percentage >= 0 && percentage <= 100); }
  void showWarning(const std::string& text) override {
    ++ends;
    Require(!text.empty());
  }
  void showMessage(const std::string& text) override {
    ++ends;
    Require(!text.empty());
  }
  void showModal(const std::function<void()>& activated) override { activated(); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFolder folder;
  const fs::path place = folder.Path() / "place";
  const fs::path fonts = place / "fonts";
  Pieces pieces({reinterpret_cast<const char*>(data), size});
  Watch watch;
  kestrin::support::RecordingDisk disk;
  UpdateManager manager("fonts.example", fonts, disk);
  manager.Initialize(watch, pieces);
  manager.deviceSerial("4B535401");
  manager.startUpdate();
  Require(watch.ends == 1);
  Require(manager.outcome() == UpdateManager::Outcome::Updated ||
          manager.outcome() == UpdateManager::Outcome::Nothing || manager.outcome() == UpdateManager::Outcome::Failed);

  // Nothing lies beside the fonts, nothing deeper than a font's own folder, and what is complete has its description.
  for (const auto& entry : fs::directory_iterator(place)) Require(entry.path() == fonts);
  for (const auto& entry : fs::directory_iterator(fonts)) {
    if (!entry.is_directory()) continue;
    for (const auto& file : fs::directory_iterator(entry.path())) Require(file.is_regular_file());
  }
  for (const std::string& item : manager.installed()) {
    Require(manager.utils().FontExistsAndCompleted(item));
    Require(fs::exists(manager.utils().ConfigurationOf(item)));
  }
  fs::remove_all(place);
  return 0;
}
