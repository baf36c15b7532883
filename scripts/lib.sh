# What the scripts share: from the top of the checkout, the packages that they need, and the build.
# A new dependency: its Debian package in one of the lists.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_packages=(g++ cmake ninja-build pkg-config libsafec-dev libxml2-dev nlohmann-json3-dev libcli11-dev libgtest-dev
                libbenchmark-dev)
test_packages=("${build_packages[@]}" libyang2-dev) # a benchmark measures against libyang
check_packages=("${test_packages[@]}" clang-format clang-tidy binutils python3)

say() { printf '\n== %s\n' "$*"; }

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# need PACKAGE...: installs those that are missing.
need() {
    command -v dpkg-query >/dev/null || { echo "$0: not a Debian system; it needs the likes of: $*" >&2; exit 1; }
    local package missing=()
    for package; do is_installed "$package" || missing+=("$package"); done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" != 0 ]; then
        echo "$0: packages are missing, and only root can install them: ${missing[*]}" >&2
        exit 1
    fi
    say "installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -q
    apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    say "building ($preset)"
    cmake --preset "$preset" -Wno-dev >/dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

run_tests() {
    say "testing ($1)"
    ctest --preset "$1" -j "$(nproc)"
}
