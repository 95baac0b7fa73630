#!/usr/bin/env bash
# Installs the Debian packages a build needs when they are missing.
# Usage: scripts/deps.sh run|test
set -euo pipefail

run_packages=(cmake ninja-build g++ qt6-base-dev qt6-svg-dev libhowardhinnant-date-dev
              libceres-dev fonts-dejavu-core xvfb xauth)
test_packages=("${run_packages[@]}" libgtest-dev libgmock-dev libbenchmark-dev clang
               libclang-rt-dev clang-format git)

case "${1:-run}" in
    run) wanted=("${run_packages[@]}") ;;
    test) wanted=("${test_packages[@]}") ;;
    *) echo "usage: $0 run|test" >&2; exit 2 ;;
esac

missing=()
for p in "${wanted[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "These Debian packages are missing. Install them as root, then run this again:" >&2
    echo "  apt-get install -y ${missing[*]}" >&2
    exit 1
fi
echo "Installing ${missing[*]} ..."
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
