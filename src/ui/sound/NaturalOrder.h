// SPDX-License-Identifier: MIT
#pragma once

class QString;

namespace kestrin::ui::sound {

/// Whether `a` comes before `b` as people count: "swing 2" before "swing 10", capital letters like small ones.
[[nodiscard]] bool NaturallyBefore(const QString& a, const QString& b);

}  // namespace kestrin::ui::sound
