// SPDX-License-Identifier: MIT
#include "device/SessionState.h"

namespace kestrin::core::device {

base::Result<> SessionState::Identified() const {
  using base::FailureKind;
  if (!knowsId)
    return base::Failure{FailureKind::NoAnswer,
                         "The board did not say what it is. Unplug it, plug it in again and repeat this."};
  if (!IsIdentified())
    return base::Failure{
        FailureKind::NoAnswer,
        "The board did not tell its whole serial number. Unplug it, plug it in again and repeat this."};
  return {};
}

}  // namespace kestrin::core::device
