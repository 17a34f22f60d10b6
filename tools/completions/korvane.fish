# Completions of korvane for fish.
set -l commands open explore parse replay
set -l without "not __fish_seen_subcommand_from $commands"
complete -c korvane -n $without -f -a open -d 'Start Calc with the add-in'
complete -c korvane -n $without -f -a explore -d 'Explore cells of a workbook'
complete -c korvane -n $without -f -a parse -d 'Take formula texts apart'
complete -c korvane -n $without -f -a replay -d 'Run a recorded session again'
complete -c korvane -l help -d 'Tell of the commands and options'
complete -c korvane -n $without -l version -d 'Tell the version'

set -l both '__fish_seen_subcommand_from explore parse'
complete -c korvane -n $both -l functions -d 'Show every function call'
complete -c korvane -n $both -l no-functions -d 'Show references and names only'
complete -c korvane -n $both -l json -d 'One JSON object per line'

set -l explore '__fish_seen_subcommand_from explore'
complete -c korvane -n $explore -l precise -d 'Evaluate function parts in the cell itself'
complete -c korvane -n $explore -l script -r -d 'A scripted document'
complete -c korvane -n $explore -l all -d 'Every formula cell'
complete -c korvane -n $explore -l window -d 'One cell in a window'
complete -c korvane -n $explore -l record -r -d 'Record what happens in the window'
complete -c korvane -n $explore -l cell-timeout -x -d 'Seconds that one cell may take'

complete -c korvane -n '__fish_seen_subcommand_from parse' -f -l count -d 'Only totals'
