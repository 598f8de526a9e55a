#!/usr/bin/env bash
# Fails with the places where a C++ file of the project is not as clang-format leaves it.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
mapfile -d '' files < <(find . -mindepth 1 \( -name '.*' -o -path ./build \) -prune -o \
    \( -name '*.h' -o -name '*.cpp' \) -type f -print0)
if ((${#files[@]} == 0)); then
    echo "no C++ file found" >&2
    exit 1
fi
printf '%s\0' "${files[@]}" |
    xargs -0 -n 8 -P "$(nproc)" clang-format-14 --dry-run -Werror --style=file
