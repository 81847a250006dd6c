#!/usr/bin/env bash
# Installs the Debian packages that building, testing and packaging LZRB_Core need and that
# this machine lacks. Runs apt-get through sudo unless it is already root. Extra package names
# given as arguments are installed too (continuous integration adds its own).
set -euo pipefail

packages=(
    cmake ninja-build g++ clang libclang-rt-14-dev pkg-config # tool chain, sanitizers, fuzzing
    libgtest-dev libgmock-dev                                 # unit tests
    libbenchmark-dev zlib1g-dev libisal-dev                   # benchmarks and their baselines
    libcli11-dev                                              # option parsing of the zrb tool
    dpkg-dev file                                             # Debian package (CPack)
    doxygen                                                   # API reference (docs preset)
    "$@"
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" \
        || missing+=("$package")
done
if [ "${#missing[@]}" -eq 0 ]; then
    exit 0
fi

sudo=()
if [ "$(id -u)" -ne 0 ]; then
    sudo=(sudo)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update
"${sudo[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
