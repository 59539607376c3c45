# Completion of kvxostrace for bash; works with and without the package bash-completion.

_kvxostrace_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

# The sub-command among the words before the cursor.
_kvxostrace_command() {
    local word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            info | events | analyze | explain | check | compare | export | formats | generate | keys | render) printf %s "$word" && return ;;
        esac
    done
}

_kvxostrace() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command options trace='--cpu --res --calls --descriptions --frequency --strict'
    case $previous in
        --res | --descriptions | --csv | --rules | --junit | -o | --output) _kvxostrace_files "$current" && return ;;
        --table)
            mapfile -t COMPREPLY < <(compgen -W 'run-time rdy-run syscalls timing jobs waits locks errors load all' -- "$current")
            return
            ;;
        --to)
            mapfile -t COMPREPLY < <(compgen -W 'perfetto btf itron csv' -- "$current")
            return
            ;;
        --calls)
            mapfile -t COMPREPLY < <(compgen -W 'espressif segger' -- "$current")
            return
            ;;
        --cpu | --frequency | --from | --count | --start | --end | --sort | --size | --dpi | --events | --seed | \
            --task | --job | --worst | --at | --every | --window | --fail-on | --fail-if) return ;;
    esac

    command=$(_kvxostrace_command)
    case $command in
        info) options="$trace --json" ;;
        events) options="$trace --from --count" ;;
        analyze) options="$trace --table --start --end --sort --csv --json --task --rules --every --window" ;;
        explain) options="$trace --task --job --worst --at --rules --json" ;;
        check) options="$trace --rules --fail-on --junit --json --suggest" ;;
        compare) options="$trace --rules --fail-if --json" ;;
        export) options="$trace --to -o --output --start --end --arrows" ;;
        formats) options=--json ;;
        render) options="$trace -o --output --table --size --dpi --start --end" ;;
        generate) options='--events --seed -o --output' ;;
        keys) options=--html ;;
        *) options=--version ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "-h --help $options" -- "$current")
        return
    fi
    case $command in
        formats | generate | keys) return ;;
    esac
    _kvxostrace_files "$current"
    [ -n "$command" ] && return
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY \
        < <(compgen -W 'info events analyze explain check compare export formats generate keys render' -- "$current")
}

complete -F _kvxostrace kvxostrace
