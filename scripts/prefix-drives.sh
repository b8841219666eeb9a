#!/usr/bin/env bash
# Gives a Wine prefix the drives that the tests look for: prefix-drives.sh PREFIX
# Types count from the next start of the prefix's server on.
#
#   A, B  floppy disks with labels    G  network drive      K  labelled hard disk
#   E     labelled removable disk     H  RAM disk           L  removable disk, no label
#   F     CD drive without a disc     I  hard disk, no label
set -euo pipefail
prefix=$(realpath -m "${1:?usage: prefix-drives.sh PREFIX}")
export WINEPREFIX=$prefix LC_ALL=C.UTF-8 WINEDEBUG=-all
registry=$(mktemp --suffix=.reg)
trap 'rm -f "$registry"' EXIT
printf 'REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Drives]\r\n' >"$registry"

# drive LETTER TYPE [LABEL]: a folder of the prefix as a drive
drive() {
    local folder="$prefix/drives/$1"
    mkdir -p "$folder"
    if [ -n "${3:-}" ]; then
        printf '%s' "$3" >"$folder/.windows-label"
    fi
    link "$1" "$2" "../drives/$1"
}

# link LETTER TYPE TARGET
link() {
    ln -sfn "$3" "$prefix/dosdevices/$1:"
    printf '"%s:"="%s"\r\n' "$1" "$2" >>"$registry"
}

drive a floppy SYSTEMDISK
drive b floppy DATADISK
drive e floppy STICK
link f cdrom ../drives/no-disc
drive g network
drive h ramdisk
drive i hd
drive k hd Archive
drive l floppy
wine regedit /S "$(printf 'Z:%s' "$registry" | tr / '\\')" </dev/null >/dev/null 2>&1
