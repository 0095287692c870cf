#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Manual pages and completions know everything that the programs' own help knows, and shells complete by them.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
reference="$build/reference"

# What "man" shows of a page, without its marks and line breaks.
shown() {  # PAGE
  sed -e 's/\\f[BIR]//g' -e 's/\\-/-/g' -e 's/\\e/\\/g' -e 's/\\&//g' "$1" | tr '\n' ' '
}

# The long options that a help text lists, and its commands, one a line.
options_of() { grep -oE '^ *(-[^ ]*, ?)?--[a-zA-Z-]+' | grep -oE -- '--[a-zA-Z-]+' | sort -u; }
commands_of() { awk '/^Subcommands:/ { on = 1; next } /^[^ ]/ { on = 0 } on && $1 != "" && /^  [^ ]/ { print $1 }'; }

ctl="$build/bin/kestrinctl"
"$ctl" --help >"$work/help"
commands=()
while read -r command; do
  "$ctl" "$command" --help >"$work/help.$command"
  within="$(commands_of <"$work/help.$command")"
  if [ -z "$within" ]; then commands+=("$command"); fi
  for one in $within; do
    "$ctl" "$command" "$one" --help >"$work/help.$command $one"
    commands+=("$command $one")
  done
done < <(commands_of <"$work/help")
# So that a help of another shape does not make all of this pass.
expect "the help tells the commands" [ "${#commands[@]}" -ge 25 ]
expect "among them" grep -qxF -e 'fonts serve' <(printf '%s\n' "${commands[@]}")

completed() {  # LINE: what bash offers behind it, one a line
  local -a typed
  IFS=' ' read -ra typed <<<"$1"
  if [ "${1% }" != "$1" ]; then typed+=(""); fi
  bash --norc -c 'source "$1"; shift; name=$1; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=()
    "_$name"; printf "%s\n" "${COMPREPLY[@]}"' - "$reference/${typed[0]}.bash" "${typed[@]}"
}
offers() { grep -qxF -e "$2" < <(completed "$1"); }
offers_no() { ! offers "$@"; }

page="$(shown "$reference/kestrinctl.1")"
has_text() { grep -qF -e "$2" <<<"$1"; }
for command in "${commands[@]}"; do
  expect "the manual has $command" has_text "$page" ".SS $command kestrinctl $command"
  part="${page#*".SS $command kestrinctl"}"
  part="${part%%" .S"*}"
  first="${command%% *}" last="${command##* }"
  if [ "$first" = "$last" ]; then before="kestrinctl "; else before="kestrinctl $first "; fi
  expect "bash offers $command" offers "$before" "$last"
  expect "bash completes it" [ "$(completed "$before${last:0:-1}" | grep -cxF -e "$last")" -eq 1 ]
  expect "zsh knows $command" grep -qE "^ *'$last:" "$reference/_kestrinctl"
  expect "fish knows $command" grep -qF -e "-a '$last'" "$reference/kestrinctl.fish"
  while read -r option; do
    if has_text "$(options_of <"$work/help")" "$option"; then where="$page"; else where="$part"; fi
    expect "the manual has $option" has_text "$where" ".TP $option"
    expect "bash offers $option of $command" offers "kestrinctl $command " "$option"
    expect "zsh knows $option" grep -qF -e "'$option:" "$reference/_kestrinctl"
    expect "fish knows $option" grep -qE -e "__kestrinctl_at .*$command.* -l ${option#--} " "$reference/kestrinctl.fish"
  done < <(cat "$work/help" "$work/help.$command" | options_of)
  # What stands in capitals behind the name of an option or alone is what has to be given.
  while read -r line; do
    expect "the manual says of $command: $line" has_text "$part" ".TP $line"
  done < <(sed -n '/^Positionals:/,/^$/s/^  \([A-Z]*\) .*/\1/p' "$work/help.$command")
done

