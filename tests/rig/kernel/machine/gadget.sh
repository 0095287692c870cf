#!/bin/sh
# SPDX-License-Identifier: MIT
# A USB device of this machine's own making, which its own USB host finds (the module dummy_hcd stands for the cable):
#   gadget.sh make NUMBER NAME | gadget.sh remove NUMBER
# FunctionFS for its only function is then in /run/functionsNUMBER; whoever serves that plugs the device in.
set -e
gadget="/sys/kernel/config/usb_gadget/g$2"
functions="/run/functions$2"
function="functions/ffs.board$2"
case "$1" in
  make)
    grep -q ' /sys/kernel/config ' /proc/mounts || mount -t configfs none /sys/kernel/config
    mkdir "$gadget"
    cd "$gadget"
    echo 0x04d8 >idVendor
    echo 0xfa37 >idProduct
    echo 0x0100 >bcdDevice
    mkdir strings/0x409 configs/c.1 "$function"
    # Not all makers stay within the letters of English.
    echo "SN000$2 é" >strings/0x409/serialnumber
    echo "Kestrin Blått" >strings/0x409/manufacturer
    echo "Board $3" >strings/0x409/product
    ln -s "$function" configs/c.1
    mkdir -p "$functions"
    mount -t functionfs "board$2" "$functions"
    ;;
  remove)
    umount "$functions"
    rm "$gadget/configs/c.1/ffs.board$2"
    rmdir "$gadget/configs/c.1" "$gadget/$function" "$gadget/strings/0x409" "$gadget"
    ;;
esac
