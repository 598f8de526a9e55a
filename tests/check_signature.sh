#!/usr/bin/env bash
# check_signature.sh PROGRAM THREADS: fails unless the program's signature is the one on record.
set -euo pipefail

expected=$(<"$(dirname "${BASH_SOURCE[0]}")/signature.txt")
actual=$("$1" --signature --threads "$2")
if [[ $actual != "$expected" ]]; then
    echo "signature at $2 threads: $actual" >&2
    echo "on record: $expected" >&2
    exit 1
fi
