# Completion of corvane for fish.

function __corvane_complete
    set -l words (commandline -opc)
    set -l typed (commandline -ct | string trim --left --chars '"\'' | string unescape)
    for candidate in (command corvane complete -- $words[2..] "$typed" 2>/dev/null)
        switch $candidate
            case ':files'
                __fish_complete_path "$typed"
            case ':directories'
                __fish_complete_directories "$typed" ''
            case '*'
                echo $candidate
        end
    end
end

complete -c corvane -f -a '(__corvane_complete)'
