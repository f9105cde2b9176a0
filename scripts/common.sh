# What run, test and bench share: missing packages, the build, a screen.

# Installs what packages.txt names and the machine lacks; stops, naming it, where it may not.
need_packages() {
    local missing=() name
    while read -r name _; do
        [[ -z $name || $name == \#* ]] && continue
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
    done < packages.txt
    ((${#missing[@]})) || return 0
    local root=()
    if ((EUID != 0)); then
        if ! sudo -n true 2>/dev/null; then
            echo "Missing packages, and no right to install them: ${missing[*]}" >&2
            exit 1
        fi
        root=(sudo -n)
    fi
    echo "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${root[@]}" apt-get update &&
           "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        echo "Could not install: ${missing[*]}" >&2
        exit 1
    fi
    rm -f "$log"
}

# build PRESET TARGET...: quiet unless it fails.
build() {
    local preset=$1 log
    shift
    log=$(mktemp)
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" -j "${JOBS:-2}" --target "$@"; } >"$log" 2>&1; then
        grep -E 'error:|CMake Error|undefined reference|FAILED:' -A 8 "$log" | head -n 60 >&2
        echo "The build failed; all of it is in $log" >&2
        exit 1
    fi
    rm -f "$log"
}

has_screen() { [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; }

# Runs a program on a virtual screen of its own, with a window manager: windows take the keys only
# where somebody hands them out.
on_virtual_screen() {
    : "${XDG_RUNTIME_DIR:=$(mktemp -d)}"
    export XDG_RUNTIME_DIR
    env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb \
        xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" \
        bash -c 'openbox >/dev/null 2>&1 & sleep 0.5; "$@"; status=$?; kill %1; exit $status' run "$@"
}
