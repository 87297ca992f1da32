#!/usr/bin/env bash
# Installs what the build needs and this machine lacks (Debian, Ubuntu). Says what it does; uses sudo only when
# not root. Elsewhere it names what to install and lets the build try.
set -euo pipefail

packages=(g++ cmake ninja-build qt6-base-dev libqt6printsupport6 libgtest-dev fonts-dejavu-core)

if ! command -v dpkg-query >/dev/null; then
    echo "setup: not a Debian system; needed: a C++20 compiler, CMake 3.25, Ninja, Qt 6 Widgets, GoogleTest, DejaVu fonts"
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
    [ "$status" = "install ok installed" ] || missing+=("$package")
done
[ "${#missing[@]}" -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "setup: installing ${missing[*]}"
log=$(mktemp)
if ! { "${as_root[@]}" apt-get update -qq &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
     } >"$log" 2>&1; then
    cat "$log"
    rm -f "$log"
    echo "setup: could not install ${missing[*]}"
    exit 1
fi
rm -f "$log"
