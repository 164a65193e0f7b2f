#!/usr/bin/env bash
# Checks the members of one file as an array job of Slurm: each task takes every n-th member and writes a part of its own.
#
#     sbatch --array=1-8 check_array.sh MEMBERS.csv RESULTS_FOLDER [OPTIONS OF ksteel check]
#     cat RESULTS_FOLDER/part-*.jsonl
#
# A part stands there whole or not at all. Tasks that are missing are started again by their numbers, --array=3,7 with the same folder: its file "job"
# knows into how many parts the members were divided. It also has their checksum and the options, so that parts of different jobs do not mix. Lines count
# within the members of the task: let titles say which member it is. A member that fails is a result; the task fails where a member is refused, and says so
# in its log.
#SBATCH --job-name=ksteel
#SBATCH --ntasks=1
#SBATCH --cpus-per-task=2
set -eu

stop() { printf 'check_array.sh: %s\n' "$*" >&2; exit 3; }

[ $# -ge 2 ] || stop "expected a member file and a folder for the results"
members=$1 results=$2
shift 2
task=${SLURM_ARRAY_TASK_ID:?this is a task of an array job: sbatch --array=1-8 ...}
tasks=${SLURM_ARRAY_TASK_COUNT:?this is a task of an array job: sbatch --array=1-8 ...}
[ -r "$members" ] || stop "cannot read $members"

# What the parts of a folder have in common, in its second line and below.
given() { sha256sum <"$members" | cut -d ' ' -f 1; printf '%q ' "$@"; echo; }
asked=$(given "$@")
require_same() {
    [ "$(tail -n +2 "$results/job")" = "$asked" ] || stop "$results has parts of other members or options: take a new folder"
}

if [ -e "$results/job" ]; then
    require_same
    tasks=$(head -n 1 "$results/job")
else
    [ "${SLURM_ARRAY_TASK_MIN:-1}" -eq 1 ] && [ "${SLURM_ARRAY_TASK_MAX:-$tasks}" -eq "$tasks" ] ||
        stop "got tasks ${SLURM_ARRAY_TASK_MIN:-1} to ${SLURM_ARRAY_TASK_MAX:-$tasks}, $tasks of them: number the tasks of a new folder from 1, as --array=1-8 does"
fi
[ "$task" -ge 1 ] && [ "$task" -le "$tasks" ] || stop "got task $task of $tasks: number the tasks from 1, as --array=1-$tasks does"

mkdir -p "$results"
part="$results/part-$(printf '%05d' "$task").jsonl"
begun=$(mktemp "$part.XXXXXX")
record=$(mktemp "$results/job.XXXXXX")
trap 'rm -f "$begun" "$record"' EXIT

# The members of this task; each ends with its END line.
chosen() {
    awk -v task="$task" -v tasks="$tasks" \
        'i % tasks == task - 1; toupper($0) ~ /^[ \t]*END[ \t\r]*(,.*)?$/ { ++i }' "$members"
}
wanted=$(chosen | awk 'toupper($0) ~ /^[ \t]*END[ \t\r]*(,.*)?$/ { ++n } END { print n + 0 }')

status=0
if [ "$wanted" -gt 0 ] || [ -n "$(chosen | head -c 1)" ]; then
    chosen | ksteel check - --format jsonl --report table --jobs "${SLURM_CPUS_PER_TASK:-1}" "$@" >"$begun" || status=$?
fi
# Every member has its line, refused ones too.
[ "$status" -le 2 ] && [ "$(wc -l <"$begun")" -ge "$wanted" ] || exit "$status"
chmod 644 "$begun" "$record"
# The first part that is done says what the folder holds.
printf '%s\n%s\n' "$tasks" "$asked" >"$record"
mv -n "$record" "$results/job"
[ "$(head -n 1 "$results/job")" -eq "$tasks" ] || stop "$results has parts of a job of another number of tasks: take a new folder"
require_same
mv "$begun" "$part"
[ "$status" -ne 1 ] || status=0
exit "$status"
