#!/usr/bin/env bash
# Checks the members of one file as an array job of Slurm: each task takes every n-th member and writes a part of its own.
#
#     sbatch --array=1-8 check_array.sh MEMBERS.csv RESULTS_FOLDER [OPTIONS OF ksteel check]
#     cat RESULTS_FOLDER/part-*.jsonl
#
# A part stands there whole or not at all, so that tasks that are missing can be started again by their numbers. Lines count within the members of
# the task: let titles say which member it is. A member that fails is a result; the task fails where a member is refused, and says so in its log.
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
[ "$task" -ge 1 ] && [ "$task" -le "$tasks" ] || stop "got task $task of $tasks: number the tasks from 1, as --array=1-$tasks does"
[ -r "$members" ] || stop "cannot read $members"

mkdir -p "$results"
part="$results/part-$(printf '%05d' "$task").jsonl"
begun=$(mktemp "$part.XXXXXX")
trap 'rm -f "$begun"' EXIT

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
chmod 644 "$begun"
mv "$begun" "$part"
[ "$status" -ne 1 ] || status=0
exit "$status"
