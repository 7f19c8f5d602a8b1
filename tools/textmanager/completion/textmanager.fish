# Completion of textmanager in fish: the program itself says what fits.
function __textmanager_complete
    set -l words (commandline -opc) (commandline -ct)
    for line in ($words[1] __complete $words[2..-1] 2>/dev/null)
        switch $line
            case :files
                __fish_complete_path (commandline -ct)
            case :folders
                __fish_complete_directories (commandline -ct)
            case '*'
                printf '%s\n' $line
        end
    end
end
complete -c textmanager -f -a '(__textmanager_complete)'
