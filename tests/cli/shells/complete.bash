# Completes each line of `rows` as bash does for `kiv-cli LINE`, and prints what is offered below it. A "=" is a word of its
# own there.
source ../script
while IFS= read -r row; do
    echo "> $row"
    spaced=${row//=/ = }
    [[ $row == *= ]] && spaced=${spaced% }
    read -ra COMP_WORDS <<<"kiv-cli $spaced"
    [[ $spaced == *' ' ]] && COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _kiv_cli
    printf '%s\n' "${COMPREPLY[@]}"
done <../rows >../offered
