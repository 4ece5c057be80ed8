# Sourced by run, test and bench: installs the Debian packages that a step needs, and only those that are missing.

# need PACKAGE...: has them installed, or says what to install and ends.
need() {
    local missing=() p sudo=''
    for p in "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'ok installed' || missing+=("$p")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" != 0 ]; then
        sudo=$(command -v sudo) || {
            echo "$0: please install as root: apt-get install ${missing[*]}" >&2
            exit 1
        }
    fi
    echo "installing ${missing[*]}" >&2
    local log
    log=$(mktemp)
    if ! { $sudo apt-get update && $sudo env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        echo "$0: apt-get could not install: ${missing[*]}; its whole output is in $log" >&2
        exit 1
    fi
    rm -f "$log"
}

NEED_BUILD="cmake ninja-build g++ nlohmann-json3-dev libcli11-dev"
NEED_TEST="libgtest-dev libgmock-dev python3"
NEED_WINDOWS="g++-mingw-w64-x86-64-posix wine64 wine googletest python3"
NEED_PACKAGE="mmdebstrap dpkg-dev lintian man-db bsdextrautils"
NEED_ZIP="unzip"
NEED_LIVE="qemu-system-x86 ipxe-qemu seabios cpio kmod python3 xz-utils"
NEED_COVERAGE="gcovr"
NEED_FUZZ="clang libclang-rt-14-dev"
NEED_LINT="clang-format clang-tidy clang python3"
NEED_BENCH="libbenchmark-dev python3 strace"
