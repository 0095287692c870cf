// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace kestrin::support {

/// Names of files and folders that a server must not talk the program into, none of them empty.
inline std::vector<std::string> HostileNames() {
  using namespace std::string_literals;
  return {// Out of the folder.
          ".", "..", "../x.lsu", "..\\x.lsu", "a/../../x.lsu", "a\\..\\..\\x.lsu", "../../../../../../etc/cron.d/x.lsu",
          "x/", "x\\", "/x.lsu", "\\x.lsu", "//server/share/x.lsu", "\\\\server\\share\\x.lsu", "\\\\?\\C:\\x.lsu",
          "a/b.lsu", "a\\b.lsu", "...", "..lsu/..", "/", "\\",
          // Drives and streams.
          "C:", "C:x.lsu", "C:\\x.lsu", "c:/x.lsu", "x.lsu:stream", "x.lsu::$DATA", ":x.lsu",
          // Control characters.
          "x\n.lsu", "x\r.lsu", "x\t.lsu", "x\0.lsu"s, "\x1B[2Jx.lsu", "x.lsu\x7F", "\x01x.lsu", "x\xC2\x85.lsu",
          "x\xC2\x9B.lsu",
          // Devices.
          "CON", "con.lsu", "PRN.lsu", "Aux", "NUL", "nul.lsu", "NUL .lsu", "COM1", "com1.lsu", "COM9.tar.lsu",
          "LPT1.lsu", "lpt0", "COM\xC2\xB9.lsu", "LPT\xC2\xB3", "CONIN$", "conout$.lsu",
          // Blanks and dots at the ends, which some systems drop.
          " x.lsu", "x.lsu ", ".x.lsu", "x.lsu.", ".lsu", "x.lsu..", " ", ". .",
          // What Windows cannot store.
          "?.lsu", "x?.lsu", "*.lsu", "x*y.lsu", "\"x\".lsu", "<x.lsu", "x>.lsu", "a|b.lsu", "What?",
          // What a request cannot carry, whose values are not escaped.
          "A&ffd=B", "A&fid=B.lsu", "&", "x&y.lsu", "a=b.lsu", "a+b.lsu", "100%.lsu", "%2e%2e%2fx.lsu", "a%20b",
          // Too long.
          std::string(201, 'x'), std::string(197, 'x') + ".lsu", std::string(100000, 'y')};
}

}  // namespace kestrin::support
