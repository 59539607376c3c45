# Completion of kvxostrace for fish.

set -l commands info events analyze generate keys render
set -l trace '__fish_seen_subcommand_from info events analyze render'

complete -c kvxostrace -s h -l help -d 'Print help and exit'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version and exit'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -a info -d 'What a trace holds and what was lost'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -a events -d 'List the decoded events'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -a analyze -d 'Run times, waits, system calls'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -a generate -d 'Write a log of a simulated kernel'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -a keys -d 'Keys of the windows'
complete -c kvxostrace -n "not __fish_seen_subcommand_from $commands" -a render -d 'Make a picture of the chart or of a table'

complete -c kvxostrace -n $trace -l cpu -x -d 'Processor to show'
complete -c kvxostrace -n $trace -l res -r -F -d 'Resource file of a log'
complete -c kvxostrace -n $trace -l strict -d 'Exit with 4 where something was lost'
complete -c kvxostrace -n '__fish_seen_subcommand_from info analyze' -l json -d 'Write JSON'
complete -c kvxostrace -n '__fish_seen_subcommand_from events' -l from -x -d 'First event'
complete -c kvxostrace -n '__fish_seen_subcommand_from events' -l count -x -d 'How many events'
complete -c kvxostrace -n '__fish_seen_subcommand_from analyze' -l table -x -a 'run-time rdy-run syscalls all' -d 'Table to show'
complete -c kvxostrace -n '__fish_seen_subcommand_from analyze' -l sort -x -d 'Column to sort by'
complete -c kvxostrace -n '__fish_seen_subcommand_from analyze' -l csv -r -F -d 'Write one table as CSV'
complete -c kvxostrace -n '__fish_seen_subcommand_from analyze render' -l start -x -d 'Start of the range'
complete -c kvxostrace -n '__fish_seen_subcommand_from analyze render' -l end -x -d 'End of the range'
complete -c kvxostrace -n '__fish_seen_subcommand_from render' -l table -x -a 'run-time rdy-run syscalls' -d 'Table instead of the chart'
complete -c kvxostrace -n '__fish_seen_subcommand_from render' -l dpi -x -d 'Pixels an inch'
complete -c kvxostrace -n '__fish_seen_subcommand_from render' -l size -x -d 'Width and height in pixels'
complete -c kvxostrace -n '__fish_seen_subcommand_from render generate' -s o -l output -r -F -d 'File to write'
complete -c kvxostrace -n '__fish_seen_subcommand_from generate' -l events -x -d 'Events to write'
complete -c kvxostrace -n '__fish_seen_subcommand_from generate' -l seed -x -d 'Start of the random numbers'
complete -c kvxostrace -n '__fish_seen_subcommand_from generate keys' -f
complete -c kvxostrace -n '__fish_seen_subcommand_from keys' -l html -d 'Write the page of the help book'
