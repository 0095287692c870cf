// SPDX-License-Identifier: MIT
#include "sound/Download.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/Numbers.h"
#include "sound/FlashBlock.h"
#include "sound/Verification.h"

namespace kestrin::core::sound {

namespace {

int WholePercent(double percent) { return static_cast<int>(base::RoundHalfEven(std::min(percent, 100.0))); }

}  // namespace

Download::Download(LSU_Configuration& configuration, DownloadView& view, device::KeptParameters& kept,
                   base::Clock& clock, base::EventPump pump)
    : m_configuration(configuration), m_view(view), m_kept(kept), m_clock(clock), m_pump(std::move(pump)) {}

DownloadOutcome Download::Send(const DownloadTarget& target) {
  m_running = true;
  m_cancelDownload = false;
  m_parametersMissing = false;
  m_boardHolds = BoardHolds::OldSet;
  m_information.clear();
  m_progress = 0;
  m_bytesWritten = 0;
  m_parameters.reset();
  m_eraseStarted.reset();
  m_frameShown = false;
  DownloadOutcome outcome = DownloadOutcome::Incomplete;
  try {
    outcome = Run(target);
  } catch (const std::exception& error) {
    // No memory, a view that failed: whatever it was, the run is over and the person hears how things stand.
    outcome = EndWith(outcome, error.what());
  }
  m_running = false;
  return outcome;
}

DownloadOutcome Download::Run(const DownloadTarget& target) {
  device::TLS& board = target.board;
  if (const auto refused = Refuse(target)) return *refused;

  device::AccParam kept;
  if (const auto ended = KeepParameters(target, kept)) return *ended;
  if (const auto ended = Erase(board)) return *ended;
  if (!board.SetAccParam(kept)) return EndWithConnectionLost();
  m_parameters = kept;
  m_parametersMissing = false;
  m_kept.Forget(target.serialNumber);

  if (const auto ended = Code()) return *ended;
  if (const auto ended = WriteFiles(board)) return *ended;
  m_boardHolds = BoardHolds::UnverifiedSet;
  if (!WriteTable(board)) return EndWith(DownloadOutcome::MemoryCheckError, "Memory check error");
  m_boardHolds = BoardHolds::NewSetNotRestarted;
  if (m_cancelDownload) return EndWithCancelled();

  ShowInformation("SUCCESS !");
  ShowPercent(std::nullopt);
  m_view.StartHideFrameTimer();
  if (board.Reset()) m_boardHolds = BoardHolds::NewSet;
  return End(DownloadOutcome::Success);
}

std::optional<DownloadOutcome> Download::Refuse(const DownloadTarget& target) {
  if (const int missing = m_configuration.CheckIntegrity(); missing != 0)
    return RefuseWith(DownloadOutcome::Incomplete, LSU_Configuration::IntegrityMessage(missing));
  const std::int64_t largest = std::min<std::int64_t>(target.flashSize, LSU_Configuration::kAddressSpace);
  if (m_configuration.TotalNrOfSamples() > m_configuration.MaxNrOfSamples() ||
      m_configuration.FlashBytesNeeded() > largest)
    return RefuseWith(DownloadOutcome::TooLarge,
                      "The sounds do not fit into the board's memory. Remove some or choose shorter ones.");
  std::string problems;
  for (const SlotFile& entry : m_configuration.FilesInFlashOrder()) {
    const base::Result<> codable = entry.file->CheckCodable(m_pump);
    if (!codable) problems += (problems.empty() ? "" : "\n") + codable.Text();
    if (m_cancelDownload) return EndWithCancelled();
  }
  if (!problems.empty()) return RefuseWith(DownloadOutcome::Incomplete, problems);
  return std::nullopt;
}

std::optional<DownloadOutcome> Download::KeepParameters(const DownloadTarget& target, device::AccParam& kept) {
  if (!target.identified) {
    m_boardHolds = BoardHolds::OldSetOfUnknown;
    const bool half = target.serialNumber.size() < device::TLS::kSerialDigits;
    return half ? EndWith(DownloadOutcome::ConnectionLost, "The board told only half of its serial number.")
                : EndWithConnectionLost();
  }
  if (!target.board.GetAccParam(kept)) return EndWithConnectionLost();
  if (m_cancelDownload) return EndWithCancelled();
  if (const auto remembered = m_kept.Find(target.serialNumber)) {
    kept = *remembered;
    return std::nullopt;
  }
  if (const auto remembered = m_kept.Keep(target.serialNumber, kept); !remembered)
    return EndWith(DownloadOutcome::Incomplete, remembered.Text());
  return std::nullopt;
}

std::optional<DownloadOutcome> Download::Erase(device::TLS& board) {
  ShowPhase(DownloadPhase::Erasing, "Erasing flash memory ...");
  ShowPercent(0);
  ShowFrame("Cancel");
  m_boardHolds = BoardHolds::PerhapsErased;
  m_parametersMissing = true;
  if (!board.ClearFlash()) return EndWithConnectionLost();
  m_eraseStarted = m_clock.Now();
  m_boardHolds = BoardHolds::NoSet;
  if (!WaitForErase(board)) return EndWithConnectionLost();
  if (m_cancelDownload) return EndWithCancelled();
  return std::nullopt;
}

bool Download::WaitForErase(device::TLS& board) {
  for (int poll = 0; poll < kErasePolls; ++poll) {
    base::Pump(m_pump);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(m_clock.Now() - *m_eraseStarted).count();
    ShowPercent(WholePercent(static_cast<double>(seconds) * 100 / kEraseSeconds));
    if (m_cancelDownload) return false;
    if (board.CheckCompletion()) {
      m_eraseStarted.reset();
      return true;
    }
  }
  return false;
}

std::optional<DownloadOutcome> Download::Code() {
  if (m_cancelDownload) return EndWithCancelled();
  ShowPhase(DownloadPhase::Coding, "Coding data...");
  ShowPercent(std::nullopt);
  const base::Result<> map = m_configuration.MakeMemoryMap(
      [this](int percent) {
        ShowPercent(percent);
        return !m_cancelDownload;
      },
      m_pump);
  if (!map) return EndWith(DownloadOutcome::Incomplete, map.Text());
  if (m_cancelDownload) return EndWithCancelled();
  return std::nullopt;
}

std::optional<DownloadOutcome> Download::WriteFiles(device::TLS& board) {
  ShowPhase(DownloadPhase::Writing, "Downloading...");
  ShowPercent(0);
  for (const SlotFile& entry : m_configuration.FilesInFlashOrder()) {
    if (!WriteFile(board, *entry.file)) return EndWithConnectionLost();
    if (m_cancelDownload) return EndWithCancelled();
  }
  return std::nullopt;
}

bool Download::WriteFile(device::TLS& board, const LSU_SoundFile& file) {
  std::vector<std::uint8_t> bytes;
  for (const FlashBlock& block : FlashBlocks(file.NrOfBytes())) {
    const std::int32_t address = file.StartAddress() + block.offset;
    if (!file.GetBytes(bytes, static_cast<std::size_t>(block.offset), static_cast<std::size_t>(block.size)))
      return false;
    if (!(block.whole ? board.Write1k(address, bytes) : board.WriteLess(address, block.size, bytes))) return false;
    AddProgress(block.size);
    base::Pump(m_pump);
    // A file can take half a minute on the wire: too long to wait for its end.
    if (m_cancelDownload) return false;
  }
  return true;
}

bool Download::WriteTable(device::TLS& board) {
  const std::vector<std::uint8_t> table = m_configuration.GetFileTable();
  const auto size = static_cast<std::int32_t>(table.size());
  if (!board.WriteLess(LSU_Configuration::Nr_Base, size, table)) return false;
  m_bytesWritten += size;
  return Verification::CheckTable(board, m_configuration).Ok();
}

void Download::AddProgress(std::int32_t bytes) {
  m_bytesWritten += bytes;
  m_progress += bytes * 100.0 / (static_cast<double>(m_configuration.TotalNrOfSamples()) * 1.5);
  ShowPercent(WholePercent(m_progress));
}

void Download::CancelButton() {
  if (!m_running || m_cancelDownload) {
    m_view.HideFrame();
    return;
  }
  const bool abort = m_view.AskAbort(
      "Are you sure you want to cancel downloading ? \n"
      "This might result in unsable behaviour !\n"
      "Press OK to resume downloading or Cancel to abort");
  if (abort) Cancel();
}

void Download::Cancel() {
  if (!m_running || m_cancelDownload) return;
  ShowInformation("Canceled");
  ShowPercent(std::nullopt);
  m_view.ShowButton("Close");
  m_cancelDownload = true;
}

void Download::ShowInformation(const std::string& text) {
  // Once cancelled, nothing that the run still does may look like anything else.
  if (m_cancelDownload) return;
  m_information = text;
  m_view.ShowInformation(text);
}

void Download::ShowPhase(DownloadPhase phase, const std::string& text) {
  if (m_cancelDownload) return;
  m_information = text;
  m_view.ShowPhase(phase, text);
}

void Download::ShowPercent(std::optional<int> percent) {
  if (!m_cancelDownload) m_view.ShowPercent(percent);
}

DownloadOutcome Download::RefuseWith(DownloadOutcome outcome, const std::string& message) {
  m_information = message;
  m_view.ShowMessage(message);
  return outcome;
}

void Download::ShowFrame(const std::string& button) {
  m_view.ShowButton(button);
  if (!std::exchange(m_frameShown, true)) m_view.ShowFrame();
}

DownloadOutcome Download::EndWith(DownloadOutcome outcome, const std::string& information) {
  ShowInformation(information);
  // What an earlier run showed last.
  if (!m_frameShown) ShowPercent(std::nullopt);
  return End(outcome);
}

DownloadOutcome Download::End(DownloadOutcome outcome) {
  ShowFrame("Close");
  m_view.ShowBoardHolds(BoardHoldsText());
  return m_cancelDownload ? DownloadOutcome::Cancelled : outcome;
}

DownloadOutcome Download::EndWithCancelled() { return EndWith(DownloadOutcome::Cancelled, "Canceled"); }

DownloadOutcome Download::EndWithConnectionLost() {
  return EndWith(DownloadOutcome::ConnectionLost, "Connection lost");
}

std::string Download::BoardHoldsText() const {
  const auto about = [this]() -> std::string {
    switch (m_boardHolds) {
      case BoardHolds::OldSet:
        return "The board was not changed.";
      case BoardHolds::OldSetOfUnknown:
        return "The board was not changed: it did not say which one it is. Unplug it, plug it in again and repeat the "
               "download.";
      case BoardHolds::PerhapsErased:
        return "The board's sounds may be erased. Plug it in again and repeat the download.";
      case BoardHolds::NoSet:
        return "The board holds no complete sound set. Repeat the download before you use the saber.";
      case BoardHolds::UnverifiedSet:
        return "The board holds the sounds, but their table could not be verified. Repeat the download before you use "
               "the "
               "saber.";
      case BoardHolds::NewSetNotRestarted:
        return "The board holds the new sounds. Unplug it and plug it in again to use them.";
      case BoardHolds::NewSet:
        return "The board holds the new sounds and restarts with them.";
    }
    return "";
  };
  constexpr const char* kParameters =
      " Its motion and impact parameters are kept safe on this computer and come back with the next download.";
  return about() + (m_parametersMissing ? kParameters : "");
}

}  // namespace kestrin::core::sound
