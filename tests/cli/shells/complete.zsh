# Has a zsh with a terminal complete each line of `rows`: its completion works nowhere else.
zmodload zsh/zpty || exit 1
zpty inside zsh -f -i
zpty -w inside "source ${0:A:h}/inside.zsh"
while zpty -r inside ignored 2>/dev/null; do :; done
zpty -d inside
