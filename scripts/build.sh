#!/usr/bin/env bash
# Configures and builds the project into build/. Extra arguments go to CMake's
# configure step.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build build
