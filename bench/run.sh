#!/bin/sh
# Prints how the pass stands against the floor (a bare loop that reads, parses, prints and writes the same file), on 50 MB of 20 channels,
# unwrapped and wrapped, of 300 and of 3, how time grows with what files hold, then the micro benchmarks. Usage: bench/run.sh BUILD_FOLDER [MEGABYTES]
set -eu
build=$1
size=${2:-50}
folder=$(mktemp -d "${TMPDIR:-/tmp}/welvane-bench.XXXXXX")
trap 'rm -rf "$folder"' EXIT INT TERM
"$build/bin/welvane_make_las" "$folder/plain.las" "$size" 20
"$build/bin/welvane_make_las" "$folder/wrapped.las" "$size" 20 wrapped
"$build/bin/welvane_make_las" "$folder/wide.las" "$size" 300
"$build/bin/welvane_make_las" "$folder/narrow.las" "$size" 3
half=$(awk '/^STEP/ { print $3 / 2; exit }' "$folder/plain.las")
ratio() {
    label=$1
    input=$2
    shift 2
    printf '%-42s ' "$label"
    "$build/bin/welvane_ratio" 7 "$build/bin/welvane_floor" "$input" "$folder/floor.out" -- "$@"
}
echo "The pass against the floor, $size MB, 20 channels:"
ratio "headless line, unwrapped" "$folder/plain.las" "$build/welvane" "/File1=$folder/plain.las" "/Output=$folder/out.las"
ratio "as laid down, one thread" "$folder/plain.las" "$build/welvane" run "$folder/plain.las" --rules as-laid-down -o "$folder/out.las" --force --yes --quiet --jobs 1
ratio "verb run, unwrapped" "$folder/plain.las" "$build/welvane" run "$folder/plain.las" -o "$folder/out.las" --force --yes --quiet
ratio "headless line, unwrapped in, wrapped out" "$folder/plain.las" "$build/welvane" "/File1=$folder/plain.las" "/Output=$folder/out.las"
ratio "headless line, wrapped in and out" "$folder/wrapped.las" "$build/welvane" "/File1=$folder/wrapped.las" "/Output=$folder/out.las"
ratio "headless line, 300 channels" "$folder/wide.las" "$build/welvane" "/File1=$folder/wide.las" "/Output=$folder/out.las"
ratio "headless line, 3 channels" "$folder/narrow.las" "$build/welvane" "/File1=$folder/narrow.las" "/Output=$folder/out.las"
ratio "step halved, as laid down" "$folder/plain.las" "$build/welvane" run "$folder/plain.las" --rules as-laid-down --step "$half" -o "$folder/out.las" --force --yes --quiet
ratio "five functions, as laid down" "$folder/plain.las" "$build/welvane" run "$folder/plain.las" --rules as-laid-down -o "$folder/out.las" --force --yes --quiet \
    --curve "P1.V/V : | FUN=BULKDEN2PORO,RHOB,2.65,1.0" --curve "P2.V/V : | FUN=BULKDEN2PORO,RHOB,2.68,1.0" --curve "P3.V/V : | FUN=BULKDEN2PORO,RHOB,2.70,1.0" \
    --curve "P4.V/V : | FUN=BULKDEN2PORO,RHOB,2.71,1.0" --curve "P5.V/V : | FUN=BULKDEN2PORO,RHOB,2.75,1.0"
ratio "repair --rebuild" "$folder/plain.las" "$build/welvane" repair "$folder/plain.las" --rebuild -o "$folder/out.las" --force --quiet
ratio "verb run, one thread" "$folder/plain.las" "$build/welvane" run "$folder/plain.las" -o "$folder/out.las" --force --yes --quiet --jobs 1
echo "Reading verbs against the same floor:"
ratio "stats" "$folder/plain.las" "$build/welvane" stats "$folder/plain.las" --quiet
ratio "list" "$folder/plain.las" "$build/welvane" list "$folder/plain.las" --quiet
echo "How processor time grows with what files hold:"
"$build/bin/welvane_growth" "$build/welvane" "$folder"
for program in "$build"/bin/*_bench; do
    [ -x "$program" ] && "$program" --benchmark_min_time=0.2
done
