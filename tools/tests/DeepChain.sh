#!/bin/sh
# A model that is one chain of a million processes, each the parent of the
# next, through the tool under an address-space limit (ulimit -v) and a
# stack of 1 MiB (ulimit -s): a run that walked the chain recursively, or
# made the chain's tree text (a terabyte: the lines are indented by their
# depth), fails here.
#
#   DeepChain.sh TOOL WORK_DIR generate
#   DeepChain.sh TOOL WORK_DIR compare|dump|show LIMIT_MB
#
# "generate" writes WORK_DIR/old.json (the chain "PRC-0000001" ...
# "PRC-1000000", named "Step <n>", backup names as the names, except that
# the second one's backup name is "Renamed step") and WORK_DIR/new.json
# (the same chain with the second one named "Renamed step" and one process
# appended at the end). The other modes run the tool on them with a limit
# of LIMIT_MB megabytes of address space and check its exit status,
# standard output and standard error byte for byte. The test registration
# starts it with the library's switches unset.
set -u
tool=$1
work=$2
mode=$3
count=1000000

fail() {
  echo "DeepChain.sh $mode: $*" >&2
  exit 1
}

if [ "$mode" = generate ]; then
  rm -rf "$work" && mkdir -p "$work" || fail "cannot make $work"
  awk -v n="$count" -v old="$work/old.json" -v new="$work/new.json" 'BEGIN {
    for (state = 0; state < 2; state++) {
      out = state ? new : old
      last = state ? n + 1 : n
      printf "{\"objects\": [\n" > out
      for (i = 1; i <= last; i++) {
        name = (state && i == 2) ? "Renamed step" : "Step " i
        backup = (i == 2) ? "Renamed step" : "Step " i
        printf "  {\"id\": \"PRC-%07d\", \"name\": \"%s\", \"backupName\": \"%s\"}%s\n",
          i, name, backup, (i < last ? "," : "") > out
      }
      printf "], \"relations\": [\n" > out
      for (i = 1; i < last; i++)
        printf "  {\"id\": \"R-%07d\", \"source\": \"PRC-%07d\", \"target\": \"PRC-%07d\"}%s\n",
          i, i, i + 1, (i < last - 1 ? "," : "") > out
      printf "]}\n" > out
      close(out)
    }
  }' || fail "awk failed"
  exit 0
fi

limit_mb=$4
[ -f "$work/old.json" ] || fail "$work/old.json is missing: run the generate step first"
run_dir="$work/$mode"
rm -rf "$run_dir" && mkdir -p "$run_dir" || fail "cannot make $run_dir"
cd "$run_dir" || fail "cannot enter $run_dir"
TEMP=$run_dir
export TEMP

# run EXPECTED_STATUS ARGUMENTS...: the tool in the limits, in this
# directory (the model files as ../old.json and ../new.json).
run() {
  expected_status=$1
  shift
  (
    ulimit -v $((limit_mb * 1024)) || exit 125
    ulimit -s 1024 || exit 125
    exec "$tool" "$@"
  ) > stdout.txt 2> stderr.txt
  status=$?
  [ "$status" -eq "$expected_status" ] ||
    fail "exit status $status, expected $expected_status; standard error: $(cat stderr.txt)"
}

# expect FILE TEXT: FILE holds exactly TEXT (printf format).
expect() {
  # shellcheck disable=SC2059
  printf "$2" > expected.txt
  cmp -s "$1" expected.txt ||
    fail "$1 differs: [$(cat "$1")], expected [$(cat expected.txt)]"
}

refusal_reason='its tree has 1000000 lines for 1000000 vertices (one per vertex and path from a root), up to 999999 levels deep, and their indentation alone takes 1000001999997 bytes'
case "$mode" in
  compare)
    run 1 compare --check-names --roots ../old.json ../new.json
    expect stdout.txt 'Vertices to add (1):\n  PRC-1000001\nVertices to remove (0):\nVertices to move (0):\nVertices to rename (1):\n  PRC-0000002\nEdges to add (1):\n  R-1000000\nEdges to remove (0):\nRoot vertices to add (0):\nRoot edges to add (1):\n  R-1000000\nRoot vertices to remove (0):\nRoot edges to remove (0):\nOutcome: different\n'
    expect stderr.txt ''
    ;;
  dump)
    printf 'previous\n' > result.txt
    run 2 dump ../old.json -o result.txt
    expect stdout.txt ''
    expect stderr.txt "vekzol: ../old.json: the dump would take 1000013888954 bytes, more than --max-output allows (1073741824): $refusal_reason\n"
    expect result.txt 'previous\n'
    [ ! -e result.txt.vekzol-tmp ] || fail "result.txt.vekzol-tmp was left behind"
    # However high the option, a CString cannot hold the text.
    run 2 dump --max-output 18446744073709551615 ../old.json
    expect stdout.txt ''
    expect stderr.txt "vekzol: ../old.json: the dump would take 1000013888954 bytes, more than the 2147483647 bytes a text of the library can hold: $refusal_reason\n"
    ;;
  show)
    run 2 show ../old.json
    expect stdout.txt ''
    expect stderr.txt "vekzol: ../old.json: the listing would take 1000193333424 bytes, more than --max-output allows (1073741824): $refusal_reason\n"
    ;;
  *)
    fail "unknown mode"
    ;;
esac
exit 0
