# SPDX-License-Identifier: MIT
# Sourced by scripts/parts.sh: what packaging/fonts holds, at work: two font servers behind Debian's nginx, and updates by the
# built program.
# shellcheck shell=bash disable=SC2154  # project: of who sources this

. "$project/scripts/fonts-host.sh"

hosting_folder="$project/build/hosting"
hosting_clients=50

hosting_is_here() { nginx_program >/dev/null && command -v openssl >/dev/null && [ -z "$(missing_packages hosting 2>/dev/null)" ]; }

hosting_suites() {
  if ! need_packages hosting; then
    leave_out "hosting, the packages of the section \"hosting\" in packaging/debian-packages.txt could not be installed"
    return
  fi
  if ! fetch_nginx; then
    leave_out "hosting, this system offers no package nginx or it could not be fetched"
    return
  fi
  build_preset release kestrinctl || return
  rm -rf "$hosting_folder/run"
  mkdir -p "$hosting_folder/run"
  at_end end_hosting
  section "Hosting: the unit" check_unit
  section "Hosting: the nginx site, $hosting_clients updates at a time" check_site
  section "Hosting: encrypted connections" check_encryption
  section "Hosting: publishing a font" check_publishing
  end_hosting
}

# Clients and servers, also those of a check that was broken off.
end_hosting() {
  local -a running
  end_host
  mapfile -t running < <(jobs -rp)
  if [ ${#running[@]} -gt 0 ]; then kill "${running[@]}" 2>/dev/null; fi
  rm -rf "$hosting_folder/run/clients"
}

check_unit() {
  local folder="$hosting_folder/run/units" unit level
  if ! command -v systemd-analyze >/dev/null; then
    leave_out "the unit's check, no systemd-analyze is here"
    unit="$project/packaging/fonts/kestrin-fonts@.service"
    check "the unit starts the server" grep -q '^ExecStart=/usr/bin/kestrinctl fonts serve ' "$unit"
    return
  fi
  mkdir -p "$folder"
  unit="$folder/kestrin-fonts@7101.service"
  sed "s|/usr/bin/kestrinctl|$project/build/release/bin/kestrinctl|" "$project/packaging/fonts/kestrin-fonts@.service" |
    tee "$folder/kestrin-fonts@.service" >"$unit"
  # It says nothing when all is well, but for units of the system itself.
  check "systemd finds faults in the unit" unit_is_clean "$unit"
  level="$(systemd-analyze security --offline=true "$unit" 2>/dev/null | sed -n 's/.*Overall exposure level.*: \([0-9.]*\) .*/\1/p')"
  echo "Exposure level by systemd-analyze security: ${level:-unknown}"
  check "the unit is exposed to level ${level:-unknown}, more than 1.5" awk -v level="${level:-10}" 'BEGIN { exit !(level <= 1.5) }'
}

unit_is_clean() {  # UNIT
  local said
  said="$(systemd-analyze verify --man=no "$1" 2>&1)" || { echo "$said"; return 1; }
  ! grep -F kestrin-fonts <<<"$said"
}

log_lines() { wc -l <"$host_folder/access.log"; }
has_answered() { [ "$(log_lines)" -ge "$1" ]; }
count_in() { cat "${@:2}" | grep -cE "$1"; }

check_site() {
  local fonts="$hosting_folder/run/fonts" number wrong=0
  local -a clients=()
  make_font "$fonts" "First Light" 200000 150001 1 90000
  make_font "$fonts" "Große Halle" 3000000 65536 65537
  local sounds=7 requests=$((hosting_clients * (1 + 2 + 7)))
  make_certificates "$hosting_folder/run/host"
  prepare_host "$hosting_folder/run/host" "$project/build/release/bin/kestrinctl" encrypted_sites "$hosting_folder/run/host"
  for number in 0 1; do start_font_server "$fonts" "${host_ports[$number]}" || { fail "no server"; return; }; done
  start_nginx || { fail "nginx: $(cat "$host_folder/start.log")"; return; }

  for ((number = 1; number <= hosting_clients; number++)); do
    update_fonts "$hosting_folder/run/clients/$number" "$number" "127.0.0.1:$host_plain" >"$hosting_folder/run/$number.log" 2>&1 &
    clients+=($!)
  done
  # In the middle, which is a number of answers.
  check "the updates do not get to their middle" await has_answered $((requests / 4))
  end_font_server "${host_ports[0]}" KILL
  local before
  before=$(log_lines)
  for number in "${!clients[@]}"; do
    wait "${clients[$number]}" && has_fonts "$hosting_folder/run/clients/$((number + 1))" "$fonts" && continue
    wrong=$((wrong + 1))
    cat "$hosting_folder/run/$((number + 1)).log"
  done
  check "$wrong of $hosting_clients updates did not end with all fonts, byte for byte" [ "$wrong" -eq 0 ]
  echo "One of two servers was killed behind $before of $requests answers."
  check "the server was killed when all was over" [ "$before" -lt "$requests" ]
  check "there were $(log_lines) answers, not $requests" [ "$(log_lines)" -eq "$requests" ]
  check "an answer was no good" [ "$(count_in ' 200 [0-9]+ (MISS|HIT|BYPASS|EXPIRED|REVALIDATED) ' "$host_folder/access.log")" -eq "$requests" ]
  for number in 0 1; do
    check "server $number was never asked" grep -q '^First Light' "$host_folder/${host_ports[$number]}.log"
  done
  # Every sound once, and once more where the server died in it.
  local whole
  whole=$(count_in '\.lsu$' "$host_folder/${host_ports[0]}.log" "$host_folder/${host_ports[1]}.log")
  echo "The servers sent $whole whole sounds for $((hosting_clients * sounds)) that clients got."
  check "the servers sent $whole whole sounds" [ "$whole" -le $((2 * sounds)) ]
  check "too few copies were used" [ "$(count_in ' REVALIDATED ' "$host_folder/access.log")" -ge $((hosting_clients * sounds - 2 * sounds)) ]
  check "the list of fonts was never a copy" grep -q '"gct" 200 [0-9]* HIT' "$host_folder/access.log"
  check "serial numbers were kept or written down" no_serial_numbers
  check_death_in_a_file "$hosting_folder/run/large"
  check_changed_font "$fonts"
}

no_serial_numbers() { ! grep -rlaE '4B53[0-9A-F]{4}' "$host_folder/cache" "$host_folder"/*.log; }

# A server that dies while it sends a file to nginx: the client must not notice.
check_death_in_a_file() {  # FOLDER
  local port client ended seen=1
  make_font "$1" Large 60000000
  for _ in 1 2 3 4 5; do
    start_afresh "$1" || { fail "the servers did not start anew"; return; }
    : >"$host_folder/error.log"
    rm -rf "$hosting_folder/run/clients/large"
    update_fonts "$hosting_folder/run/clients/large" 60 "127.0.0.1:$host_plain" >"$hosting_folder/run/large.log" 2>&1 &
    client=$!
    await sends_large
    for port in "${host_ports[@]}"; do
      if grep -q '^Large: sound 1.lsu$' "$host_folder/$port.log"; then end_font_server "$port" KILL; break; fi
    done
    wait "$client"
    ended=$?
    check "an update failed whose server died: $(cat "$hosting_folder/run/large.log")" [ "$ended" -eq 0 ]
    check "it has another file" has_fonts "$hosting_folder/run/clients/large" "$1"
    if grep -q 'prematurely closed connection while reading upstream' "$host_folder/error.log"; then seen=0; break; fi
  done
  check "no server died while it sent a file" [ "$seen" -eq 0 ]
}
# All servers anew, with these fonts and nothing kept.
start_afresh() {  # FONTS
  local port
  end_host
  rm -rf "${host_folder:?}/cache"
  for port in "${host_ports[@]}"; do start_font_server "$1" "$port" || return; done
  start_nginx
}
sends_large() { grep -qs '^Large: sound 1.lsu$' "$host_folder/${host_ports[0]}.log" "$host_folder/${host_ports[1]}.log"; }

# By which key an answer is kept is no client's business.
ask_with_forged_key() {  # KEY BODY
  exec 7<>"/dev/tcp/127.0.0.1/$host_plain" || return
  printf 'POST /tst/gct/ HTTP/1.0\r\nX-Kestrin-Key: %s\r\nContent-Length: %d\r\n\r\n%s' "$1" "${#2}" "$2" >&7
  check "no answer to a forged key" grep -qa '^HTTP/1.1 200' <&7
  exec 7>&-
}

# A font that is changed in its place, as long as before, right after its copies were used: all of it is the new one.
check_changed_font() {  # FONTS
  local number
  start_afresh "$1" || { fail "the servers did not start anew"; return; }
  ask_with_forged_key "dld&fid=First Light&ffd=sound 1.lsu" "svc=dld&did=1&fid=First Light&ffd=sound 2.lsu"
  for number in 61 62; do
    check "an update before the change" update_fonts "$hosting_folder/run/clients/$number" "$number" "127.0.0.1:$host_plain"
    check "it has other files" has_fonts "$hosting_folder/run/clients/$number" "$1"
  done
  head -c 200000 /dev/urandom >"$1/First Light/sound 1.lsu"
  head -c 90000 /dev/urandom >"$1/First Light/sound 4.lsu"
  check "an update behind the change" update_fonts "$hosting_folder/run/clients/63" 63 "127.0.0.1:$host_plain"
  check "sounds from before the change were mixed in" has_fonts "$hosting_folder/run/clients/63" "$1"
}

# An authority that the test trusts, and certificates of it: for this computer, for another name, and one whose time is over;
# and one that nobody has signed.
make_certificates() {  # FOLDER
  local name
  mkdir -p "$1"
  (
    cd "$1" || exit
    openssl req -x509 -newkey rsa:2048 -nodes -keyout ca.key -out ca.pem -subj "/CN=Test authority" -days 3650
    openssl req -x509 -newkey rsa:2048 -nodes -keyout unknown.key -out unknown.pem -subj "/CN=127.0.0.1" \
      -addext "subjectAltName=IP:127.0.0.1" -days 30
    openssl req -new -newkey rsa:2048 -nodes -keyout key.pem -out request.pem -subj "/CN=fonts"
    echo "subjectAltName=IP:127.0.0.1,DNS:localhost" >certificate.ext
    echo "subjectAltName=DNS:elsewhere.example" >elsewhere.ext
    echo "subjectAltName=IP:127.0.0.1" >over.ext
    for name in certificate elsewhere; do
      openssl x509 -req -in request.pem -CA ca.pem -CAkey ca.key -CAcreateserial -extfile $name.ext -days 30 -out $name.pem
    done
    mkdir -p over.ca && : >over.ca/index.txt && echo 01 >over.ca/serial
    printf '%s\n' "[ca]" "default_ca=a" "[a]" "database=over.ca/index.txt" "serial=over.ca/serial" "new_certs_dir=over.ca" \
      "default_md=sha256" "policy=p" "[p]" "commonName=supplied" >over.conf
    openssl ca -batch -config over.conf -in request.pem -cert ca.pem -keyfile ca.key -extfile over.ext \
      -startdate 20200101000000Z -enddate 20200201000000Z -notext -out over.pem
    cat unknown.key >unknown.key.pem
  ) >"$1/openssl.log" 2>&1
}

# Servers with the bad certificates, and two that send the client elsewhere.
encrypted_sites() {  # FOLDER -> for nginx; the ports stand in FOLDER/NAME.port
  local name key
  for name in elsewhere over unknown; do
    key=key.pem
    if [ "$name" = unknown ]; then key=unknown.key.pem; fi
    free_port >"$1/$name.port"
    printf 'server { listen 127.0.0.1:%d ssl; ssl_certificate %s; ssl_certificate_key %s; access_log %s; return 200; }\n' \
      "$(cat "$1/$name.port")" "$1/$name.pem" "$1/$key" "$1/strangers.log"
  done
  for name in to-secure to-plain; do free_port >"$1/$name.port"; done
  # shellcheck disable=SC2016  # nginx's variables
  printf 'server { listen 127.0.0.1:%d; access_log %s; return 301 https://127.0.0.1:%d$request_uri; }\n' "$(cat "$1/to-secure.port")" \
    "$1/sent-on.log" "$host_secure"
  printf 'server { listen 127.0.0.1:%d ssl; ssl_certificate %s; ssl_certificate_key %s; access_log %s; return 307 http://127.0.0.1:%d/; }\n' \
    "$(cat "$1/to-plain.port")" "$1/certificate.pem" "$1/key.pem" "$1/sent-on.log" "$host_plain"
}

check_encryption() {
  local name before row server text ca="$host_folder/ca.pem"
  # What is asked for in one update: the list, two fonts, seven sounds. A client may be through before the log is.
  local asked=10
  before=$(log_lines)
  check "an update over an encrypted connection" encrypted_update 70 "$ca" "https://127.0.0.1:$host_secure"
  check "it has other files" has_fonts "$hosting_folder/run/clients/70" "$hosting_folder/run/fonts"
  check "its answers are in the log" await has_answered $((before + asked))
  before=$(log_lines)
  check "an update by the server's name" encrypted_update 71 "$ca" "HTTPS://localhost:$host_secure"
  check "its answers are in the log" await has_answered $((before + asked))
  check "none of them was a copy" has_logged_copies "$before"
  before=$(log_lines)
  while IFS='|' read -r name server text; do
    rm -rf "$hosting_folder/run/clients/72"
    row="$(KESTRIN_CA_FILE="$ca" update_fonts "$hosting_folder/run/clients/72" 72 "$server" 2>&1)"
    check "$name: ended with $? and said: $row" refused $? "$row" "$text"
    echo "$name: $row"
  done <<END
another name|https://127.0.0.1:$(port elsewhere)|Nothing was fetched: the server's certificate does not prove who it is
its time is over|https://127.0.0.1:$(port over)|Nothing was fetched: the server's certificate does not prove who it is (SSL certificate problem: certificate has expired)
signed by nobody|https://127.0.0.1:$(port unknown)|Nothing was fetched: the server's certificate does not prove who it is
plain at the encrypted port|127.0.0.1:$host_secure|Failed! Connection error 0002.  Please try again later.
encrypted at the plain port|https://127.0.0.1:$host_plain|Nothing was fetched: no encrypted connection to the server comes about
sent on to the encrypted port|http://127.0.0.1:$(port to-secure)|Failed! Connection error 0002.  Please try again later.
sent on to the plain port|https://127.0.0.1:$(port to-plain)|Failed! Connection error 0002.  Please try again later.
END
  row="$(update_fonts "$hosting_folder/run/clients/72" 72 "https://127.0.0.1:$host_secure" 2>&1)"
  check "an authority that this computer does not know: $row" refused $? "$row" "Nothing was fetched: the server's certificate"
  row="$(KESTRIN_CA_FILE="$host_folder/nginx.conf" update_fonts "$hosting_folder/run/clients/72" 72 "https://127.0.0.1:$host_secure" 2>&1)"
  check "no file of certificates: $row" refused $? "$row" "KESTRIN_CA_FILE"
  # What nginx itself refuses stands in the log; nothing of it reached a server.
  check "those that send on were asked" [ "$(grep -cE '" 30[17] ' "$host_folder/sent-on.log")" -ge 2 ]
  check "a question went to a stranger" [ ! -s "$host_folder/strangers.log" ]
  check "a question was answered that should not have been asked" [ "$(tail -n +$((before + 1)) "$host_folder/access.log" | grep -c ' 200 ')" -eq 0 ]
  check_encrypted_request
}

has_logged_copies() { tail -n +$(($1 + 1)) "$host_folder/access.log" | grep ' REVALIDATED ' >/dev/null; }  # LINES-BEFORE
port() { cat "$host_folder/$1.port"; }
encrypted_update() { KESTRIN_CA_FILE="$2" update_fonts "$hosting_folder/run/clients/$1" "$1" "$3"; }
refused() {  # STATUS SAID EXPECTED
  [ "$1" -eq 1 ] && [[ "$2" == *"$3"* ]]
}

# The request is to the letter what goes over a plain connection.
check_encrypted_request() {
  local secure server folder="$hosting_folder/run/request"
  secure=$(free_port)
  mkdir -p "$folder"
  rm -f "$folder/answer"
  mkfifo "$folder/answer"
  openssl s_server -quiet -naccept 1 -accept "127.0.0.1:$secure" -cert "$host_folder/certificate.pem" \
    -key "$host_folder/key.pem" <"$folder/answer" >"$folder/said" 2>"$folder/errors" &
  server=$!
  exec 8>"$folder/answer"
  # Looking whether it answers would be the one connection that it takes.
  if ! await grep -qs ":$(printf '%04X' "$secure") .* 0A " /proc/net/tcp; then
    fail "the server for one request did not start"
    exec 8>&-
    kill "$server" && wait "$server"
    return
  fi
  KESTRIN_CA_FILE="$host_folder/ca.pem" update_fonts "$hosting_folder/run/clients/73" 73 "https://127.0.0.1:$secure" >"$folder/client" 2>&1 &
  await grep -qs 'did=4B530049' "$folder/said"
  printf 'HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nno' >&8
  exec 8>&-
  wait $! || true
  wait "$server"
  printf '%s\r\n' "POST / HTTP/1.1" "Host:127.0.0.1:$secure" "User-Agent:VMTUpdateModule" "Connection:keep-alive" \
    "Content-Type:application/x-www-form-urlencoded" "Content-Length: 20" "" | sort >"$folder/expected"
  # The body behind the empty line has no end of line.
  check "the request was another: $(cat -A "$folder/said")" same_lines "$folder/expected" <(head -c -20 "$folder/said" | sort)
  check "its body was another" [ "$(tail -c 20 "$folder/said")" = "svc=gct&did=4B530049" ]
  check "its answer was lost: $(cat "$folder/client")" grep -q "The server refused the request" "$folder/client"
}
same_lines() { diff "$1" "$2"; }

check_publishing() {
  local fonts="$hosting_folder/run/published" font="$hosting_folder/run/New Font" publish="$project/packaging/fonts/publish-font"
  make_font "$hosting_folder/run" "New Font" 1000 2000
  check "a new font" "$publish" "$font" "$fonts"
  check "its files" diff -r "$font" "$fonts/New Font"
  check "its times" [ "$(stat -c %y "$font/sound 1.lsu")" = "$(stat -c %y "$fonts/New Font/sound 1.lsu")" ]
  check "the same font once more" "$publish" "$font" "$fonts"
  head -c 1000 /dev/urandom >"$font/sound 1.lsu"
  check "a changed font under its old name" fails "$publish" "$font" "$fonts"
  rm -rf "$fonts/New Font"
  check "a changed font under a name that was taken away" fails "$publish" "$font" "$fonts"
  mv "$font" "$hosting_folder/run/new font"
  check "a changed font whose name differs in letter case only" fails "$publish" "$hosting_folder/run/new font" "$fonts"
  mv "$hosting_folder/run/new font" "$font 2"
  check "a changed font under a new name" "$publish" "$font 2" "$fonts"
  check "nothing else is left" [ "$(ls -A "$fonts")" = "New Font 2" ]
  check "nothing lies beside it" [ "$(cd "$hosting_folder/run" && echo published*)" = "published published.published" ]
}
fails() { ! "$@"; }
