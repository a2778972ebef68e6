# Sourced: installs Debian packages that are missing.

# need PACKAGE...: returns when all are installed; one line on standard error and exit code 1 otherwise.
need() {
    local missing=() package as_root=
    for package; do
        dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    [ "$(id -u)" -eq 0 ] || as_root=sudo
    local log
    log=$(mktemp)
    local install=($as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y \
        --no-install-recommends -o DPkg::Lock::Timeout=900 "${missing[@]}")
    # lists that were fetched before mostly serve
    if ! { "${install[@]}" || { $as_root apt-get update && "${install[@]}"; }; } >"$log" 2>&1; then
        echo "cannot install: apt-get install ${missing[*]} ($(grep '^E:' "$log" | tail -n 1))" >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}

need_for_build() {
    need g++ cmake ninja-build pkg-config python3 libgtest-dev liblua5.2-dev libocct-foundation-dev \
        libgdk-pixbuf-2.0-dev libcli11-dev nlohmann-json3-dev libfreetype-dev fonts-dejavu-core
}

# What the benchmarks are measured with and beside; nothing else needs it.
need_for_bench() {
    need libbenchmark-dev libboost-dev libcgal-dev libgeos++-dev libocct-modeling-data-dev libsigc++-2.0-dev python3
}

# build PRESET [TARGET...]: configures and builds; the output is shown when something fails.
build() {
    local preset=$1 target targets=()
    shift
    for target; do targets+=(--target "$target"); done
    local log=build/$preset.log
    mkdir -p build
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${targets[@]}"; } >"$log" 2>&1; then
        grep -E -A5 'error|FAILED' "$log" | head -n 60 >&2
        echo "the build of '$preset' failed; its whole log is $log" >&2
        exit 1
    fi
}
