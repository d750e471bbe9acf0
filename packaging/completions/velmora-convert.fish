# Completion of velmora-convert for fish.

set -l commands scan list preview convert find
set -l clients apple-mbox apple-emlx thunderbird postbox olm eudora seamonkey mailmate outspring opera
set -l command complete -c velmora-convert
set -l readers '__fish_seen_subcommand_from scan list preview convert'
set -l choosers '__fish_seen_subcommand_from list preview convert'
set -l saver '__fish_seen_subcommand_from convert'

$command -n "not __fish_seen_subcommand_from $commands" -f
$command -n "not __fish_seen_subcommand_from $commands" -a scan -d 'Show the folders of a store'
$command -n "not __fish_seen_subcommand_from $commands" -a list -d 'Show sender and subject of each message'
$command -n "not __fish_seen_subcommand_from $commands" -a preview -d 'Show headers and text of each message'
$command -n "not __fish_seen_subcommand_from $commands" -a convert -d 'Write the folders to a bundle'
$command -n "not __fish_seen_subcommand_from $commands" -a find -d 'Look for stores of mail'
$command -n "not __fish_seen_subcommand_from $commands" -s v -l version -d 'Print the version'
$command -s h -l help -d 'Print a help text'
$command -s q -l quiet -d 'Show no progress'
$command -l json -d 'Print one JSON document'
$command -n $readers -l client -x -a "$clients" -d 'Whose store it is'
$command -n $choosers -l folder -x -d 'Only this folder'
$command -n $saver -s o -l out -l output -x -a '(__fish_complete_directories)' -d 'Folder for the bundle'
$command -n $saver -l to -x -a 'outlook apple-mail' -d 'Kind of bundle'
$command -n $saver -l replace -d 'Replace a bundle that is there'
$command -n $saver -l exact -d 'Keep every byte of every message'
$command -n $saver -l dry-run -d 'Only tell what would be written'
$command -n $saver -l check -d 'Read the bundle again'
$command -n $saver -l report -r -d 'Write the account of all messages'
