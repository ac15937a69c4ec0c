#!/usr/bin/env bash
# Checks that each piece of C code quoted in a page stands in a source file, line after line;
# indentation does not count.
# usage: quoted_code_test.sh PAGE SOURCE...
set -euo pipefail
page=$1
sources=$(cat "${@:2}" | sed 's/^ *//')
failed=0
quotes=0
quote=
inside=false
while IFS= read -r line; do
  case $line in
  '```c') inside=true quote= ;;
  '```')
    if $inside; then
      quotes=$((quotes + 1))
      if [[ $'\n'$sources$'\n' != *"$quote"$'\n'* ]]; then
        printf 'FAILED: %s quotes what is not in the sources:%s\n' "$page" "$quote"
        failed=1
      fi
    fi
    inside=false
    ;;
  *) if $inside; then quote+=$'\n'$(sed 's/^ *//' <<<"$line"); fi ;;
  esac
done <"$page"
[ $quotes -gt 0 ] || { echo "FAILED: $page quotes nothing"; failed=1; }
exit $failed
