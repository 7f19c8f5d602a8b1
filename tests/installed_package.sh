#!/usr/bin/env bash
# Installs the library, once as it was built and once on a device's own platform, and builds and runs
# the smallest client against each: with CMake, and with pkg-config alone. Of the add-ons it installs those
# that were built, and checks that a client is told of one that was not.
#
# Usage: installed_package.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source=$(realpath "$1")
build=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cache() { # VARIABLE
    sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"
}
qt=$(cache TEXTMANAGER_QT_VERSION)
package=TextManagerLibrary${qt#5} # as all names of Qt 6 end in 6
has_programs=$(cache TEXTMANAGER_INSTALL_PROGRAMS)
if [ -n "$(cache CMAKE_TOOLCHAIN_FILE)" ]; then
    echo "installed_package: skipped: built for another machine, and its clients would be built for this one"
    exit 77
fi
named_for_6='TextManagerLibrary6|libTextManager[A-Za-z]+6\.so|/qt6/' # so that two builds share a prefix

fail() {
    echo "installed_package: $1" >&2
    exit 1
}

configure_and_build() { # SOURCE BUILD [OPTION...]
    local from=$1 to=$2
    shift 2
    cmake -S "$from" -B "$to" -G Ninja -Wno-dev -DCMAKE_BUILD_TYPE=Debug "-DTEXTMANAGER=$package" \
        "$@" >"$to.log" &&
        cmake --build "$to" >>"$to.log" || {
        cat "$to.log" >&2
        fail "cannot build $from"
    }
}

# Languages with the extension that the platform asks for; the text names the platform.
write_language() { # EXTENSION
    mkdir -p "$work/$1"
    printf '{"Content": {"Menu": {"text": "read from .%s", "comment": ""}}}' "$1" >"$work/$1/de_DE.$1"
    printf '{"Content": {"Menu": {"childs": {"Save": {"text": "Save", "comment": ""}}}}}' >"$work/$1/en_US.$1"
}

check_client() { # NAME EXTENSION PREFIX...
    local name=$1 extension=$2 prefixes
    shift 2
    prefixes=$(IFS=';' && echo "$*")
    write_language "$extension"

    configure_and_build "$source/examples/consumer" "$work/$name-cmake" "-DCMAKE_PREFIX_PATH=$prefixes" \
        "-DLANGUAGES=$work/$extension"
    ! sed s/Menu::Save/Menu::Svae/ "$source/examples/consumer/main.cpp" | c++ -std=c++17 -fsyntax-only -fPIC -x c++ - \
        -I "$work/$name-cmake/consumer_keys" -I "$1/include/$package" $(pkg-config --cflags "Qt${qt}Core") \
        2>"$work/$name-misspelt" || fail "a misspelt URL compiles"
    grep -q "Svae.* is not a member of .*Menu" "$work/$name-misspelt" || fail "$(cat "$work/$name-misspelt")"
    mkdir "$work/$name-pkg-config"
    PATH=$1/bin:$PATH textmanager keys "$work/$extension" --header "$work/$name-pkg-config/TextKeys.h" >/dev/null
    # shellcheck disable=SC2046 # words are meant
    PKG_CONFIG_PATH=$(echo "$1"/lib*/pkgconfig "$1"/lib/*/pkgconfig | tr ' ' ':') \
        sh -c 'c++ "$1" -o "$2" -I "$(dirname "$2")" $(pkg-config --cflags --libs "$3") \
            -Wl,-rpath,$(pkg-config --variable=libdir "$3")' \
        sh "$source/examples/consumer/main.cpp" "$work/$name-pkg-config/consumer" "$package"

    for client in "$work/$name-cmake/consumer" "$work/$name-pkg-config/consumer"; do
        text=$("$client" "$work/$extension/" de_DE Menu) || fail "$client failed"
        [ "$text" = "read from .$extension" ] || fail "$client printed '$text'"
        [ "$("$client" "$work/$extension/" de_DE)" = Save ] || fail "$client does not know its key"
    done
}

use_program_of() { # BUILD; where none is installed
    [ "$has_programs" = ON ] || PATH=$1/tools/textmanager:$PATH
}

# A header that a client cannot include alone, or a symbol that is none of an exported class.
check_interface() { # PREFIX LIBRARY FOLDER; the folder of its headers, in that of the library
    local top=$1/include/$package library symbols
    local headers=$top/$3
    for header in "$headers"/*.h; do
        echo "#include <$(basename "$header")>" | c++ -std=c++17 -fsyntax-only -fPIC -x c++ - \
            -I "$headers" -I "$top" -I "$top/platform" $(pkg-config --cflags "Qt${qt}Core") ||
            fail "$(basename "$header") cannot be included alone"
    done
    library=$(find "$1" -name "$2${qt#5}.so")
    # Not what compiler and linker put into every library: types of std and of functions, and the ends of sections.
    symbols=$(nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f3- |
        grep -vE '^(typeinfo (name )?for )?std::|^typeinfo (name )?for .*[*] ?\(|^(__bss_start|_edata|_end)$' |
        sed -E 's/^(vtable|typeinfo|typeinfo name) for //; s/::.*//; s/\(.*//; s/@.*//' | sort -u)
    for symbol in $symbols; do
        [ -e "$headers/$symbol.h" ] || fail "'$symbol' is exported, but has no public header"
    done
}

cmake --install "$build" --prefix "$work/reference" >/dev/null
check_interface "$work/reference" libTextManagerLibrary .
find "$work/reference" ! -type d -printf '%P\n' >"$work/files"
[ "$has_programs" = ON ] || ! grep -vE "$named_for_6" "$work/files" || fail "for two Qts there is one name"
[ "$qt" = 6 ] || ! grep -E "$named_for_6" "$work/files" || fail "a file of Qt 5 has the name of one for Qt 6"
for file in man/man1/{textmanager,device-simulator}.1 bash-completion/completions/textmanager \
    zsh/site-functions/_textmanager fish/vendor_completions.d/textmanager.fish; do
    [ "$has_programs" = OFF ] || [ -s "$work/reference/share/$file" ] || fail "share/$file is not installed"
done
use_program_of "$build"
check_client reference json "$work/reference"

if [ -d "$work/reference/include/$package/messages" ]; then
    check_interface "$work/reference" libTextManagerMessages messages
    configure_and_build "$source/examples/messages" "$work/messages" "-DCMAKE_PREFIX_PATH=$work/reference"
    mkdir "$work/texts"
    printf '{"Content": {"Due": {"text": "{days, plural, one {in einem Tag} other {in # Tagen}}", "comment": ""}}}' \
        >"$work/texts/de_DE.json"
    text=$("$work/messages/messages" "$work/texts/" de_DE Due days=1250)
    [ "$text" = "in 1.250 Tagen" ] || fail "the message is '$text'"
fi

if [ -d "$work/reference/include/$package/quick" ]; then
    check_interface "$work/reference" libTextManagerQuick quick
    configure_and_build "$source/examples/live-text" "$work/live-text" "-DCMAKE_PREFIX_PATH=$work/reference"
    [ -n "$(find "$work/reference" -path '*/qml/TextManager/plugins.qmltypes' -size +0)" ] ||
        fail "editors do not find the types of the QML module"
fi

configure_and_build "$source/examples/device-platform" "$work/device-build" \
    "-DCMAKE_INSTALL_PREFIX=$work/device" "-DQT_VERSION=$qt"
cmake --install "$work/device-build" >/dev/null
configure_and_build "$source" "$work/library-build" "-DCMAKE_PREFIX_PATH=$work/device" \
    -DTEXTMANAGER_PLATFORM_PACKAGE=DevicePlatform -DBUILD_TESTING=OFF \
    -DCMAKE_INSTALL_RPATH_USE_LINK_PATH=ON "-DTEXTMANAGER_QT_VERSION=$qt" "-DTEXTMANAGER_INSTALL_PROGRAMS=$has_programs" \
    -DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON "-DCMAKE_DISABLE_FIND_PACKAGE_Qt${qt}Quick=ON"
cmake --install "$work/library-build" --prefix "$work/library" >/dev/null
[ -z "$(find "$work/library" -ipath '*platform*')" ] || fail "the reference platform was installed"
use_program_of "$work/library-build"
check_client device lang "$work/library" "$work/device"
check_missing() { # ADDON EXAMPLE
    ! cmake -S "$source/examples/$2" -B "$work/no-$1" "-DTEXTMANAGER=$package" "-DCMAKE_PREFIX_PATH=$work/library;$work/device" \
        >/dev/null 2>"$work/no-$1.log" || fail "the add-on $1 was found, which was not built"
    grep -q "was built without its add-on $1" "$work/no-$1.log" || fail "no word of the missing add-on $1"
}
check_missing Messages messages
check_missing Quick live-text
