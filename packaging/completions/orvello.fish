# Completion of orvello's commands and, after goto, of the indexes and labels of the Spaces.
function __orvello_spaces
    orvello dump 2>/dev/null | sed -nE '/^ *"(index|tag)" :/{s/^[^:]*: "?//;s/"?,?$//;s/\\(.)/\1/g;p}'
end

complete -c orvello -f
complete -c orvello -n __fish_use_subcommand -a dump -d 'Print the Spaces and their tags as JSON'
complete -c orvello -n __fish_use_subcommand -a goto -d 'Go to a Space by its index, identifier or label'
complete -c orvello -n __fish_use_subcommand -a windows -d 'Print the windows of all Spaces as JSON'
complete -c orvello -n '__fish_seen_subcommand_from goto' -a '(__orvello_spaces)'
