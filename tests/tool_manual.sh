#!/usr/bin/env bash
# Checks what is made of the commands' descriptions: that every example runs, that the pages of the
# manual are sound, and that the shells complete words.
#
# Usage: tool_manual.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source=$(realpath "$1")
tools=$(realpath "$2")/tools
export PATH="$(realpath "$2")/tests/programs:$tools/textmanager:$tools/device-simulator:$PATH" LC_ALL=C.UTF-8
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$source/examples/languages" "$source/examples/data" "$work"
cp "$source/examples/device/device.json" "$work"
cd "$work"

fail() {
    echo "tool_manual: $1" >&2
    exit 1
}

commands=$(textmanager --help | sed -n '/^Commands:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
[ "$(wc -w <<<"$commands")" -ge 11 ] || fail "--help lists no commands"
for command in $commands; do
    help=$(textmanager help "$command")
    [ "$help" = "$(textmanager "$command" --help)" ] || fail "help $command is not its --help"
    example=$(sed '1,/^Example:/d' <<<"$help")
    [[ $example == *"textmanager $command "* ]] || fail "$command has no example"
    timeout 60 bash -euc "$example" >"$work/output" 2>&1 ||
        fail "the example of $command fails: $example $(cat "$work/output")"
done

for page in "$tools"/{textmanager/textmanager,device-simulator/device-simulator}.1; do
    warnings=$(groff -man -ww -z "$page" 2>&1)
    [ -z "$warnings" ] || fail "$page: $warnings"
    text=$(groff -man -Tascii "$page" | sed 's/\x1b\[[0-9;]*m//g; s/.\x08//g')
    for words in NAME "EXIT STATUS" "--help" "$(basename "$page" .1) - "; do
        [[ $text == *"$words"* ]] || fail "$page does not show $words"
    done
done

# Each shell completes the line and prints the words that it offers, one a line.
complete_in_bash() {
    bash -c 'source "$0"; line=$1; COMP_WORDS=($line); [[ $line != *" " ]] || COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _textmanager; printf "%s\n" "${COMPREPLY[@]}"' \
        "$source/tools/textmanager/completion/textmanager.bash" "$1"
}
complete_in_fish() {
    fish --no-config -c 'source $argv[1]; complete -C $argv[2]' \
        "$source/tools/textmanager/completion/textmanager.fish" "$1" | cut -f1
}
complete_in_zsh() {
    zsh -fc '_call_program() { shift; "$@" }
        _files() { [ "$1" = -/ ] && print -l -- $words[-1]*(/) || print -l -- $words[-1]* }
        compadd() { print -l -- ${(P)@[-1]} }
        run() { words=(${(z)2}); [[ $2 != *" " ]] || words+=(""); CURRENT=$#words; source $1 }
        run "$@"' zsh "$source/tools/textmanager/completion/_textmanager" "$1"
}

while IFS='|' read -r line expected; do
    for shell in bash fish zsh; do
        offered=$("complete_in_$shell" "$line" | sort | tr '\n' ' ')
        [ "${offered//\//}" = "${expected//\//}" ] || # each shell has its own way with folders
            fail "$shell offers '$offered' for '$line'"
    done
done <<'TABLE'
textmanager set-|set-header 
textmanager help lang|languages 
textmanager get --short|--short --short-folder 
textmanager get languages Alarms/Filter/D|Alarms/Filter/Dirty 
textmanager get --language de_DE languages Menu/Sav|Menu/Save 
textmanager get languages Menu/Save --language ar_E|ar_EG 
textmanager remove languages de|de_DE 
textmanager get languages Menu/Save --format |json text 
textmanager translate languages dev|device.json 
textmanager get lan|languages 
TABLE
