#!/usr/bin/env bash
# Completes command lines of rtrange as bash does, with the completion script of the package.
# usage: completion_test.sh SCRIPT RTRANGE
set -euo pipefail
script=$1
program=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
mkdir runs
touch run.pcap "second run.pcapng" notes.txt runs/other.pcap
set +eu # for which bash-completion is not made
# shellcheck source=/dev/null
source /usr/share/bash-completion/bash_completion
# shellcheck source=/dev/null
source "$script"
failed=0

# Words of the command line, of which the last is being typed; then, after "=>", what is offered, in
# any order. With "..." at the end, more may be offered.
expect() {
  local words=() expected offered more=no
  while [ "$1" != "=>" ]; do words+=("$1") && shift; done
  shift
  if [ "${*: -1}" = ... ]; then
    more=yes
    set -- "${@:1:$#-1}"
  fi
  COMP_WORDS=(rtrange "${words[@]}") COMP_CWORD=${#words[@]} COMPREPLY=()
  _rtrange "$program" "${words[-1]}" rtrange
  expected=$(printf '%s\n' "$@" | sort)
  offered=$(printf '%s\n' "${COMPREPLY[@]}" | sort)
  [ $more = yes ] && offered=$(comm -12 <(echo "$expected") <(echo "$offered"))
  if [ "$expected" != "$offered" ]; then
    printf 'FAILED: rtrange %s\nexpected:\n%s\noffered:\n%s\n' "${words[*]}" "$expected" "$offered"
    failed=1
  fi
}

expect "" "=>" decode report simulate fields info ...
expect si "=>" simulate
expect --v "=>" --version
expect decode "" "=>" run.pcap "second run.pcapng" runs
expect decode runs/ "=>" runs/other.pcap
expect decode run.pcap s "=>" "second run.pcapng"
expect report run.pcap --samp "=>" ""
expect decode --samp "=>" --samples
expect decode --overwrite - "=>" -h --help -o --output --as --fields ...
expect decode --overwrite --ov "=>" ""
expect decode --as "" "=>" csv hdf5 ...
expect decode --as h "=>" hdf5
expect decode --as = h "=>" hdf5
expect decode --as = "=>" csv hdf5 ...
expect report run.pcap --view "" "=>" measured record
expect decode --format zel.e "=>" zel.eth.rtrange
expect simulate new.pcap --scenario "" "=>" following oncoming crossing
expect decode run.pcap -o n "=>" notes.txt
expect decode -i eth0 s "=>" "second run.pcapng"
expect info n "=>" notes.txt
expect fields --c "" "=>" ""
# Fields of the records and of the view measured, of which "gps_time_us" is in the latter only.
expect decode --fields position_mo "=>" position_mode
expect decode --fields gps_time "=>" gps_time_us gps_time_valid
expect decode --fields heading,curv "=>" heading,curvature
expect decode --fields time_s "=>" ""
expect report --units r "=>" rcom
expect report --units target1,hunter,t "=>" target1,hunter,target{2,3,4}
exit $failed
