#pragma once

#include "base/PathText.h"

namespace kestrin::sound {

using base::PathOf;
using base::TextOf;

}  // namespace kestrin::sound
