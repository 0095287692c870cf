# SPDX-License-Identifier: MIT
# Holds the includes of src/ against a table of who may include whom:
#   awk -f layers.awk layers.txt FILE...      FILE as src/...
# Prints every include that the table does not allow, every folder that it does not know and every spelling that is not
# the one: from the core without "core/", from elsewhere from src/ on. Ends with 1 when there is any.

function folder(path, parts, count) {
  count = split(path, parts, "/")
  if (count < 2) return path
  # Where the table has a row for the house alone, what has no row of its own belongs to it.
  if (!((parts[1] "/" parts[2]) in known) && parts[1] in known) return parts[1]
  return parts[1] "/" parts[2]
}

function complain(text) {
  print FILENAME ":" FNR ": " text
  bad = 1
}

FNR == NR {
  sub(/#.*/, "")
  if (NF == 0) next
  known[$1] = 1
  for (i = 2; i <= NF; i++) allowed[$1, $i] = 1
  next
}

FNR == 1 {
  here = folder(substr(FILENAME, 5))
  core = here ~ /^core\//
  if (!(here in known)) complain("the folder " here " does not stand in the table")
}

/^[ \t]*#[ \t]*include[ \t]*"/ {
  target = $0
  sub(/^[^"]*"/, "", target)
  sub(/".*/, "", target)
  if (core && target !~ /^(core|simulator|platform|ui|cli|programs)\//) target = "core/" target
  else if (core && target ~ /^core\//) complain("within the core \"" target "\" is spelt without \"core/\"")
  there = folder(target)
  if (there == here) next
  if (!(there in known)) complain("\"" target "\" names no folder of the table")
  else if (!((here, there) in allowed) && !((here, substr(there, 1, index(there "/", "/") - 1)) in allowed))
    complain(here " must not see " there " (\"" target "\")")
}

END { exit bad }
