#!/usr/bin/env bash
# Makes the man pages of a program and of each of its commands from their --help, with help2man.
# usage: man_pages.sh PROGRAM FOLDER
set -euo pipefail
program=$(realpath "$1")
folder=$2
name=$(basename "$program")
version=$("$program" --version)
mapfile -t commands < <("$program" __complete "" | tail -n +2)
rm -rf "$folder"
mkdir -p "$folder"

# help2man takes the names of pages from the program's.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

make_page() { # name of the page, the program's command, what the page has to say besides
  # Without the first line, which is the name's; examples as a paragraph each.
  printf '#!/bin/sh\n"%s" %s --help | sed "1d; /^Examples:/,\\$ s/^  rtrange/\\n&/"\n' \
    "$program" "$2" >"$work/$1"
  chmod +x "$work/$1"
  local purpose
  # shellcheck disable=SC2086 # the program itself has no command
  purpose=$("$program" $2 --help | head -n 1 | sed 's/\.$//; s/^[A-Z]/\L&/')
  printf '%s' "$3" >"$work/include"
  help2man --no-info --manual="User Commands" --source="$name" --version-string="$version" \
    --name="$purpose" --include="$work/include" "$work/$1" | gzip -9n >"$folder/$1.1.gz"
}

for command in "${commands[@]}"; do
  make_page "$name-$command" "$command" "[EXIT STATUS]
See
.BR $name (1).

[SEE ALSO]
.BR $name (1)
"
done
pages=$(printf ".BR $name-%s (1),\n" "${commands[@]}" | sed '$ s/,$//')
make_page "$name" "" "[SEE ALSO]
$pages
"
