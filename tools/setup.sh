# Sourced by ./run and ./test: installs what is missing on Debian 12, naming it first. Asks nothing.

needed_packages=(g++ cmake ninja-build ccache mold pkg-config qt6-base-dev qt6-svg-dev libqcustomplot-dev libboost-dev libgtest-dev
                 libgmock-dev libbenchmark-dev libcomedi-dev mdbtools-dev poppler-utils fonts-dejavu-core locales)

install_missing() {
    command -v dpkg-query > /dev/null || return 0
    local package missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2> /dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo > /dev/null || { echo "Please install these packages as root."; return 1; }
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
}

# Configures a preset once and builds it; shows the build's output only when something is built or fails.
build_preset() {
    local preset=$1
    shift
    [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" > /dev/null
    cmake --build --preset "$preset" "$@"
}
