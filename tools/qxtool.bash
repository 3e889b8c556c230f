# bash completion for qxtool: the commands, then each command's options; file names otherwise.
# The lists come from qxtool's own help, so commands added later complete too.

_qxtool_section() {
    # The first words of the lines of one section ("Commands:", "Options:") of a help text.
    awk -v title="$1:" '$0 == title { inside = 1; next }
        inside && /^$/ { exit }
        inside { sub(/,$/, "", $1); print $1; if ($2 ~ /^--/) print $2 }'
}

_qxtool() {
    local cur=${COMP_WORDS[COMP_CWORD]}
    local tool=${COMP_WORDS[0]}
    COMPREPLY=()
    if [[ $COMP_CWORD -eq 1 ]]; then
        COMPREPLY=($(compgen -W "$("$tool" --help 2>/dev/null | _qxtool_section Commands)
            help --help --version" -- "$cur"))
    elif [[ $COMP_CWORD -eq 2 && ${COMP_WORDS[1]} == help ]]; then
        COMPREPLY=($(compgen -W "$("$tool" --help 2>/dev/null | _qxtool_section Commands)" \
            -- "$cur"))
    elif [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$("$tool" help "${COMP_WORDS[1]}" 2>/dev/null |
            _qxtool_section Options)" -- "$cur"))
    fi
}

complete -o default -F _qxtool qxtool
