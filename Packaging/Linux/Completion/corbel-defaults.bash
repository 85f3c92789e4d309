# Completion of corbel-defaults for bash.
_corbel_defaults() {
    local word=${COMP_WORDS[COMP_CWORD]} choice
    COMPREPLY=()
    # Domains and keys may hold spaces, and characters that the shell would act on.
    while IFS= read -r choice; do
        [[ -n $choice && $choice == "$word"* ]] && COMPREPLY+=("$(printf '%q' "$choice")")
    done < <(
        case $COMP_CWORD in
            1) printf '%s\n' domains keys read write delete --help --version ;;
            2) [[ ${COMP_WORDS[1]} == @(keys|read|write|delete) ]] && corbel-defaults domains ;;
            3) [[ ${COMP_WORDS[1]} == @(read|write|delete) ]] && corbel-defaults keys "${COMP_WORDS[2]}" ;;
            4) [[ ${COMP_WORDS[1]} == write ]] && printf '%s\n' -string -int -bool -array -array-add ;;
            5) [[ ${COMP_WORDS[4]} == -bool ]] && printf '%s\n' yes no ;;
        esac 2>/dev/null)
}
complete -F _corbel_defaults corbel-defaults
