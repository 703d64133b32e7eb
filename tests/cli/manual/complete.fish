# complete.fish MANUAL: for each line that it reads, what fish offers where the line ends, one a line, and NUL.
for file in $argv[1]/fish/*
    source $file
end
while read --line line
    complete -C "$line" | cut -f1
    printf '\0'
end