if [ -x "$build/bin/kestrin" ]; then
  QT_QPA_PLATFORM=offscreen "$build/bin/kestrin" --help >"$work/window"
  page="$(shown "$reference/kestrin.1")"
  # Qt adds one of its own that it takes from no parser.
  while read -r option; do
    expect "the manual of kestrin has $option" has_text "$page" ".TP $option"
    expect "bash offers $option of kestrin" offers "kestrin --" "$option"
    expect "zsh knows $option of kestrin" grep -qF -e "'$option:" "$reference/_kestrin"
    expect "fish knows $option of kestrin" grep -qF -e "-l ${option#--} " "$reference/kestrin.fish"
  done < <(options_of <"$work/window" | grep -vxF -e --help-all)
  expect "kestrin has options" [ "$(options_of <"$work/window" | wc -l)" -ge 5 ]
fi

echo "-- bash completes values"
mkdir -p "$work/files/folder"
touch "$work/files/one two.lscfg" "$work/files/two.lscfg"
cd "$work/files"
expect "a file" offers "kestrinctl download o" "one two.lscfg"
expect "a file behind options" offers "kestrinctl --json --board sim verify " "one two.lscfg"
expect "a file for an option" offers "kestrinctl sound code x.lsu --output o" "one two.lscfg"
expect "a folder" offers "kestrinctl --program-folder " "folder"
expect "no file where a folder is wanted" offers_no "kestrinctl --program-folder " "one two.lscfg"
expect "a board" offers "kestrinctl --board s" "sim"
expect "a pulse" offers "kestrinctl led send " "foc"
expect "no command of another group" offers_no "kestrinctl sound " "serve"
expect "no command behind a command" offers_no "kestrinctl download " "verify"
expect "no option of another command" offers_no "kestrinctl download --" "--yes"
if [ -e "$reference/kestrin.bash" ]; then expect "a set for the window" offers "kestrin o" "one two.lscfg"; fi

# What bash is asked for above, the other shells are asked for where they are, each in its own way.
zsh_offers() {  # LINE WORD
  timeout 60 zsh -f -c '
    zmodload zsh/zpty
    zpty shell zsh -f -i
    zpty -w shell "PS1=; fpath=($1 \$fpath); autoload -Uz compinit && compinit -u -D; bindkey ^I list-choices; echo rea""dy"
    zpty -r shell said "*ready*"
    zpty -w -n shell "$2"$'"'\t'"'
    zpty -r shell said "*$3*"' - "$reference" "$1" "$2"
}
fish_offers() { grep -qE -e "^$2($|[[:space:]])" < <(fish --no-config -c "source '$reference/${1%% *}.fish'; complete -C '$1'"); }
for shell in zsh fish; do
  has "$shell" "what $shell completes" || continue
  expect "$shell completes a command" "${shell}_offers" "kestrinctl sound c" code
  expect "$shell completes behind an option" "${shell}_offers" "kestrinctl --json fonts s" serve
  expect "$shell completes an option" "${shell}_offers" "kestrinctl sound code --o" --output
  expect "$shell completes a word" "${shell}_offers" "kestrinctl --board s" sim
  expect "$shell completes a folder" "${shell}_offers" "kestrinctl --program-folder fol" folder/
  expect "$shell completes a file" "${shell}_offers" "kestrinctl download tw" two.lscfg
  if [ -e "$reference/kestrin.1" ]; then expect "$shell completes for the window" "${shell}_offers" "kestrin --u" --update-server; fi
done

echo "-- bash and man read what is theirs without a complaint"
for program in kestrinctl kestrin; do
  [ -e "$reference/$program.1" ] || continue
  expect "bash reads its script of $program" quiet bash -n "$reference/$program.bash"
  if has man "the manual page of $program is flawless"; then
    expect "the manual page of $program is flawless" quiet env LC_ALL=C.UTF-8 MANROFFSEQ= MANWIDTH=80 \
      sh -c 'man --warnings -E UTF-8 -l -Tutf8 -Z "$1" >"$2"' - "$reference/$program.1" "$work/shown"
  fi
done
exit "$failed"
