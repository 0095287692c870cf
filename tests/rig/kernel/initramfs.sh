#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Packs what the virtual machine starts from: the built command line with its libraries, the demo set, the board and the
# independent client, the kernel's modules, udevd with its rules, and the suites.
#   initramfs.sh BUILD SYSTEM OUT
# BUILD is the folder that the programs were built in, SYSTEM holds Debian's packages unpacked, OUT is the file to write.
set -euo pipefail
umask 022
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)"
project="$(cd "$here/../../.." && pwd -P)"
build="$1" system="$2" out="$3"
root="$(mktemp -d)"
trap 'chmod -R u+w "$root"; rm -rf "$root"' EXIT
chmod 755 "$root"

# Debian 12's packages still have some files outside /usr, later ones none.
in_system() {  # PATH -> where it is unpacked
  local place
  for place in "$system/$1" "$system/usr/$1"; do
    if [ -e "$place" ]; then
      echo "$place"
      return 0
    fi
  done
  echo "the unpacked packages hold no $1" >&2
  return 1
}

# Copies the libraries that a program needs to where it looks for them.
copy_libraries() {  # PROGRAM
  local library needed
  needed="$(LD_LIBRARY_PATH="$system/usr/lib/x86_64-linux-gnu/systemd:$system/usr/lib/x86_64-linux-gnu" ldd "$1")"
  if grep 'not found' <<<"$needed" >&2; then return 1; fi
  while read -r library; do
    mkdir -p "$root$(dirname "${library#"$system"}")"
    cp -nL "$library" "$root${library#"$system"}"
  done < <(grep -o '/[^ ]*\.so[^ ]*' <<<"$needed" | sort -u)
}

cd "$root"
mkdir -p bin dev proc sys run tmp root mnt home/member home/other etc/udev/rules.d lib usr/lib/udev/rules.d usr/lib/systemd \
  rig/modules rig/programs
cp "$(command -v busybox)" bin/busybox
ln -s busybox bin/sh
cp "$here"/machine/init init
cp -r "$here"/machine/*.sh "$here"/machine/suites rig/
cp "$build/bin/kestrin_kernel_board" rig/board
cp "$build/bin/kestrin_kernel_client" rig/client
cp "$build/bin/kestrinctl" "$build/bin/KestrinLEDS.ldcfg" rig/programs/
cp "$project/packaging/linux/70-kestrin.rules" rig/
copy_libraries "$build/bin/kestrinctl"
# The library for ZIP files is looked for when it is needed, so the program does not name it.
zip="$(PATH="$PATH:/sbin:/usr/sbin" ldconfig -p | sed -n 's/.*libzip\.so\.[0-9]* .*=> //p' | head -n 1)"
mkdir -p "$root${zip%/*}"
cp -L "$zip" "$root$zip"
copy_libraries "$zip"

# The set names its sounds by where they were built; in the machine they are in /run, which programs that see another root
# have as well.
mkdir rig/demo
cp "$build"/demo/*.lsu rig/demo/
sed "s%^$build/demo/%/run/demo/%" "$build/demo/demo.lscfg" >rig/demo/demo.lscfg
grep -q '^/run/demo/' rig/demo/demo.lscfg

# Each module with those that it needs, in the order in which they go in; compressed ones are unpacked, since only a full
# insmod reads them.
modules="$(in_system lib/modules)"
version="$(basename "$modules"/*)"
[ -e "$modules/$version/modules.dep" ] || depmod -b "${modules%/lib/modules}" "$version"
for name in hid_generic uhid usbhid libcomposite usb_f_fs dummy_hcd virtio_pci 9pnet_virtio 9p; do
  : >"rig/modules/$name.order"
  while read -r word file; do
    [ "$word" = insmod ] || continue
    file="${file%% *}"
    plain="$(basename "$file")"
    plain="${plain%.xz}"
    plain="${plain%.zst}"
    case "$file" in
      *.xz) xz -dc "$file" >"rig/modules/$plain" ;;
      *.zst) zstd -qdc "$file" >"rig/modules/$plain" ;;
      *) cp "$file" "rig/modules/$plain" ;;
    esac
    echo "$plain" >>"rig/modules/$name.order"
  done < <(modprobe -d "${modules%/lib/modules}" -S "$version" --show-depends "$name")
done

udevadm="$(in_system bin/udevadm)"
cp -L "$udevadm" bin/udevadm
ln -s /bin/udevadm usr/lib/systemd/systemd-udevd
copy_libraries "$udevadm"
# What permits a device to the person at the seat is a rule of systemd, not of udev.
for rule in 50-udev-default 70-uaccess 71-seat 73-seat-late; do
  cp "$(in_system "lib/udev/rules.d/$rule.rules")" usr/lib/udev/rules.d/
done

# Two people: "member" is in the group that the rule names, "other" is not. udevd wants to know the groups of its own rules.
cat >etc/passwd <<'PASSWD'
root:x:0:0:root:/root:/bin/sh
member:x:1000:1000::/home/member:/bin/sh
other:x:1001:1001::/home/other:/bin/sh
PASSWD
{
  printf '%s\n' root:x:0: plugdev:x:46:member member:x:1000: other:x:1001:
  number=100
  for group in tty disk kmem dialout audio video input sgx kvm render lp cdrom tape clock; do
    echo "$group:x:$((number += 1)):"
  done
} >etc/group
mkdir -p usr/lib/locale
if [ -d /usr/lib/locale/C.utf8 ]; then cp -r /usr/lib/locale/C.utf8 usr/lib/locale/; fi

chmod +x init rig/board rig/client rig/programs/kestrinctl
find . | cpio -o -H newc --quiet -R 0:0 | gzip -1 >"$out.part"
mv "$out.part" "$out"
