#!/usr/bin/env bash
# Builds with Clang's counters and runs the tests. Prints which share of the lines and branches of the plug-in and its glue
# the tests have run, and those that none has run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh --with-clang --with-test-tools
cmake --preset coverage --log-level=WARNING
cmake --build --preset coverage
rm -rf build/coverage/profiles
ctest --preset coverage

profile=build/coverage/all.profdata
llvm-profdata merge -o $profile build/coverage/profiles/*.profraw
coverage() { # command of llvm-cov, its options
  llvm-cov "$1" build/coverage/bin/zel_rt_range_formatter.so -instr-profile $profile "${@:2}" 2>/dev/null
}

printf '\n%-30s %9s %9s\n' folder lines branches
for folder in extensibility zel_rt_range_formatter; do
  coverage report $folder |
    awk -v folder=$folder '$1 == "TOTAL" {printf "%-30s %9s %9s\n", folder, $10, $13}'
done

echo
echo "Never run:"
coverage show -show-branches=count -show-instantiations=false extensibility zel_rt_range_formatter |
  awk -v checkout="$PWD/" '
    /^\// {file = substr($1, length(checkout) + 1)}
    /^ +[0-9]+\| +0\|/ || /Branch.*(True|False): 0[,\]]/ {print file $0}'
coverage show -format=html -output-dir=build/coverage/report -show-branches=count >/dev/null
echo
echo "Every line: build/coverage/report/index.html"
