#include "update/UpdateManager.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/Numbers.h"
#include "update/DiskAdvice.h"
#include "update/PlainName.h"
#include "update/UpdateView.h"

namespace kestrin::core::update {

namespace {

constexpr const char* kCatalogueFailed = "Failed! Connection error 0002.  Please try again later.";
constexpr const char* kQueryFailed = "Failed! Connection error 0003.  Please try again later.";
constexpr const char* kSoundFailed = "Failed! Connection error 0004.  Please try again later.";
constexpr const char* kEmptyAnswer = "Update failed! Connection error. Please try again later.";
constexpr const char* kRefused = "Update failed! The server refused the request. Please try again later.";
constexpr const char* kOneLine = "Error : 0001 Update failed! Please try again later.";
constexpr const char* kNoVerdict = "Error : 0002 Update failed! Please try again later.";
constexpr const char* kOldClient = "Update stopped. Please install a new version of this app.";
constexpr const char* kNothingMissing = "Update process finished. No updates available or required.";
constexpr const char* kUpdated = "Update finished. New fonts installed successfully.";
constexpr const char* kAnotherUpdate =
    "Another update is putting fonts into this folder. Wait until it is done and try again.";

/// Of how many fonts that were left out the names are told.
constexpr std::size_t kMostNamed = 3;

constexpr std::size_t kFirstItem = UpdateUtils::kFirstPayloadLine;
constexpr std::int32_t kCatalogueHere = 10;
constexpr std::int32_t kItemsKnown = 30;
constexpr std::int32_t kFetching = 70;
constexpr std::int32_t kAll = 100;

/// `number` of `count` steps of `whole`, ties to the even number.
std::int32_t Share(std::size_t number, std::size_t count, std::int32_t whole) {
  return base::RoundTo<std::int32_t>(static_cast<double>(number) * whole / static_cast<double>(count));
}

std::span<const std::string> Payload(const std::vector<std::string>& lines) {
  return std::span(lines).subspan(std::min(kFirstItem, lines.size()));
}

/// The items of a catalogue. A single one without a line break behind it counts as none.
std::span<const std::string> Items(const std::vector<std::string>& lines) {
  const std::span<const std::string> items = Payload(lines);
  return items.size() > 1 ? items : std::span<const std::string>{};
}

}  // namespace

UpdateManager::UpdateManager(const std::string& server, const std::filesystem::path& fontsFolder, base::Disk& disk,
                             base::EventPump pump)
    : m_requestManager(server, disk, pump), m_utils(fontsFolder, disk), m_pump(std::move(pump)) {
  m_requestManager.OnProgress([this](std::int16_t percentage) { requestManager_OnProgress(percentage); });
}

void UpdateManager::Initialize(UpdateView& form, TransferControl& inetConnector) {
  m_formReference = &form;
  m_requestManager.Initialize(inetConnector);
  m_utils.Initialize();
}

void UpdateManager::startUpdate() {
  if (m_formReference == nullptr || m_running) return;
  m_running = true;
  m_cancelled = false;
  m_outcome = Outcome::Cancelled;
  m_message.clear();
  m_installed.clear();
  m_neededItems.clear();
  m_leftOut.clear();
  m_formReference->resetForm();
  m_formReference->showModal([this] { Run(); });
  m_running = false;
}

void UpdateManager::cancel() {
  if (!m_running) return;
  m_cancelled = true;
  m_requestManager.cancel();
}

void UpdateManager::Run() {
  try {
    const std::unique_ptr<base::Disk::Lock> folder = TakeFolder();
    if (!folder || !checkForUpdates() || !updateItems()) return;
    const bool nothing = m_installed.empty() && !m_leftOut.empty();
    End(nothing ? Outcome::Nothing : Outcome::Updated, (nothing ? kNothingMissing : kUpdated) + LeftOut());
  } catch (const std::exception& error) {
    End(Outcome::Failed, std::string("Update failed! ") + error.what() + ". Please try again later.");
  }
}

std::unique_ptr<base::Disk::Lock> UpdateManager::TakeFolder() {
  std::string problem;
  base::Disk::LockResult result = m_utils.Lock(problem);
  if (result.heldByAnother)
    End(Outcome::Failed, kAnotherUpdate);
  else if (Succeeded(problem))
    // Before anything is written: on a full disk they may be what fills it.
    m_utils.RemoveLeftOvers();
  return std::move(result.lock);
}

bool UpdateManager::checkForUpdates() {
  m_formReference->showStep("(1/3) Checking for updates");
  m_formReference->showElement("Retrieving item catalogue");
  if (!Turn()) return false;
  Lines lines;
  if (!Ask("svc=gct&did=" + m_deviceSerial, kCatalogueFailed, lines)) return false;
  m_formReference->progressA(kCatalogueHere);
  if (!Turn() || !validateHeader(lines)) return false;
  if (validateCatalogueItems(lines)) return true;
  End(Outcome::Nothing, kNothingMissing + LeftOut());
  return false;
}

bool UpdateManager::validateHeader(const Lines& lines) {
  const auto stop = [this](const char* warning) {
    End(Outcome::Failed, warning);
    return false;
  };
  if (lines.empty()) return stop(kEmptyAnswer);
  if (UpdateUtils::ExtractPair(lines[0]) != Association{"status", "OK"}) return stop(kRefused);
  if (lines.size() == 1) return stop(kOneLine);
  const Association verdict = UpdateUtils::ExtractPair(lines[1]);
  if (verdict.Name != "clientv") return stop(kNoVerdict);
  if (verdict.Value != "1") return stop(kOldClient);
  return true;
}

bool UpdateManager::validateCatalogueItems(const Lines& lines) {
  m_formReference->showStep("(2/3) Validating catalogue items");
  m_formReference->showElement("Checking item: ");
  if (!Turn()) return false;
  std::vector<std::string> needed;
  const std::span<const std::string> items = Items(lines);
  for (std::size_t number = 0; number < items.size(); ++number) {
    const std::string& item = items[number];
    // The empty item of a line break at the end stands for the fonts folder itself.
    const bool storable = item.empty() || IsFontName(item);
    m_formReference->showElement("Checking item: " + (storable ? item : ShownName(item)));
    m_formReference->progressB(Share(number, items.size() - 1, kAll));
    if (!Turn()) return false;
    if (!storable)
      m_leftOut.push_back("\"" + ShownName(item) + "\"");
    else if (!m_utils.FontExistsAndCompleted(item))
      needed.push_back(item);
  }
  m_formReference->progressA(kItemsKnown);
  if (!Turn()) return false;
  m_neededItems = std::move(needed);
  return !m_neededItems.empty();
}

bool UpdateManager::updateItems() {
  m_formReference->progressB(0);
  const std::size_t count = m_neededItems.size();
  for (std::size_t number = 1; number <= count; ++number) {
    const std::string& item = m_neededItems[number - 1];
    m_formReference->showStep("(3/3) Updating item: " + item);
    m_formReference->showElement("Downloading: ");
    m_formReference->progressA(Share(number, count, kFetching) + kItemsKnown);
    if (!Turn() || !updateItem(item)) return false;
  }
  return true;
}

bool UpdateManager::updateItem(const std::string& item) {
  Lines lines;
  if (!Ask("svc=fqr&did=" + m_deviceSerial + "&fid=" + item, kQueryFailed, lines) || !validateHeader(lines))
    return false;
  std::vector<std::string> sounds;
  const std::span<const std::string> payload = Payload(lines);
  std::copy_if(payload.begin(), payload.end(), std::back_inserter(sounds), UpdateUtils::NamesSound);
  const auto bad = std::find_if_not(sounds.begin(), sounds.end(), IsPlainName);
  if (bad != sounds.end()) {
    m_leftOut.push_back("\"" + item + "\" with its sound file \"" + ShownName(*bad) + "\"");
    return true;
  }
  if (!Succeeded(m_utils.CreateFont(item)) || !Succeeded(m_utils.WriteDescriptor(item, lines))) return false;
  for (const std::string& line : sounds)
    if (!UpdateSound(item, line)) return false;
  if (!Succeeded(m_utils.CompleteFont(item))) return false;
  // The fonts folder itself is no font, and the catalogue may name one twice.
  if (!item.empty() && std::find(m_installed.begin(), m_installed.end(), item) == m_installed.end())
    m_installed.push_back(item);
  return true;
}

bool UpdateManager::UpdateSound(const std::string& item, const std::string& line) {
  m_formReference->showElement("Downloading: " + line);
  m_formReference->progressB(0);
  if (!m_utils.FontItemExists(item, line)) {
    if (!Succeeded(m_utils.RemoveTemporary(item))) return false;
    m_requestManager.requestData("svc=dld&did=" + m_deviceSerial + "&fid=" + item + "&ffd=" + line,
                                 m_utils.FolderOf(item), line);
    if (!Succeeded(m_requestManager.problem())) return false;
    if (m_requestManager.requestStatus() != HttpRequest::kFine) {
      End(Outcome::Failed, kSoundFailed);
      return false;
    }
  }
  m_formReference->progressB(kAll);
  return Turn();
}

void UpdateManager::requestManager_OnProgress(std::int16_t percentage) { m_formReference->progressB(percentage); }

std::string UpdateManager::LeftOut() const {
  if (m_leftOut.empty()) return "";
  const bool one = m_leftOut.size() == 1;
  std::string text = one ? " 1 font was left out, because not every computer can store its names: "
                         : " " + std::to_string(m_leftOut.size()) +
                               " fonts were left out, because not every computer can store their names: ";
  const std::size_t named = std::min(m_leftOut.size(), kMostNamed);
  for (std::size_t number = 0; number < named; ++number) text += (number > 0 ? ", " : "") + m_leftOut[number];
  if (named < m_leftOut.size()) text += " and " + std::to_string(m_leftOut.size() - named) + " more";
  return text + ". Ask whoever runs the update server to rename " + (one ? "it." : "them.");
}

bool UpdateManager::Succeeded(const std::string& problem) {
  if (problem.empty()) return true;
  End(Outcome::Failed, "Update failed! " + problem + ". " + DiskAdvice(problem));
  return false;
}

bool UpdateManager::Ask(const std::string& body, const char* warning, Lines& lines) {
  const std::string answer = m_requestManager.requestText(body);
  // Far more lines than any font or catalogue has: millions of empty ones would take minutes and all memory.
  if (m_requestManager.requestStatus() != HttpRequest::kFine || UpdateUtils::CountLines(answer) > kMostLines) {
    End(Outcome::Failed, warning);
    return false;
  }
  lines = UpdateUtils::SliceText(answer);
  return !m_cancelled;
}

bool UpdateManager::Turn() {
  base::Pump(m_pump);
  return !m_cancelled;
}

void UpdateManager::End(Outcome outcome, const std::string& message) {
  // Who cancelled knows why it ended.
  if (m_cancelled) return;
  m_outcome = outcome;
  m_message = message;
  if (outcome == Outcome::Failed)
    m_formReference->showWarning(message);
  else
    m_formReference->showMessage(message);
}

}  // namespace kestrin::core::update
