// SPDX-License-Identifier: MIT
#include "cli/GlobalOptions.h"

namespace kestrin::cli {

void DeclareGlobalOptions(Syntax& syntax, GlobalOptions& options) {
  syntax.Text("--board BOARD", options.board, "auto (default), hid:PATH, sim or sim:KEY=VALUE,...",
              Syntax::Need::Optional);
  syntax.Text("--program-folder DIR", options.programFolder, "The folder with pictures, help file and LED catalogue",
              Syntax::Need::Optional);
  syntax.Flag("--json", options.json, "Print one JSON document");
  syntax.Flag("--quiet", options.quiet, "Show no progress");
}

}  // namespace kestrin::cli
