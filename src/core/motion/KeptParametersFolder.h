// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "base/Disk.h"
#include "device/KeptParameters.h"

namespace kestrin::core::motion {

/// Kept parameters as one text file a board: "SERIAL.txt" with the six numbers as the board holds them, in command
/// order, one a line behind its name ("MotionTh 180").
class KeptParametersFolder final : public device::KeptParameters {
 public:
  /// What such a folder is called among what the program keeps for a person.
  static constexpr const char* kFolderName = "detection-parameters";

  /// `folder` is made when something is to be kept. Empty: there is no such folder, nothing is and can be kept. The
  /// disk must outlive it.
  KeptParametersFolder(std::filesystem::path folder, base::Disk& disk);

  /// A damaged file counts as nothing remembered.
  [[nodiscard]] std::optional<device::AccParam> Find(const std::string& serialNumber) const override;
  base::Result<> Keep(const std::string& serialNumber, const device::AccParam& parameters) override;
  void Forget(const std::string& serialNumber) override;

 private:
  [[nodiscard]] std::filesystem::path FileOf(const std::string& serialNumber) const;

  std::filesystem::path m_folder;
  base::Disk& m_disk;
};

}  // namespace kestrin::core::motion
