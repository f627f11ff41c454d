# Bash completion for cabslot, cabslotctl and cabslot-sim; needs nothing but bash.

_cabslot_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# Folders, and files whose names in lower case match the pattern $1.
_cabslot_files() {
    local path
    compopt -o filenames
    COMPREPLY=()
    while IFS= read -r path; do
        # shellcheck disable=SC2053 # a pattern
        if [[ -d $path || ${path,,} == $1 ]]; then COMPREPLY+=("$path"); fi
    done < <(compgen -f -- "$2")
}

# Values of --pedal. Readline takes the part behind a colon as a word of its own.
_cabslot_pedal() {
    if [[ $1 == : || ${COMP_WORDS[COMP_CWORD - 1]} == : ]]; then
        _cabslot_files '*' "${1#:}"
    else
        _cabslot_words 'usb sim unix:' "$1"
        [[ ${COMPREPLY[*]} != unix: ]] || compopt -o nospace
    fi
}

# Completes the value of an option that all programs know; false if it is none.
_cabslot_value() {
    local before=${COMP_WORDS[COMP_CWORD - 1]} two=${COMP_WORDS[COMP_CWORD - 2]:-}
    if [[ $before == --pedal || $two == --pedal && $1 == : || $before == : ]]; then
        _cabslot_pedal "$1"
    elif [[ $before == --trace || $before == --block || $before == --plot || $before == --data ||
        $before == --dry || $before == --out ]]; then
        _cabslot_files '*' "$1"
    else
        return 1
    fi
}

_cabslot() {
    _cabslot_value "$2" && return
    if [[ $2 == -* ]]; then
        _cabslot_words '--pedal --version -h --help' "$2"
    else
        _cabslot_files '*.cabset' "$2"
    fi
}

# Sets `command` to the words of the command, such as "preset show", and `given` to how many
# arguments stand behind it.
_cabslotctl_command() {
    local i word
    command='' given=0
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        case $word in
        --pedal | --trace | --name | --timeout | --confirm-timeout | --block | --plot | --data | --dry | --out | --into | \
            --channel | --low-cut | --high-cut | --fade | --level)
            ((++i))
            while [[ ${COMP_WORDS[i + 1]:-} == : ]]; do ((i += 2)); done
            ;;
        -*) ;;
        *)
            if [[ -z $command ]]; then command=$word
            elif [[ $command == preset || $command == set ]]; then command+=" $word"
            else ((++given)); fi
            ;;
        esac
    done
}

_cabslotctl() {
    local command given options='-h --help --pedal --trace --force'
    _cabslot_value "$2" && return
    case ${COMP_WORDS[COMP_CWORD - 1]} in --timeout | --confirm-timeout | --name) return ;; esac
    _cabslotctl_command
    if [[ $2 == -* ]]; then
        case $command in
        '') options+=' --version' ;;
        list) options+=' --json --timeout' ;;
        load) options+=' --timeout --confirm-timeout --name --prepare' ;;
        clear) options+=' --timeout --confirm-timeout --all' ;;
        undo) options+=' --timeout --confirm-timeout' ;;
        history) options+=' --json' ;;
        inspect) options+=' --json --recursive --compare --block --plot' ;;
        audition) options+=' --dry --out --raw-level' ;;
        prepare) options+=' --into --channel --no-resample --low-cut --high-cut --no-trim --minimum-phase --fade --level --json --plot' ;;
        blend) options+=' --mix --no-align --invert --prepare --channel --no-resample --low-cut --high-cut --no-trim --minimum-phase --fade --level --json --plot' ;;
        doctor | 'preset show' | 'set show') options+=' --json' ;;
        'preset new') options+=' --data' ;;
        'set save') options+=' --timeout' ;;
        'set load') options+=' --timeout --confirm-timeout' ;;
        esac
        _cabslot_words "$options" "$2"
        return
    fi
    case $command:$given in
    :*) _cabslot_words 'list load clear undo history inspect audition prepare blend set preset doctor' "$2" ;;
    preset:*) _cabslot_words 'show verify new export import' "$2" ;;
    set:*) _cabslot_words 'save show load export new' "$2" ;;
    set*:0) _cabslot_files '*.cabset' "$2" ;;
    'set export':1) _cabslot_files '' "$2" ;;
    'set save':* | 'set load':* | 'set new':*[13579]) _cabslot_words '1 2 3 4' "$2" ;;
    'set new':*) _cabslot_files '*.@(wav|bin)' "$2" ;;
    load:*[02468] | clear:* | undo:0 | history:0) _cabslot_words '1 2 3 4' "$2" ;;
    load:* | inspect:* | audition:0 | prepare:* | blend:*) _cabslot_files '*.@(wav|bin)' "$2" ;;
    preset*:0 | 'preset verify':* | preset*port:1) _cabslot_files '*' "$2" ;;
    esac
}

_cabslot_sim() {
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    --socket) _cabslot_files '*' "$2" ;;
    --state)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$2")
        ;;
    --fault)
        _cabslot_words 'corrupt-crc garbage split merge wrong-length flood never-confirm
            confirm-at-once confirm-early usb-stall usb-hold' "$2"
        ;;
    --confirm-delay | --vanish-after) ;;
    *)
        _cabslot_words '--socket --usb --state --confirm-delay --fault --vanish-after
            --second-device --version -h --help' "$2"
        ;;
    esac
}

complete -F _cabslot cabslot
complete -F _cabslotctl cabslotctl
complete -F _cabslot_sim cabslot-sim
