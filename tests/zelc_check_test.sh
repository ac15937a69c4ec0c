#!/usr/bin/env bash
# Checks that zelc_check reports each fault of a zelc under the rule that it breaks, and that the
# reference zelc keeps all rules.
# usage: zelc_check_test.sh SOURCE_FOLDER ZELC BROKEN_ZELC INCOMPLETE_ZELC [EMULATOR] ZELC_CHECK
set -euo pipefail
source=$1 zelc=$2 broken=$3 incomplete=$4
check=("${@:5}")
failed=0
export ZELC_FAULT=

expect() { # what, expected text, actual text
  if [ "$2" != "$3" ]; then
    printf 'FAILED: %s\nexpected:\n%s\nactual:\n%s\n' "$1" "$2" "$3"
    failed=1
  fi
}

messages=$(mktemp)
trap 'rm "$messages"' EXIT

run() { # library; leaves exit_code, output
  exit_code=0
  output=$("${check[@]}" "$@" 2>"$messages" | tr -d '\r') || exit_code=$?
}

rules_that_are() { # verdict; as one line
  awk -v verdict="$1" '$2 ~ "^" verdict {print $1}' <<<"$output" | xargs
}

run "$zelc"
expect "exit code of the reference zelc" 0 $exit_code
expect "rules that it breaks" "" "$(grep broken <<<"$output" || true)"
checkable=$(rules_that_are kept)
expect "rules with a line each" \
  "$(sed -nE 's/^\| ([AELPS][0-9]+) \|.*/\1/p' "$source/docs/zelc.md")" \
  "$(cut -d ' ' -f 1 <<<"$output")"

expect "functions in zelc.def" \
  "$(sed -nE 's/^ZEL_API .*\b(zel_\w+)\(.*/\1/p' "$source"/include/zel/*.h | sort)" \
  "$(sed '1,/^EXPORTS/d; s/^ *//' "$source/host/zelc/zelc.def")"

export ASAN_OPTIONS=${ASAN_OPTIONS-}:detect_leaks=0 # some faults leave memory behind
shown=
expect_broken() { # rules, library
  run "$2"
  expect "exit code with the fault '$ZELC_FAULT'" 1 $exit_code
  expect "rules that the fault '$ZELC_FAULT' breaks" "$1" "$(rules_that_are broken)"
  expect "lines with the fault '$ZELC_FAULT'" "$lines" "$(wc -l <<<"$output")"
  shown+=" $1"
}

lines=$(wc -l <<<"$output")
expect_broken L1 "$incomplete"
# A fault that leaves some checks without a record or a package makes their rules not checkable.
while read -r ZELC_FAULT rules; do
  expect_broken "$rules" "$broken"
done <<'FAULTS'
no_record E1
returns_success E2
null_target_crashes E3
null_target_succeeds E3
no_code_zero E5
short_texts E6
empty_text_is_null E6
keeps_text E7
null_text_is_empty E8
one_text E9
null_record_crashes E10
no_empty_package P1
no_package P1 A2
dirty_header P2
size_with_header P3 P4
overlap P4
huge_package P5
null_on_failure P5
no_empty_data P6
source_with_data P7
last_byte P8
short_types P10
clears_header P11
clears_data P11
keeps_type P12
destroy_fails P14
null_package_fails P15
null_package_throws P15 A5
foreign_context P17
shared_record S2
percent S3
success_with_record A1
null_error_crashes A2
null_error_fails A2
one_thread A4
FAULTS
for rule in $checkable; do
  [[ " $shown " == *" $rule "* ]] || expect "a fault that breaks it" "one" "none for $rule"
done

ZELC_FAULT=
run "$source/missing.library"
expect "exit code without a library" 2 $exit_code
run "$source/docs/zelc.md"
expect "exit code with another file" 2 $exit_code
run
expect "exit code without arguments" 2 $exit_code
run "$zelc" "$zelc"
expect "exit code with too many arguments" 2 $exit_code
expect "message" "usage: zelc_check LIBRARY" "$(tr -d '\r' <"$messages")"
exit $failed
