#!/usr/bin/env bash
# Installs the Debian packages needed to build, run and test LinkDeck.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  desktop-file-utils dpkg-dev
  qtbase5-dev qtbase5-dev-tools libqt5svg5-dev
  libbenchmark-dev
  mobile-broadband-provider-info
  python3
  alsa-utils
  xvfb xauth xdotool x11-utils
  weston libgl1-mesa-dri qtwayland5
  clang-format
  ccache
  clang libclang-rt-14-dev
  libmm-glib-dev libglib2.0-dev modemmanager dbus libglib2.0-bin
  python3-dbusmock python3-dbus python3-gi
)

if [ "$(id -u)" -ne 0 ]; then
  SUDO=sudo
else
  SUDO=
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ "${#missing[@]}" -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -q
  $SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
