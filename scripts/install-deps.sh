#!/usr/bin/env bash
# Installs the Debian 12 packages Velloran needs to build, run, test and fuzz.
# Idempotent: packages already present are left alone and apt is not touched.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  libsdl2-dev libglew-dev libglu1-mesa-dev libgl1-mesa-dri libx11-dev
  libbullet-dev libopenal-dev libtinyxml2-dev nlohmann-json3-dev
  libgtest-dev libgmock-dev libfreetype-dev fonts-dejavu-core libpng-dev
  xvfb xauth xdotool imagemagick
  # the schema test of the shipped levels, and designers checking theirs: xmllint.
  libxml2-utils
  # fuzz.sh: clang, and the libFuzzer and sanitizer runtimes, which clang only recommends.
  clang libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all ${#packages[@]} packages present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -q
"${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
