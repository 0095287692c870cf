// SPDX-License-Identifier: MIT
#pragma once

#include "core/motion/KeptParametersFolder.h"

namespace kestrin::cli {

/// The detection parameters that interrupted downloads left in the person's data folder. Throws CommandFailure when the
/// system names no such folder.
[[nodiscard]] core::motion::KeptParametersFolder OpenKeptParameters(core::base::Disk& disk);

}  // namespace kestrin::cli
