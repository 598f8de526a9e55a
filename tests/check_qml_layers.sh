#!/usr/bin/env bash
# Fails with every document that uses a type, and every document or script that imports a script, from a
# folder that is not below its own, and with every one that lies in none of the folders.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/../qml"

# Each folder with those that it stands on: a document uses what lies in its own and in these. Main and
# AppShell, in none, may use all.
own_parts='components theme logic'
layers="
logic
theme           logic
components      theme logic
pages/home      $own_parts
pages/project   $own_parts
pages/results   $own_parts
pages/results/play  pages/results $own_parts
pages/settings  $own_parts
pages/solve     $own_parts
pages           pages/home pages/project pages/results pages/results/play pages/settings pages/solve $own_parts
shell           pages $own_parts
"

# The code of a document, line by line: without strings and comments.
code_of() {
    sed -E 's/"([^"\\]|\\.)*"/""/g; s/`[^`]*`/""/g; s|//.*||' "$1"
}

types_in() {
    find "$1" -maxdepth 1 -name '*.qml' -printf '%f\n' | sed 's/\.qml$//'
}

# Where a script that a file imports lies, as a folder.
folders_of_scripts() {
    sed -nE 's/^ *(import|export) .*"([^"]+\.mjs)".*/\2/p' "$1" | while read -r script; do
        dirname "$(realpath -m --relative-to=. "$(dirname "$1")/$script")"
    done
}

check_layer() {
    local layer=$1 below=" $* " folders other file
    local foreign
    foreign=$(types_in .)$'\n'
    while read -r other _; do
        [[ -z $other || $below == *" $other "* ]] || foreign+=$(types_in "$other")$'\n'
    done <<<"$layers"
    foreign=$(grep . <<<"$foreign" | paste -sd '|')
    while read -r file; do
        code_of "$file" | grep -nwE "$foreign" | sed "s|^|qml/$file:|" || true
        for folders in $(folders_of_scripts "$file"); do
            [[ $below == *" $folders "* ]] || echo "qml/$file: imports from $folders"
        done
    done < <(find "$layer" -maxdepth 1 -name '*.qml' -o -maxdepth 1 -name '*.mjs')
}

complaints=$(
    while read -r layer below; do
        # shellcheck disable=SC2086  # one argument for each folder
        [[ -z $layer ]] || check_layer "$layer" $below
    done <<<"$layers"
    known=$(awk 'NF {print $1}' <<<"$layers")
    find . \( -name '*.qml' -o -name '*.mjs' \) -printf '%P\n' | while read -r file; do
        folder=$(dirname "$file")
        grep -qxF "$folder" <<<"$known" || [[ $file == Main.qml || $file == AppShell.qml ]] ||
            echo "qml/$file: in no layer"
    done
)
if [[ -n $complaints ]]; then
    printf 'what is not below is used here:\n%s\n' "$complaints" >&2
    exit 1
fi
