# Fish completion for cabslotctl.

# Whether the command is $argv, and no other word has followed it yet.
function __cabslotctl_is
    set -l words (__cabslotctl_words)
    test "$words" = "$argv"
end

# The words of the command line that are neither options nor their values.
function __cabslotctl_words
    set -l skip no
    for word in (commandline -opc)[2..-1]
        if test $skip = yes
            set skip no
        else if contains -- $word --pedal --trace --timeout --confirm-timeout --block --plot --data --dry --out --name
            set skip yes
        else if not string match -q -- '-*' $word
            echo $word
        end
    end
end

# Whether the first words of the command are $argv.
function __cabslotctl_in
    set -l words (__cabslotctl_words)
    test "$words[1..$(count $argv)]" = "$argv"
end

# Whether the word to be completed is an IR file. load takes slots and files in turn.
function __cabslotctl_wants_ir
    set -l words (__cabslotctl_words)
    switch "$words[1]"
        case load
            test (math (count $words) % 2) -eq 0
        case audition
            test (count $words) -eq 1
        case '*'
            contains -- "$words[1]" inspect prepare blend
    end
end

# Whether it is a slot.
function __cabslotctl_wants_slot
    set -l words (__cabslotctl_words)
    contains -- "$words[1]" clear undo history; or test "$words[1]" = load -a (math (count $words) % 2) -eq 1
end

complete -c cabslotctl -f
complete -c cabslotctl -l pedal -x -a 'usb sim unix:' -d 'The pedal to use'
complete -c cabslotctl -l trace -r -F -d 'Write every report to this file'
complete -c cabslotctl -l force -d 'Let outputs replace existing files'
complete -c cabslotctl -s h -l help -d 'Print the help and exit'
complete -c cabslotctl -n __cabslotctl_is -l version -d 'Print the version and exit'

complete -c cabslotctl -n __cabslotctl_is -a list -d 'Show the names of the four user slots'
complete -c cabslotctl -n __cabslotctl_is -a load -d 'Load impulse responses into slots'
complete -c cabslotctl -n __cabslotctl_is -a clear -d 'Load silence into a slot'
complete -c cabslotctl -n __cabslotctl_is -a undo -d 'Load what a slot held before'
complete -c cabslotctl -n __cabslotctl_is -a history -d 'Show what was loaded into the slots'
complete -c cabslotctl -n __cabslotctl_is -a inspect -d 'Show what a file would put into the pedal'
complete -c cabslotctl -n __cabslotctl_is -a audition -d 'Play a dry phrase through a file'
complete -c cabslotctl -n __cabslotctl_is -a prepare -d 'Make the best 1024 points of files'
complete -c cabslotctl -n __cabslotctl_is -a blend -d 'Mix files into one'
complete -c cabslotctl -n __cabslotctl_is -a set -d 'Save, show, load and make sets of all slots'
complete -c cabslotctl -n __cabslotctl_is -a preset -d 'Show, check and create preset files'
complete -c cabslotctl -n __cabslotctl_is -a doctor -d 'Look for the pedal on USB'

set -l preset '__cabslotctl_is preset'
complete -c cabslotctl -n $preset -a show -d 'Show the fields of a preset'
complete -c cabslotctl -n $preset -a verify -d 'Check whether each file is a valid preset'
complete -c cabslotctl -n $preset -a new -d 'Create a preset file'
complete -c cabslotctl -n $preset -a export -d 'Write the data area to a file'
complete -c cabslotctl -n $preset -a import -d 'Replace the data area with the bytes of a file'

set -l sets '__cabslotctl_is set'
complete -c cabslotctl -n $sets -a save -d 'Save what this computer knows of the slots'
complete -c cabslotctl -n $sets -a show -d 'Show what a set holds'
complete -c cabslotctl -n $sets -a load -d 'Load a set into the slots'
complete -c cabslotctl -n $sets -a export -d 'Write the IRs of a set as WAV files'
complete -c cabslotctl -n $sets -a new -d 'Make a set from IR files'

for command in list history inspect prepare blend doctor 'preset show' 'set show'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l json -d 'Print JSON'
end
for command in list load clear undo 'set save' 'set load'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l timeout -x -d 'Seconds to wait for data'
end
for command in load clear undo 'set load'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l confirm-timeout -x \
        -d 'Seconds to wait for the confirmation'
end
complete -c cabslotctl -n __cabslotctl_wants_slot -a '1 2 3 4' -d Slot
complete -c cabslotctl -n '__cabslotctl_in clear' -l all -d 'Clear all slots'
complete -c cabslotctl -n '__cabslotctl_in inspect' -l recursive -d 'Look into subfolders too'
complete -c cabslotctl -n '__cabslotctl_in inspect' -l block -r -F -d 'Write the 1024 points'
complete -c cabslotctl -n '__cabslotctl_in inspect' -l plot -r -F -d 'Draw it as SVG'
complete -c cabslotctl -n '__cabslotctl_in audition' -l dry -r -F -a 'clean driven' -d 'The phrase'
complete -c cabslotctl -n '__cabslotctl_in audition' -l out -r -F -d 'Write a WAV file instead'
complete -c cabslotctl -n '__cabslotctl_in audition' -l raw-level -d 'Leave it as loud as it is'
complete -c cabslotctl -n '__cabslotctl_in load' -l name -x -d 'The name in the pedal'
complete -c cabslotctl -n '__cabslotctl_in inspect' -l compare -r -F -d 'Show how this file differs'
complete -c cabslotctl -n '__cabslotctl_in blend' -l mix -x -d 'Their shares, as 60:40'
complete -c cabslotctl -n '__cabslotctl_in blend' -l no-align -d 'Shift nothing'
complete -c cabslotctl -n '__cabslotctl_in blend' -l invert -x -d 'Turn the polarity of a file'
complete -c cabslotctl -n '__cabslotctl_in blend' -l prepare -d 'Prepare each file first'
complete -c cabslotctl -n '__cabslotctl_in blend' -l plot -r -F -d 'Draw the blend and its parts'
complete -c cabslotctl -n '__cabslotctl_in load' -l prepare -d 'Prepare each file first'
complete -c cabslotctl -n '__cabslotctl_in prepare' -l into -r -F -d 'Write into this folder'
for command in prepare blend
    complete -c cabslotctl -n "__cabslotctl_in $command" -l channel -x -a 'first mean' -d 'The channel'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l no-resample -d 'Resample as load does'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l low-cut -x -d 'Remove lows below, Hz'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l high-cut -x -d 'Remove highs above, Hz'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l no-trim -d 'Keep what comes before the onset'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l minimum-phase -d 'The energy as early as possible'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l fade -x -d 'Milliseconds'
    complete -c cabslotctl -n "__cabslotctl_in $command" -l level -x -a 'keep peak' -d 'The level'
end
complete -c cabslotctl -n '__cabslotctl_in prepare' -l plot -r -F -d 'Draw the response before and after'
complete -c cabslotctl -n '__cabslotctl_in preset new' -l data -r -F -d 'The data area'
complete -c cabslotctl -n __cabslotctl_wants_ir -k \
    -a '(__fish_complete_suffix .wav; __fish_complete_suffix .WAV; __fish_complete_suffix .bin)'
for command in show verify new export import
    complete -c cabslotctl -n "__cabslotctl_in preset $command" -F
end
for command in save show load export new
    complete -c cabslotctl -n "__cabslotctl_in set $command" -F
end
