// SPDX-License-Identifier: MIT
#include "motion/KeptParametersFolder.h"

#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "base/PathText.h"
#include "base/WholeFile.h"
#include "motion/DetectionParameter.h"

namespace kestrin::core::motion {

namespace fs = std::filesystem;

namespace {

// Which variable of the environment says where a person's data lies.
#ifdef _WIN32
constexpr const char* kVariable = "APPDATA";
#else
constexpr const char* kVariable = "HOME";
#endif

}  // namespace

KeptParametersFolder::KeptParametersFolder(fs::path folder, base::Disk& disk)
    : m_folder(std::move(folder)), m_disk(disk) {}

std::optional<device::AccParam> KeptParametersFolder::Find(const std::string& serialNumber) const {
  if (m_folder.empty()) return std::nullopt;
  const fs::path path = FileOf(serialNumber);
  std::error_code unknown;
  // Opening a pipe would wait for its other end.
  if (!fs::is_regular_file(path, unknown)) return std::nullopt;
  std::ifstream file(path);
  device::AccParam parameters;
  for (const DetectionParameter& parameter : kDetectionParameters) {
    std::string name;
    std::int32_t value = -1;
    if (!(file >> name >> value) || name != parameter.name || value < 0 || value > 255) return std::nullopt;
    parameters.*parameter.field = value;
  }
  return parameters;
}

base::Result<> KeptParametersFolder::Keep(const std::string& serialNumber, const device::AccParam& parameters) {
  if (m_folder.empty())
    return base::Failure{base::FailureKind::NotFound,
                         "The folder for your data is not known, and the board's detection parameters must be kept "
                         "there. Set the environment variable " +
                             std::string(kVariable) + " and try again."};
  std::error_code error;
  fs::create_directories(m_folder, error);
  if (error)
    return base::Failure{base::KindOf(error),
                         "The folder \"" + base::TextOf(m_folder) + "\" could not be made: " + error.message()};
  std::ostringstream text;
  text.imbue(std::locale::classic());
  for (const DetectionParameter& parameter : kDetectionParameters)
    text << parameter.name << ' ' << parameters.*parameter.field << '\n';
  return base::WriteWholeFile(FileOf(serialNumber), text.str(), m_disk);
}

void KeptParametersFolder::Forget(const std::string& serialNumber) {
  if (m_folder.empty()) return;
  std::error_code error;
  if (fs::remove(FileOf(serialNumber), error)) (void)m_disk.Flush(m_folder);
}

fs::path KeptParametersFolder::FileOf(const std::string& serialNumber) const {
  return m_folder / (serialNumber + ".txt");
}

}  // namespace kestrin::core::motion
