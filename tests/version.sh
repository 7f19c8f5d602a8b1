#!/usr/bin/env bash
# Whether the version, CHANGELOG.md, packaging/ and the newest git tag, if there is one, say the same.
#
# Usage: version.sh SOURCE_DIR VERSION
set -euo pipefail
grep -qx "## $2" "$1/CHANGELOG.md" || {
    echo "version: CHANGELOG.md has no heading '## $2'." >&2
    exit 1
}
[ -e "$1/packaging/yocto/textmanagerlibrary_$2.bb" ] &&
    grep -qx "TEXTMANAGERLIBRARY_VERSION = $2" "$1/packaging/buildroot/textmanagerlibrary/textmanagerlibrary.mk" || {
    echo "version: the recipe or the Buildroot package in packaging/ is not that of $2." >&2
    exit 1
}
tag=$(git -C "$1" describe --tags --abbrev=0 --match 'v*' 2>/dev/null || true)
[ "$(printf '%s\n' "${tag#v}" "$2" | sort --version-sort | tail -n 1)" = "$2" ] || {
    echo "version: the tag $tag is newer than the version $2 of CMakeLists.txt." >&2
    exit 1
}
