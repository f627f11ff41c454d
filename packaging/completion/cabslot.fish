# Fish completion for cabslot.
complete -c cabslot -f
complete -c cabslot -k -a '(__fish_complete_suffix .cabset)'
complete -c cabslot -l pedal -x -a 'usb sim unix:' -d 'The pedal to use'
complete -c cabslot -l version -d 'Show the version and exit'
complete -c cabslot -s h -l help -d 'Show the help and exit'
