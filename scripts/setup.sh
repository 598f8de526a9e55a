# Sourced by ./run and ./test. Defines install_missing_packages, which makes sure that the Debian
# packages of a purpose are installed: "run" for the programs alone, "test" for everything.
# Asks only the local package database when nothing is missing.

packages_for() {
    local run=(g++ cmake ninja-build pkg-config nlohmann-json3-dev libsodium-dev
        qt6-base-dev qt6-declarative-dev libgl1-mesa-dev libqt6svg6
        qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
        qml6-module-qtquick
        qml6-module-qtquick-controls qml6-module-qtquick-templates qml6-module-qtquick-window
        qml6-module-qtquick-layouts qml6-module-qtquick-dialogs qml6-module-qt-labs-settings
        qml6-module-qt-labs-folderlistmodel qml6-module-qt5compat-graphicaleffects)
    local test=(libgtest-dev libgmock-dev libbenchmark-dev clang-format-14
        xvfb xauth libgl1-mesa-dri qml6-module-qttest qt6-declarative-dev-tools)
    case $1 in
        run) printf '%s\n' "${run[@]}" ;;
        test) printf '%s\n' "${run[@]}" "${test[@]}" ;;
        *)
            echo "setup: no such purpose: $1" >&2
            return 1
            ;;
    esac
}

is_installed() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

install_missing_packages() {
    local names package missing=() privilege=()
    names=$(packages_for "$1")
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This is no Debian system, so nothing is installed. Needed, by their Debian names:" >&2
        echo "  ${names//$'\n'/ }" >&2
        return 0
    fi
    for package in $names; do
        is_installed "$package" || missing+=("$package")
    done
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and installing them needs root or sudo:" >&2
            echo "  apt-get install ${missing[*]}" >&2
            return 1
        fi
        privilege=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${privilege[@]}" apt-get update
    "${privilege[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --no-install-recommends "${missing[@]}"
}
