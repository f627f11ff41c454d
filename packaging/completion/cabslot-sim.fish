# Fish completion for cabslot-sim.
complete -c cabslot-sim -f
complete -c cabslot-sim -l socket -r -F -d 'Where hosts connect'
complete -c cabslot-sim -l usb -d 'Use a virtual USB port instead'
complete -c cabslot-sim -l state -x -a '(__fish_complete_directories)' -d 'Keep the slots here'
complete -c cabslot-sim -l confirm-delay -x -d 'Milliseconds to the confirmation'
complete -c cabslot-sim -l fault -x -d Misbehave \
    -a 'corrupt-crc garbage split merge wrong-length flood never-confirm confirm-at-once confirm-early usb-stall usb-hold'
complete -c cabslot-sim -l vanish-after -x -d 'Cut the connection after this many reports'
complete -c cabslot-sim -l second-device -d 'Add a second pedal at PATH.2'
complete -c cabslot-sim -l version -d 'Show the version and exit'
complete -c cabslot-sim -s h -l help -d 'Show the help and exit'
