# SPDX-License-Identifier: MIT
# Sourced by scripts/tests/windows.sh: sounds, on a sound service of this system that nobody hears. Wine plays through it.
# In all other suites there is none.
# shellcheck shell=bash disable=SC2154  # project and the names that begin with windows_: of who sources this

windows_sound_suite() {
  local -x PULSE_SERVER PULSE_RUNTIME_PATH PULSE_STATE_PATH PULSE_COOKIE
  section "Windows: sounds, on a service that nobody hears" sounds_on_a_service
}

sound_folder="" sound_service=""
recorder="" saber=""

sounds_on_a_service() {
  at_end stop_sounds
  start_sound_service || { fail "the sound service does not start"; return; }
  start_recorder
  run_tests_with_sound kestrin_platform_tests 'WasapiOutput.*:WindowsPlayerTest.*'
  # One of them plays so many samples of one tone, whole.
  check "they were heard" [ "$(heard_samples | grep -cx ' *1000')" -ge 9700 ]
  stop_recorder
  run_tests_with_sound kestrin_cli_tests 'SaberPlayWindowsTest.*'
  check "a saber is heard as it is rendered" is_heard_as_rendered
  check "a service that freezes is told" trouble_is_told STOP \
    "The sound output does not answer. Choose another one in the sound settings of Windows and try again."
  check "one that is frozen from the beginning is told" trouble_is_told FROZEN \
    "The sound output does not answer. Choose another one in the sound settings of Windows and try again."
  check "one that dies is told" trouble_is_told KILL "Windows has no sound output to play on. Connect a loudspeaker and try again."
  stop_sounds
}

start_sound_service() {
  local tries
  # The names of sockets are short.
  sound_folder="$(mktemp -d)" || return
  PULSE_SERVER="unix:$sound_folder/native" PULSE_RUNTIME_PATH="$sound_folder" PULSE_STATE_PATH="$sound_folder" PULSE_COOKIE="$sound_folder/cookie"
  # Without rewinds the sink takes every sample exactly once.
  pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disallow-exit=yes --log-level=error --disable-shm=yes \
    --realtime=no --high-priority=no -L "module-native-protocol-unix auth-anonymous=1 socket=$sound_folder/native" \
    -L "module-null-sink sink_name=null format=s16le rate=48000 channels=1 channel_map=mono norewinds=1" \
    >"$windows_build/sound.log" 2>&1 </dev/null &
  sound_service=$!
  for ((tries = 0; tries < 300; ++tries)); do
    pactl info >/dev/null 2>&1 && return
    sleep 0.1
  done
  return 1
}

stop_sounds() {
  local process
  # What is frozen hears nothing but the last.
  for process in "$saber" "$recorder" "$sound_service"; do if [ -n "$process" ]; then kill -KILL "$process"; wait "$process"; fi; done 2>/dev/null
  if [ -n "$sound_folder" ]; then rm -rf "$sound_folder"; fi
  sound_folder="" sound_service="" recorder="" saber=""
}

start_recorder() {
  local tries
  : >"$sound_folder/heard"
  parec --raw --format=s16le --rate=48000 --channels=1 --latency-msec=50 -d null.monitor >"$sound_folder/heard" 2>/dev/null </dev/null &
  recorder=$!
  for ((tries = 0; tries < 300; ++tries)); do
    [ ! -s "$sound_folder/heard" ] || return 0
    sleep 0.1
  done
}
stop_recorder() {
  kill "$recorder" && wait "$recorder"
  recorder=""
}
heard_samples() { od -An -v -w2 -td2 "$sound_folder/heard"; }

run_tests_with_sound() {  # PROGRAM TESTS
  local out="$windows_results/$1-with-sound"
  mkdir -p "$windows_results"
  rm -f "$out".*
  (
    tests_environment
    cd "$tests_stand_in" || exit
    LC_ALL=C.UTF-8 timeout -k 5 600 "$wine_program" "$windows_build/bin/$1.exe" --gtest_filter="$2" \
      --gtest_output="xml:$(windows_path "$out.xml")" >"$out.log" 2>&1 </dev/null
  )
  echo $? >"$out.status"
  count_windows_results "$1-with-sound"
}

