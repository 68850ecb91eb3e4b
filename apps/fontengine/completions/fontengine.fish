# Completes the sub-commands and options of fontengine in fish. They are asked of the tool, so none can be missing.

function __fontengine_names --argument-names heading command
    fontengine $command --help 2>/dev/null | sed -n "/^$heading:\$/,/^\$/p" |
        string replace -rf '^  (\S+) .*?(?:\s{2,}|REQUIRED )(\S.*)$' '$1\t$2' |
        string replace -r '^-\w,' ''
end

function __fontengine_command
    string match -v -- '-*' (commandline -opc)[2..-1] | head -n 1
end

complete -c fontengine -n 'not string length -q (__fontengine_command)' -f -a '(__fontengine_names Subcommands)'
complete -c fontengine -n 'string match -q -- "-*" (commandline -ct)' -f \
    -a '(__fontengine_names Options (__fontengine_command))'
