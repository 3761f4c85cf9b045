#!/usr/bin/env bash
# Makes sure the Debian packages needed to build and test the library are present.
# As root the missing ones are installed; as another user the one apt-get line that
# would install them is printed and the script fails.
set -euo pipefail

# clang and its runtime libraries (libFuzzer, the sanitizers) build the fuzz harnesses.
packages=(g++ cmake ninja-build pkg-config make zlib1g-dev libpcre2-dev tcl-dev tcl
          libgtest-dev libbenchmark-dev python3 clang libclang-rt-14-dev)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
    echo "Installing missing build dependencies: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
    echo "Missing build dependencies. Install them with:"
    echo "  sudo apt-get install ${missing[*]}"
    exit 1
fi
