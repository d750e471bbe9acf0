# Completion of velmora-convert for bash.

_velmora_convert()
{
    local word command='' current=${COMP_WORDS[COMP_CWORD]} options='--json -q --quiet -h --help'
    local clients='apple-mbox apple-emlx thunderbird postbox olm eudora seamonkey mailmate outspring opera'
    COMPREPLY=()
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        --client) mapfile -t COMPREPLY < <(compgen -W "$clients" -- "$current") && return ;;
        --to) mapfile -t COMPREPLY < <(compgen -W 'outlook apple-mail' -- "$current") && return ;;
        -o | --out | --output)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$current") && return
            ;;
        --folder) return ;;
    esac
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            scan | list | preview | convert | find) command=$word && break ;;
        esac
    done
    case $command in
        '') options='scan list preview convert find -h --help -v --version' ;;
        scan) options+=' --client' ;;
        list | preview) options+=' --client --folder' ;;
        convert)
            options+=' --client --folder --to -o --out --output --replace --exact --dry-run --check --report'
            ;;
    esac
    if [[ $current == -* || -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _velmora_convert velmora-convert
