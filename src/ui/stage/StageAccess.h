// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::ui::stage {

/// Lets screen readers know the stage and the timeline as pictures with a name; by themselves they would be nothing but
/// ground. To be called before either is shown; once more does no harm.
void TellPictures();

}  // namespace kestrin::ui::stage
