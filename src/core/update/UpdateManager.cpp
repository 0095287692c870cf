// SPDX-License-Identifier: MIT
#include "update/UpdateManager.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <span>
#include <utility>

#include "base/Numbers.h"
#include "update/DiskAdvice.h"
#include "update/PlainName.h"
#include "update/UpdateAnswer.h"
#include "update/UpdateView.h"

namespace kestrin::core::update {

namespace {

constexpr const char* kCatalogueFailed = "Failed! Connection error 0002.  Please try again later.";
constexpr const char* kQueryFailed = "Failed! Connection error 0003.  Please try again later.";
constexpr const char* kSoundFailed = "Failed! Connection error 0004.  Please try again later.";
constexpr const char* kNothingMissing = "Update process finished. No updates available or required.";
constexpr const char* kUpdated = "Update finished. New fonts installed successfully.";

constexpr std::int32_t kCatalogueHere = 10;
constexpr std::int32_t kItemsKnown = 30;
constexpr std::int32_t kFetching = 70;
constexpr std::int32_t kAll = 100;

/// `number` of `count` steps of `whole`, ties to the even number.
std::int32_t Share(std::size_t number, std::size_t count, std::int32_t whole) {
  return base::RoundTo<std::int32_t>(static_cast<double>(number) * whole / static_cast<double>(count));
}

}  // namespace

UpdateManager::UpdateManager(const std::string& server, const std::filesystem::path& fontsFolder, base::Disk& disk,
                             base::EventPump pump)
    : m_store(fontsFolder, disk),
      m_utils(m_store),
      m_requestManager(
          server,
          [this](const std::filesystem::path& folder, const std::string& name) {
            return m_store.Receive(folder, name);
          },
          pump),
      m_pump(std::move(pump)) {
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
  m_leftOut.Clear();
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
    const bool nothing = m_installed.empty() && !m_leftOut.IsEmpty();
    End(nothing ? Outcome::Nothing : Outcome::Updated, (nothing ? kNothingMissing : kUpdated) + m_leftOut.Text());
  } catch (const std::exception& error) {
    End(Outcome::Failed, std::string("Update failed! ") + error.what() + ". Please try again later.");
  }
}

std::unique_ptr<base::Disk::Lock> UpdateManager::TakeFolder() {
  base::Result<std::unique_ptr<base::Disk::Lock>> folder = m_store.Take();
  if (folder) return *std::move(folder);
  const base::Failure& why = folder.Why();
  if (why.kind == base::FailureKind::InUse)
    End(Outcome::Failed, why.text);
  else
    static_cast<void>(Succeeded(why));
  return nullptr;
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
  End(Outcome::Nothing, kNothingMissing + m_leftOut.Text());
  return false;
}

bool UpdateManager::validateHeader(const Lines& lines) {
  const std::string warning = UpdateAnswer::Warning(lines);
  if (warning.empty()) return true;
  End(Outcome::Failed, warning);
  return false;
}

bool UpdateManager::validateCatalogueItems(const Lines& lines) {
  m_formReference->showStep("(2/3) Validating catalogue items");
  m_formReference->showElement("Checking item: ");
  if (!Turn()) return false;
  std::vector<std::string> needed;
  const std::span<const std::string> items = UpdateAnswer::Items(lines);
  for (std::size_t number = 0; number < items.size(); ++number) {
    const std::string& item = items[number];
    // The empty item of a line break at the end stands for the fonts folder itself.
    const bool storable = item.empty() || IsFontName(item);
    m_formReference->showElement("Checking item: " + (storable ? item : ShownName(item)));
    m_formReference->progressB(Share(number, items.size() - 1, kAll));
    if (!Turn()) return false;
    if (!storable)
      m_leftOut.Add(item);
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
  const std::span<const std::string> payload = UpdateAnswer::Payload(lines);
  std::copy_if(payload.begin(), payload.end(), std::back_inserter(sounds), UpdateUtils::NamesSound);
  const auto bad = std::find_if_not(sounds.begin(), sounds.end(), IsPlainName);
  if (bad != sounds.end()) {
    m_leftOut.Add(item, *bad);
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
    if (!Succeeded(m_store.RemoveTemporary(item))) return false;
    m_requestManager.requestData("svc=dld&did=" + m_deviceSerial + "&fid=" + item + "&ffd=" + line,
                                 m_store.FolderOf(item), line);
    if (!Succeeded(m_requestManager.fileResult())) return false;
    if (m_requestManager.requestStatus() != HttpRequest::kFine) {
      EndFailedRequest(kSoundFailed);
      return false;
    }
  }
  m_formReference->progressB(kAll);
  return Turn();
}

void UpdateManager::requestManager_OnProgress(std::int16_t percentage) { m_formReference->progressB(percentage); }

bool UpdateManager::Succeeded(const base::Result<>& step) {
  if (step) return true;
  End(Outcome::Failed, "Update failed! " + step.Why().text + ". " + DiskAdvice(step.Why().kind));
  return false;
}

bool UpdateManager::Ask(const std::string& body, const char* warning, Lines& lines) {
  const std::string answer = m_requestManager.requestText(body);
  std::optional<Lines> read;
  if (m_requestManager.requestStatus() == HttpRequest::kFine) read = UpdateAnswer::Read(answer);
  if (!read) {
    EndFailedRequest(warning);
    return false;
  }
  lines = std::move(*read);
  return !m_cancelled;
}

void UpdateManager::EndFailedRequest(const char* warning) {
  const std::string trouble = m_requestManager.trouble();
  End(Outcome::Failed, trouble.empty() ? warning : trouble);
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
