# Shared by the scripts beside it: sourced by them, never run.

set -euo pipefail
export LC_ALL=C.UTF-8
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
SELF=$(basename "$0")

step() { printf '== %s\n' "$*"; }

fail() {
    printf '%s: %s\n' "$SELF" "$*" >&2
    exit 1
}

# Prints the comment at the head of the running script: its help text.
show_help() { awk 'NR > 1 { if (!/^#/) exit; sub(/^# ?/, ""); print }' "$0"; }

# Prints the C and C++ files of the source tree, build trees left out.
source_files() {
    (cd "$ROOT" && find . \( -path ./build -o -path './.*' \) -prune -o -type f \
        \( -name '*.h' -o -name '*.cpp' -o -name '*.c' \) -printf '%P\n' | sort)
}

# Creates a temporary folder that is removed when the script ends, and sets `scratch` to it.
make_scratch() {
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
}

# Reads the options that the checks of built files share: sets build_dir, update and `against`, whose
# default is the first argument.
read_check_options() {
    build_dir=$ROOT/build/dev update=no against=$1
    shift
    while (($#)); do
        case $1 in
            --help) show_help; exit 0 ;;
            --update) update=yes ;;
            --build-dir) build_dir=$(realpath "$2"); shift ;;
            --against) against=$(realpath "$2"); shift ;;
            *) fail "unknown option $1 (see --help)" ;;
        esac
        shift
    done
    [[ -e $build_dir/CMakeCache.txt ]] || fail "$build_dir is no build tree"
}

# Whether the build tree is one for Windows.
is_for_windows() { grep -q '^CMAKE_TOOLCHAIN_FILE:.*mingw-w64' "$build_dir/CMakeCache.txt"; }

# Compares the file LIST with the file ACTUAL, or replaces it by that under --update.
compare_list() {
    if [[ $update == yes ]]; then
        mkdir -p "$(dirname "$1")"
        cp "$2" "$1"
        echo "updated $1"
    else
        diff -u --label "kept: $1" --label built "$1" "$2" ||
            fail "$1 differs from what is built; if the change is meant, run it again with --update"
    fi
}
