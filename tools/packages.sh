# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test, .ci/run, fuzz/run and bench/run: the Debian packages that they need.

build_packages=(g++ cmake ninja-build qt6-base-dev libfontconfig-dev libsqlite3-dev libstemmer-dev zlib1g-dev)
run_packages=(fonts-dejavu-core libqt6svg6)
test_packages=(poppler-utils strace)
check_packages=(clang-format clang-tidy python3)
sanitizer_packages=(clang libclang-rt-14-dev)
# Documentation that the search is judged with: small packages for each run, the others for .ci/long.
judge_packages=(cppreference-doc-en-html debian-reference-ja git-doc libgtk-3-doc maint-guide-ru postgresql-doc-15
    python-django-doc sqlite3-doc)
judge_more_packages=(debian-handbook gimp-help-de gimp-help-en gimp-help-ru libreoffice-help-en-us openjdk-17-doc
    python3.11-doc rust-doc)
bench_packages=(libbenchmark-dev libxcb-xtest0-dev pkg-config python3 xvfb)

say() { printf '%s\n' "==> $*"; }

# need PACKAGE ...: installs those that are missing; asks apt only when one is.
need() {
    local missing=() package
    for package in "$@"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done
    [[ ${#missing[@]} -eq 0 ]] && return
    local as_root=()
    if [[ $(id -u) -ne 0 ]]; then
        command -v sudo >/dev/null || {
            printf 'Please install these packages first: %s\n' "${missing[*]}" >&2
            exit 1
        }
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# judge PROGRAM SETNAME ...: fails when searches find less well what they should than they did.
judge() {
    local program=$1 sets=$root/build/judge
    shift
    mkdir -p "$sets"
    "$root/tools/search-judge/makesets" "$sets" "$@" || say "Some documentation is not there"
    XDG_CACHE_HOME=$sets/cache XDG_CONFIG_HOME=$sets/config \
        "$root/tools/search-judge/judge" "$program" "$sets" --least "$root/tools/search-judge/score.json"
}

# build PRESET [TARGET ...]: configures once, then builds what changed.
build() {
    local preset=$1 log=$root/build/$1.log
    shift
    mkdir -p "$root/build"
    say "Building ($preset)"
    if [[ ! -f $root/build/$preset/build.ninja ]]; then
        (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
    fi
    (cd "$root" && cmake --build --preset "$preset" ${1:+--target "$@"}) >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
}
