# Shared by the scripts that run tests and count what passed: sourced by them, never run.

source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
passed=0

# Prints the count as the last line and ends the script.
end() {
    printf '%d passed, %d failed\n' "$passed" "$1"
    (($1 == 0)) || exit 1
    exit 0
}

# Runs one check, named by its text.
check() {
    step "$1"
    shift
    "$@" || { echo "FAILED: $*" >&2; end 1; }
    passed=$((passed + 1))
}

logged() {
    "$@" >>"$log" 2>&1 || { tail -n 60 "$log" >&2; echo "FAILED: $*" >&2; end 1; }
}

# Configures a preset, builds it and runs its tests, by the build and test presets of the third
# name if there is one; adds the CTest entries to the count.
tests_of() {
    local part=${3:-$1} report=$ROOT/build/$1/tests.xml failed=0
    log=build/$1.log
    mkdir -p build
    : >"$log"
    step "$2: building (build/$1, log in $log)"
    logged cmake --preset "$1"
    logged cmake --build --preset "$part"
    step "$2: testing"
    rm -f "$report"
    # CTest can also fail without a failed entry, as it does when there is no test.
    ctest --preset "$part" --output-junit "$report" ||
        { failed=$(count failures "$report") && ((failed)) || failed=1; }
    passed=$((passed + $(count tests "$report") - $(count failures "$report") \
                     - $(count disabled "$report") - $(count skipped "$report")))
    ((failed == 0)) || { echo "FAILED: ctest --preset $part" >&2; end "$failed"; }
}

# Builds the library for 64-bit Windows (preset windows, Debian's cross compiler) and checks what must
# hold there, by the build and test presets named by the argument.
windows_tests() {
    tests_of windows "Preset windows" "$1"
    step "Preset dev: building what Windows is compared with"
    logged cmake --preset dev
    logged cmake --build --preset dev --target ktsovu_fixed_set
    check "The same results, texts and bytes as on Linux" scripts/check-same
    check "Exported symbols of the DLLs" scripts/check-symbols --build-dir build/windows
    check "An outside project uses the zip for Windows" scripts/check-consumer --build-dir build/windows
}

# The number that the report of CTest gives for tests, failures, disabled or skipped; one failure
# when CTest left no report.
count() {
    local number
    number=$(sed -n "s/.*\b$1=\"\([0-9]\+\)\".*/\1/p" "$2" 2>/dev/null | head -n 1)
    [[ $number ]] || number=$([[ $1 == failures ]] && echo 1 || echo 0)
    echo "$number"
}
