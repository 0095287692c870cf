#pragma once

#include "motion/KeptParametersFolder.h"

namespace kestrin::cli {

/// The detection parameters that interrupted downloads left in the person's data folder. Throws CommandFailure when the
/// system names no such folder.
[[nodiscard]] motion::KeptParametersFolder OpenKeptParameters(base::Disk& disk);

}  // namespace kestrin::cli
