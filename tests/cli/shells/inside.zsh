# Completes each line of `rows` at the prompt as zsh does for `kiv-cli LINE`, and writes what is offered below it.
fpath=($PWD/../functions $fpath)
autoload -Uz compinit && compinit -u -d ../dump

# Everything that is offered passes here.
compadd()
{
    local -a hits
    if ((${@[(I)-[OAD]*]} == 0)); then
        builtin compadd -O hits "$@"
        print -rl -- $hits >>../offered
    fi
    builtin compadd "$@"
}
complete_quietly()
{
    _main_complete
    compstate[insert]= compstate[list]=
}
zle -C complete_quietly complete-word complete_quietly
complete_rows()
{
    local row
    for row in "${(@f)$(<../rows)}"; do
        print -r -- "> $row" >>../offered
        BUFFER="kiv-cli $row"
        CURSOR=$#BUFFER
        zle complete_quietly
    done
    BUFFER=exit
    zle accept-line
}
zle -N zle-line-init complete_rows
