# Completes each line of `rows` as fish does for `kiv-cli LINE`, and prints what is offered below it.
source ../script
while read -l row
    echo "> $row"
    complete -C "kiv-cli $row" | string replace -r '\t.*' ''
end <../rows >../offered
exit 0 # not what the last replacement says
