#pragma once

namespace kestrin::cli {

/// Whether a person sees standard output / standard error on a terminal as it is written.
[[nodiscard]] bool OutputIsTerminal();
[[nodiscard]] bool ErrorsAreTerminal();

}  // namespace kestrin::cli
