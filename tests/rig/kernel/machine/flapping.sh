# SPDX-License-Identifier: MIT
# Sourced by the suites of boards with a bad contact.
# shellcheck shell=dash disable=SC2154  # demo: of the harness

# Commands one after another, whatever comes: how each of them ended goes to /tmp/ends, a line "STATUS COMMAND" each.
run_commands() {  # NUMBER
  local number=0 words status
  : >/tmp/ends
  while [ $number -lt "$1" ]; do
    case $((number % 5)) in
      0) words="devices" ;;
      1 | 2) words="--json info" ;;
      3) words="--json accel get" ;;
      4) words="--json download $demo" ;;
    esac
    # shellcheck disable=SC2086
    kestrinctl $words >/tmp/out 2>/tmp/errors
    status=$?
    echo "$status $words" >>/tmp/ends
    case $status in
      0 | 3) ;;
      1) cat /tmp/errors >>/tmp/messages ;;
      *)
        echo "     ! $words ended with $status:"
        sed 's/^/     ! /' /tmp/errors | tail -n 5
        ;;
    esac
    number=$((number + 1))
  done
}

# How often each status was seen, for who reads the log.
show_ends() { cut -d ' ' -f 1 /tmp/ends | sort | uniq -c | sed 's/^/     | /'; }
ended_only_with() { ! grep -vE "^($1) " /tmp/ends; }  # STATUSES with "|" between
