# SPDX-License-Identifier: MIT
# Sourced by ./test and scripts/load.sh: the nginx site of packaging/fonts on free ports of this computer, in a folder of its
# own, with font servers behind it. Nothing of the system's own nginx is touched.
# shellcheck shell=bash disable=SC2154  # project: of who sources this

host_cache="$project/build/hosting/system"

# The system's nginx, or the one that was fetched; fails when there is none.
nginx_program() {
  local program
  for program in "$(command -v nginx)" /usr/sbin/nginx "$host_cache/usr/sbin/nginx"; do
    if [ -x "$program" ]; then
      echo "$program"
      return 0
    fi
  done
  return 1
}

# Unpacked, not installed: that would start a web server for everybody on this computer's network.
fetch_nginx() {
  if nginx_program >/dev/null; then return 0; fi
  mkdir -p "$host_cache" && (cd "$project/build/hosting" && apt-get download -q nginx) >/dev/null 2>&1 &&
    dpkg -x "$project"/build/hosting/nginx_*.deb "$host_cache" && nginx_program >/dev/null
}

# Tries again and again until a command succeeds; gives up after a minute.
await() {  # COMMAND...
  local until=$((SECONDS + 60))
  until "$@"; do
    if [ $SECONDS -ge $until ]; then
      echo "waited in vain: $*" >&2
      return 1
    fi
    sleep 0.02
  done
}

answers_at() { (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }

# A port that nobody has, below those that the system gives out by itself.
free_port() {
  local port
  while port=$((10000 + RANDOM % 20000)) && answers_at "$port"; do :; done
  echo "$port"
}

# Starts a font server behind nginx; host_servers[PORT] is its process, FOLDER/PORT.log what it says.
declare -A host_servers=()
start_font_server() {  # FONTS PORT
  "$host_program" fonts serve "$1" --port "$2" --behind-proxy >"$host_folder/$2.log" 2>&1 &
  host_servers[$2]=$!
  await grep -q "^127.0.0.1:$2\$" "$host_folder/$2.log"
}

end_font_server() {  # PORT SIGNAL
  kill "-$2" "${host_servers[$1]}" 2>/dev/null
  wait "${host_servers[$1]}" 2>/dev/null
  unset "host_servers[$1]"
}

# Makes a folder for nginx: the site as it stands in packaging/fonts but for addresses, ports and paths, the certificate that
# lies in it already, and what a command prints that is called with the ports set. Sets host_plain, host_secure and
# host_ports.
prepare_host() {  # FOLDER PROGRAM [COMMAND...]
  local inside part
  host_folder="$1"
  host_program="$2"
  host_plain=$(free_port) host_secure=$(free_port) inside=$(free_port)
  host_ports=("$(free_port)" "$(free_port)")
  mkdir -p "$host_folder"/{cache,body,proxy,other}
  sed -e "s|/var/cache/nginx-kestrin-fonts|$host_folder/cache|; s|/var/log/nginx/kestrin-fonts.log|$host_folder/access.log|" \
    -e "s|/etc/ssl/kestrin-fonts/|$host_folder/|; /listen \[::\]/d; s|listen 80;|listen 127.0.0.1:$host_plain;|" \
    -e "s|listen 443 |listen 127.0.0.1:$host_secure |; s|127\.0\.0\.1:7100|127.0.0.1:$inside|" \
    -e "s|127\.0\.0\.1:7101|127.0.0.1:${host_ports[0]}|; s|127\.0\.0\.1:7102|127.0.0.1:${host_ports[1]}|" \
    "$project/packaging/fonts/kestrin-fonts.conf" >"$host_folder/site.conf"
  {
    # Everything in this folder, and nobody else's rights.
    if [ "$(id -u)" -eq 0 ]; then echo "user root;"; fi
    printf '%s\n' "worker_processes 2;" "pid $host_folder/pid;" "error_log $host_folder/error.log info;" "daemon off;" \
      "events { worker_connections 1024; }" "http {" "client_body_temp_path $host_folder/body;" "proxy_temp_path $host_folder/proxy;"
    for part in fastcgi uwsgi scgi; do echo "${part}_temp_path $host_folder/other;"; done
    printf '%s\n' "sendfile on;" "access_log off;" "include $host_folder/site.conf;"
    "${@:3}"
    echo "}"
  } >"$host_folder/nginx.conf"
}

start_nginx() {
  "$(nginx_program)" -p "$host_folder" -c "$host_folder/nginx.conf" 2>"$host_folder/start.log" &
  host_nginx=$!
  await answers_at "$host_plain"
}

end_host() {
  local port
  for port in "${!host_servers[@]}"; do end_font_server "$port" INT; done
  if [ -n "${host_nginx-}" ]; then
    kill -TERM "$host_nginx" 2>/dev/null
    wait "$host_nginx" 2>/dev/null
    host_nginx=""
  fi
}

# Fonts of sounds that nobody looks into, of random bytes.
make_font() {  # FOLDER NAME SOUND-SIZES...
  local folder="$1/$2" number=0 size
  mkdir -p "$folder"
  : >"$folder/$2.lscfg"
  for size in "${@:3}"; do
    number=$((number + 1))
    head -c "$size" /dev/urandom >"$folder/sound $number.lsu"
    printf 'SLOT%d\r\n/home/somebody/sound %d.lsu\r\n 70\r\n' "$number" "$number" >>"$folder/$2.lscfg"
  done
}

# One update into FOLDER by a board of its own.
update_fonts() {  # FOLDER NUMBER SERVER
  mkdir -p "$1"
  "$host_program" --board "sim:serial=4B53$(printf '%04X' "$2")" --program-folder "$1" --quiet fonts update --server "$3"
}

# Whether a client has the sounds of that folder of fonts, byte for byte, and all fonts complete.
has_fonts() {  # CLIENT-FOLDER FONTS
  local font sound
  for font in "$2"/*/; do
    font="$(basename "$font")"
    [ -e "$1/fonts/$font/fnt" ] || return 1
    for sound in "$2/$font"/*.lsu; do cmp -s "$sound" "$1/fonts/$font/$(basename "$sound")" || return 1; done
  done
}
