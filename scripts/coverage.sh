#!/usr/bin/env bash
# Builds with Clang's counters and runs the tests. Prints which share of the lines and branches of the plug-in and its glue
# the tests have run, and each line and branch that none has run. Fails below 98 % of the lines or 95 % of the branches.
set -euo pipefail
cd "$(dirname "$0")/.."

# With this, ccache would make file names in the counters relative to another folder.
unset CCACHE_BASEDIR

scripts/install-packages.sh --with-clang --with-test-tools
cmake --preset coverage --log-level=WARNING
cmake --build --preset coverage
rm -rf build/coverage/profiles
ctest --preset coverage

llvm-profdata merge -o build/coverage/all.profdata build/coverage/profiles/*.profraw

# The glue is also linked into its unit tests, and the list of the records' fields into rtrange.
coverage() { # further options of llvm-cov
  # It warns about inline functions that one of these files does not call.
  llvm-cov show build/coverage/bin/zel_rt_range_formatter.so -object build/coverage/tests/plugin_test \
    -object build/coverage/bin/rtrange -instr-profile build/coverage/all.profdata -compilation-dir="$PWD" \
    -show-branches=count "$@" \
    2> >(grep -v 'functions have mismatched data' >&2)
}

coverage -format=html -output-dir=build/coverage/report >/dev/null
coverage -show-instantiations=false | awk -v checkout="$PWD/" '
  BEGIN {
    split("extensibility zel_rt_range_formatter", folders, " ")
    for (i in folders) is_counted[folders[i]]
  }

  # Each instantiation of a template repeats its branches: one is never run when no instantiation runs it.
  function finish_line(  i, outcome) {
    for (i = 1; i <= branch_count; ++i)
      for (outcome = 1; outcome <= 2; ++outcome) {
        ++branches[folder]
        if ((position[i], outcome) in taken) continue
        ++missed_branches[folder]
        list = list sprintf("%s:%s: never %s: %s\n", file, position[i], outcome == 1 ? "true" : "false", text)
      }
    branch_count = 0
    split("", position); split("", known); split("", taken)
  }

  # A file
  /^[^ ].*:$/ {
    finish_line()
    file = substr($0, length(checkout) + 1, length($0) - length(checkout) - 1)
    sub(/^\.\//, "", file)
    folder = file
    sub(/\/.*/, "", folder)
    counts = folder in is_counted
  }
  !counts {next}

  # A line: its number, how often it was run (nothing for a line without code), its text
  /^ *[0-9]+\|/ {
    finish_line()
    split($0, field, "|")
    number = field[1] + 0
    text = $0
    sub(/^[^|]*\|[^|]*\| */, "", text)
    if (field[2] ~ /[0-9]/) ++lines[folder]
    if (field[2] ~ /^ *0$/) {
      ++missed_lines[folder]
      list = list sprintf("%s:%d: %s\n", file, number, text)
    }
  }
  # "Branch (23:9): [True: 5, False: 0]"; one with a constant condition is "[Folded - Ignored]".
  /\| +Branch \([0-9]+:[0-9]+\): \[True: / {
    place = $0
    sub(/.*Branch \(/, "", place)
    sub(/\).*/, "", place)
    if (!(place in known)) {
      known[place]
      position[++branch_count] = place
    }
    if ($0 !~ /True: 0,/) taken[place, 1]
    if ($0 !~ /False: 0\]/) taken[place, 2]
  }

  END {
    finish_line()
    printf "\n%-30s %15s %15s\n", "folder", "lines", "branches"
    for (i = 1; i in folders; ++i) {
      folder = folders[i]
      if (!lines[folder]) {
        print "coverage.sh: llvm-cov shows nothing of " folder > "/dev/stderr"
        exit 1
      }
      of_lines = 100 - 100 * missed_lines[folder] / lines[folder]
      of_branches = 100 - 100 * missed_branches[folder] / branches[folder]
      if (!(of_lines >= 98 && of_branches >= 95)) too_few = 1
      printf "%-30s %6.2f %% of %4d %6.2f %% of %4d\n", folder, of_lines, lines[folder], of_branches, branches[folder]
    }
    printf "\nNever run:\n%s\n", list
    print "Every line: build/coverage/report/index.html"
    if (too_few) {
      print "coverage.sh: the tests run less than 98 % of the lines or 95 % of the branches" > "/dev/stderr"
      exit 1
    }
  }'
