#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# How many updates a second a font server bears, and the nginx site of packaging/fonts with one server, with two, with and
# without copies:  scripts/load.sh [UPDATES [CONNECTIONS]]
# An update here is what a client asks for: the list, two fonts, eleven sounds of 5 MB in all, each over a connection of its
# own. curl asks, for it takes little time for itself. It, nginx and the servers share this computer, so the numbers are for
# comparing with each other, in one run. Needs curl, a built "release" and nginx; it fetches the latter.
set -uo pipefail
project="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)"
. "$project/scripts/fonts-host.sh"
updates="${1:-200}" connections="${2:-32}"
program="$project/build/release/bin/kestrinctl"
folder="$project/build/hosting/load"

fetch_nginx || { echo "This system offers no nginx." >&2; exit 1; }
if [ ! -x "$program" ]; then echo "There is no $program. ./run builds it." >&2; exit 1; fi
trap 'end_host; rm -rf "$folder"' EXIT
rm -rf "$folder"
mkdir -p "$folder/host"
make_font "$folder/fonts" "Load One" 1000000 800000 600000 400000 200000
make_font "$folder/fonts" "Load Two" 500000 500000 500000 250000 150000 100000
openssl req -x509 -newkey rsa:2048 -nodes -keyout "$folder/host/key.pem" -out "$folder/host/certificate.pem" -subj /CN=load \
  -days 2 2>/dev/null
prepare_host "$folder/host" "$program"

# The shortest time of each measurement, in nanoseconds: whatever else this computer does makes it longer, never shorter.
declare -A shortest=()

ask() {  # SERVER PATH BODY
  printf 'url = "http://%s%s"\ndata = "%s"\noutput = /dev/null\nheader = "Connection: close"\nwrite-out = "%%{http_code} %%{size_download}\\n"\nnext\n' "$@"
}
# What many boards ask for.
questions() {  # SERVER
  local board font sound number
  for ((board = 1; board <= updates; board++)); do
    number=$(printf '4B53%04X' "$board")
    ask "$1" / "svc=gct&did=$number"
    for font in "Load One" "Load Two"; do
      ask "$1" / "svc=fqr&did=$number&fid=$font"
      for sound in "$folder/fonts/$font"/*.lsu; do
        ask "$1" /tst/gct/ "svc=dld&did=$number&fid=$font&ffd=$(basename "$sound")"
      done
    done
  done
}
measure() {  # TITLE SERVER
  local start end good
  # Nothing comes next behind the last one.
  questions "$2" | sed '$d' >"$folder/questions"
  start=$(date +%s%N)
  curl -q -s -Z --parallel-max "$connections" -K "$folder/questions" >"$folder/answers" 2>"$folder/complaints"
  end=$(date +%s%N)
  # 14 answers and 5 MB of sounds each, or it is no measure of anything.
  good=$(awk -v n="$updates" '$1 == 200 { answers++; bytes += $2 } END { print (answers == 14 * n && bytes > 5000000 * n) }' "$folder/answers")
  if [ "$good" -ne 1 ]; then
    echo "$1: not everything was answered" >&2
    sort "$folder/answers" | cut -d ' ' -f 1 | uniq -c >&2
    return
  fi
  if [ $((end - start)) -lt "${shortest[$1]-999999999999999}" ]; then shortest[$1]=$((end - start)); fi
}
# nginx anew, with the site as what comes in makes it.
measure_site() {  # TITLE
  cat >"$host_folder/site.conf"
  start_nginx || return
  measure "$1" "127.0.0.1:$host_plain"
  kill -TERM "$host_nginx"
  wait "$host_nginx"
  host_nginx=""
}
without_copies() {
  sed '/auth_request/d; /kestrin_kept_status/d; s/proxy_cache kestrin_fonts;/proxy_cache off;/' "$folder/site"
}

cp "$host_folder/site.conf" "$folder/site"
for port in "${host_ports[@]}"; do start_font_server "$folder/fonts" "$port" || exit 1; done
titles=("one server, nothing before it" "nginx, one server, nothing kept" "nginx, two servers, nothing kept"
  "nginx, one server, from the cache" "nginx, two servers, from the cache")
one_server() { sed "/server 127.0.0.1:${host_ports[1]}/d" "$@"; }
for round in 1 2 3; do
  echo "Round $round of 3" >&2
  measure "${titles[0]}" "127.0.0.1:${host_ports[0]}"
  measure_site "${titles[1]}" < <(without_copies | one_server)
  measure_site "${titles[2]}" < <(without_copies)
  measure_site "${titles[3]}" < <(one_server "$folder/site")
  measure_site "${titles[4]}" <"$folder/site"
done
echo "$updates updates over $connections connections at a time, $(nproc) processors, best of three"
for title in "${titles[@]}"; do
  awk -v title="$title" -v n="$updates" -v ns="${shortest[$title]-0}" -v first="${shortest[${titles[0]}]-0}" 'BEGIN {
    if (!ns || !first) exit
    printf "%-36s %6.1f updates a second  %5.2f of the first line\n", title, n / (ns / 1e9), first / ns }'
done
