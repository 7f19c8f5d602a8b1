# Completion of textmanager in bash: the program itself says what fits.
_textmanager()
{
    local current=${COMP_WORDS[COMP_CWORD]} words=() word line
    [ "$current" != = ] || current=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [ "$word" = = ] || words+=("$word") # bash takes --language=KEY for three words
    done
    COMPREPLY=()
    while IFS= read -r line; do
        case $line in
        '') ;;
        :files | :folders) compopt -o filenames 2>/dev/null ;;&
        :files) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        :folders) mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        *)
            printf -v word %q "${line%%$'\t'*}"
            COMPREPLY+=("$word")
            ;;
        esac
    done < <("${COMP_WORDS[0]}" __complete "${words[@]}" "$current" 2>/dev/null)
}
complete -F _textmanager textmanager