# At a terminal, with a pipe for its keys.
start_saber() {
  rm -f "$sound_folder/keys"
  mkfifo "$sound_folder/keys"
  (cd "$windows_folder" && LC_ALL=C.UTF-8 exec script -qec "stty cols 120; exec '$wine_program' ./kestrinctl.exe saber play Examples/demo.lscfg 2>'$sound_folder/errors'" \
    /dev/null <"$sound_folder/keys" >"$sound_folder/screen" 2>&1) &
  saber=$!
  exec {keys}>"$sound_folder/keys"
}
# Each letter is drawn by itself.
screen() { sed 's/\x1b\[K\x1b\[1C/ /g; s/\x1b\[[0-9?]*[a-zA-Z]//g; s/\r/\n/g' "$sound_folder/screen"; }
saber_shows() {  # TEXT
  local tries
  for ((tries = 0; tries < 300; ++tries)); do
    if screen | grep -q "^$1"; then return 0; fi
    kill -0 "$saber" 2>/dev/null || break
    sleep 0.1
  done
  echo "it does not show $1 but: $(screen | tail -n 5; cat "$sound_folder/errors")"
  return 1
}
# Its status; that of a program that was killed when it did not end.
end_of_saber() {
  local status
  ends_within "$saber" 300 || kill -KILL "$saber"
  wait "$saber"
  status=$?
  saber=""
  exec {keys}>&-
  return $status
}

# A computer that is busy with other things for longer than the service's buffer lasts has gaps, whoever plays.
is_heard_as_rendered() {
  local tries
  "$project/build/release/bin/kestrinctl" saber render "$windows_folder/Examples/demo.lscfg" --script boot --output "$sound_folder/boot.wav" &&
    tail -c +45 "$sound_folder/boot.wav" | without_silence_before >"$sound_folder/rendered" || return
  [ "$(stat -c %s "$sound_folder/rendered")" -gt 100000 ] || { echo "nothing was rendered"; return 1; }
  for ((tries = 0; tries < 10; ++tries)); do
    start_recorder
    start_saber
    saber_shows "Off" && heard_the_rendered
    local heard=$?
    printf q >&"$keys"
    end_of_saber || { echo "it ended with $?: $(cat "$sound_folder/errors")"; return 1; }
    stop_recorder
    [ $heard -ne 0 ] || return 0
  done
  echo "what was heard is something else"
  return 1
}
without_silence_before() {
  local first
  cat >"$sound_folder/all"
  first="$(od -An -v -w2 -td2 "$sound_folder/all" | grep -n -m 1 -v '^ *0$' | cut -d: -f1)"
  if [ -n "$first" ]; then tail -c +$((2 * first - 1)) "$sound_folder/all"; fi
}
# What is recorded comes a little later.
heard_the_rendered() {
  local tries size
  size="$(stat -c %s "$sound_folder/rendered")"
  for ((tries = 0; tries < 20; ++tries)); do
    if without_silence_before <"$sound_folder/heard" | cmp -s -n "$size" - "$sound_folder/rendered"; then return 0; fi
    sleep 0.2
  done
  return 1
}

trouble_is_told() {  # SIGNAL TEXT
  local shown=0
  if [ "$1" = FROZEN ]; then
    kill -STOP "$sound_service"
    start_saber
  else
    start_saber
    saber_shows "Off"
    shown=$?
    kill "-$1" "$sound_service"
  fi
  end_of_saber
  kill -CONT "$sound_service" 2>/dev/null
  [ $shown -eq 0 ] || return 1
  grep -qxF "kestrinctl: $2" <(tr -d '\r' <"$sound_folder/errors") || { echo "it said: $(cat "$sound_folder/errors")"; return 1; }
}
