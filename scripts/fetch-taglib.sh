#!/bin/sh
# Puts TagLib's source archive into a folder, unless it is there already.
#
#   fetch-taglib.sh FOLDER        prints the archive's full path
#
# The archive is pinned by its SHA-256: whatever its origin, other bytes are
# refused. It comes, in this order, from
#   1. FOLDER itself, so that a second run needs no network;
#   2. $TAGLIB_ARCHIVE, a copy obtained by other means;
#   3. the package mirrors that this machine is set up to use.
# Needs no root rights. Two runs at once wait for each other.
set -eu

version=2.0.2
sum=0de288d7fe34ba133199fd8512f19cc1100196826eafcb67a33b224ec3a59737
# The name inside the package pool, and the one under which it is kept here.
pool_path="pool/main/t/taglib/taglib_${version}.orig.tar.gz"
name="taglib-${version}.tar.gz"

fail() {
    echo "fetch-taglib: $*" >&2
    exit 1
}

has_right_sum() {
    echo "$sum  $1" | sha256sum --check --status 2>/dev/null
}

# Moves a candidate into place if it is the pinned archive.
accept() {
    has_right_sum "$1" || return 1
    mv -f "$1" "$folder/$name"
}

list_mirrors() {
    command -v apt-get >/dev/null 2>&1 || return 0
    # Sources without a pool for their main section (security, private ones)
    # merely fail and the next one is tried.
    # shellcheck disable=SC2016  # apt-get's own variable, not the shell's
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 2>/dev/null |
        sort -u | awk '/security/ { last = last $0 "\n"; next } { print } END { printf "%s", last }'
}

download() {
    helper=/usr/lib/apt/apt-helper
    [ -x "$helper" ] || return 1
    for mirror in $(list_mirrors); do
        rm -f "$candidate"
        echo "fetch-taglib: trying ${mirror}${pool_path}" >&2
        if "$helper" -o APT::Sandbox::User="$(id -un)" download-file "${mirror}${pool_path}" "$candidate" "SHA256:$sum" >&2 &&
            accept "$candidate"; then
            return 0
        fi
    done
    return 1
}

[ $# -eq 1 ] || fail "usage: fetch-taglib.sh FOLDER"
command -v sha256sum >/dev/null 2>&1 || fail "sha256sum is not installed"
mkdir -p "$1" || fail "cannot make the folder $1"
folder=$(cd "$1" && pwd)

exec 9>"$folder/.lock"
if command -v flock >/dev/null 2>&1; then
    flock 9 || fail "cannot lock $folder/.lock"
fi

if [ -f "$folder/$name" ]; then
    if has_right_sum "$folder/$name"; then
        echo "$folder/$name"
        exit 0
    fi
    echo "fetch-taglib: $folder/$name is damaged and is fetched anew" >&2
    rm -f "$folder/$name"
fi

# In the same folder, so that the last step is a rename and never half a file.
work=$(mktemp -d "$folder/.fetch-XXXXXX")
trap 'rm -rf "$work"' EXIT INT TERM
candidate="$work/$name"

if [ -n "${TAGLIB_ARCHIVE:-}" ]; then
    cp "$TAGLIB_ARCHIVE" "$candidate" || fail "cannot read TAGLIB_ARCHIVE=$TAGLIB_ARCHIVE"
    accept "$candidate" || fail "TAGLIB_ARCHIVE=$TAGLIB_ARCHIVE is not TagLib $version (its SHA-256 differs)"
elif ! download; then
    fail "TagLib $version could not be had from any package mirror of this machine.
  Get its source archive by other means (SHA-256 $sum)
  and set TAGLIB_ARCHIVE to it, or put it there as $folder/$name"
fi
echo "$folder/$name"
