// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/Disk.h"
#include "base/EventPump.h"
#include "update/FontStore.h"
#include "update/HttpRequest.h"
#include "update/LeftOutFonts.h"
#include "update/UpdateUtils.h"

namespace kestrin::core::update {

class TransferControl;
class UpdateView;

/// Fetches new sound fonts for a board: asks the server for its catalogue, finds what is missing on disk, fetches that.
/// An update that was interrupted goes on with what is missing.
///
/// The server is not trusted: of a font whose own name or whose sound files' names are not plain nothing is written. It
/// is left out, which is told at the end, and the others are fetched.
///
/// The fonts folder belongs to one update at a time, whichever program runs it.
class UpdateManager {
 public:
  enum class Outcome {
    /// None has run yet.
    None,
    /// New fonts were fetched.
    Updated,
    /// There was nothing to fetch.
    Nothing,
    /// It stopped with a warning.
    Failed,
    /// The person cancelled it; no message was shown.
    Cancelled,
  };

  /// `server` is a valid UpdateServer. Makes `fontsFolder` when it does not exist. The disk must outlive this object.
  UpdateManager(const std::string& server, const std::filesystem::path& fontsFolder, base::Disk& disk,
                base::EventPump pump = {});
  UpdateManager(const UpdateManager&) = delete;
  UpdateManager& operator=(const UpdateManager&) = delete;

  /// Takes the dialog and its transfer control; both must outlive this object. Called once.
  void Initialize(UpdateView& form, TransferControl& inetConnector);
  /// The serial number of the board that fonts are fetched for.
  void deviceSerial(std::string serial) { m_deviceSerial = std::move(serial); }
  /// Resets the dialog, shows it, runs the update in it and returns when the dialog is closed.
  void startUpdate();
  /// Ends the update that runs now, at once and with no message; without one it does nothing. What was fetched stays.
  /// Meant to be called from an event: startUpdate() still has to return.
  void cancel();

  /// How the last update ended.
  [[nodiscard]] Outcome outcome() const { return m_outcome; }
  /// The message or warning that it ended with; "" when it was cancelled.
  [[nodiscard]] const std::string& message() const { return m_message; }
  /// The fonts that it completed, in the order of the catalogue; also when a later one failed.
  [[nodiscard]] const std::vector<std::string>& installed() const { return m_installed; }
  /// What the fonts' folders hold.
  [[nodiscard]] const UpdateUtils& utils() const { return m_utils; }

  // Part of the procedure's interface as the system defines it; nobody but the update itself needs it.
  /// The fonts that the last update set out to fetch.
  [[nodiscard]] const std::vector<std::string>& neededItems() const { return m_neededItems; }

 private:
  using Lines = std::vector<std::string>;

  void Run();
  /// Takes the fonts folder; null when it cannot be had, with a warning.
  [[nodiscard]] std::unique_ptr<base::Disk::Lock> TakeFolder();
  [[nodiscard]] bool checkForUpdates();
  [[nodiscard]] bool validateHeader(const Lines& lines);
  [[nodiscard]] bool validateCatalogueItems(const Lines& lines);
  [[nodiscard]] bool updateItems();
  [[nodiscard]] bool updateItem(const std::string& item);
  [[nodiscard]] bool UpdateSound(const std::string& item, const std::string& line);
  void requestManager_OnProgress(std::int16_t percentage);

  /// Whether a step on the disk may be followed by the next; shows the warning when not.
  [[nodiscard]] bool Succeeded(const base::Result<>& step);
  /// Asks the server; false when the request failed, with a warning of that text.
  [[nodiscard]] bool Ask(const std::string& body, const char* warning, Lines& lines);
  /// The server could not be asked: ends with what is wrong with the encryption, or else with the warning.
  void EndFailedRequest(const char* warning);
  /// Lets events run; false when the person cancelled meanwhile.
  [[nodiscard]] bool Turn();
  void End(Outcome outcome, const std::string& message);

  FontStore m_store;
  UpdateUtils m_utils;
  HttpRequest m_requestManager;
  base::EventPump m_pump;
  UpdateView* m_formReference = nullptr;
  std::string m_deviceSerial;
  std::vector<std::string> m_neededItems;
  std::vector<std::string> m_installed;
  LeftOutFonts m_leftOut;
  Outcome m_outcome = Outcome::None;
  std::string m_message;
  bool m_running = false;
  bool m_cancelled = false;
};

}  // namespace kestrin::core::update
