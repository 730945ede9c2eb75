# Help, manual page and completions are made from one table: what they say of each command is the same.

setup_file() {
    bats_require_minimum_version 1.5.0
    for kind in man bash zsh fish; do
        "$KVRMEM" --generate "$kind" >"$BATS_FILE_TMPDIR/$kind"
    done
    "$KVRMEM" --help | sed -n '/^Commands$/,/^$/s/^  \([a-z]*\) .*/\1/p' >"$BATS_FILE_TMPDIR/commands"
}

commands() {
    cat "$BATS_FILE_TMPDIR/commands"
}


# The options that the help of COMMAND lists: the first "--name" of each line, whatever its help says.
help_options() { # COMMAND
    "$KVRMEM" "$1" --help | sed -n '/^Options$/,$p' | grep -o '^  \(-[a-z], \)\?--[a-z-]*' | grep -o -e '--[a-z-]*' | sort
}

@test "there are commands, and each has options" {
    [ "$(commands | wc -l)" -ge 7 ]
    for command in $(commands); do
        [ "$(help_options "$command" | wc -l)" -ge 3 ]
    done
}

@test "the manual page has the options of the help" {
    for command in $(commands); do
        awk -v name="$command" '/^\.S[HS]/ { inside = $2 == "kvrmem" && $3 == name } inside' "$BATS_FILE_TMPDIR/man" |
            sed -n 's/^\(\\fB\\-[a-z]\\fR, \)\?\\fB\\-\\-\([^\\]*\(\\-[^\\]*\)*\)\\fR.*/--\2/p' | sed 's/\\-/-/g' |
            sort >"$BATS_TEST_TMPDIR/man"
        diff <(help_options "$command") "$BATS_TEST_TMPDIR/man"
    done
}

@test "the manual page is rendered without a warning" {
    run --separate-stderr groff -ww -man -Tutf8 -z "$BATS_FILE_TMPDIR/man"
    [ "$status" -eq 0 ]
    [ -z "$stderr" ]
    groff -man -Tutf8 "$BATS_FILE_TMPDIR/man" | grep -q 'KVRMEM(1)'
}

@test "bash completes commands and the options of the help" {
    # shellcheck disable=SC1091 # made by setup_file
    source "$BATS_FILE_TMPDIR/bash"
    COMP_WORDS=(kvrmem "") COMP_CWORD=1
    _kvrmem
    diff <(printf '%s\n' "${COMPREPLY[@]}" | grep -v -e - -e help | sort) <(commands | sort)
    for command in $(commands); do
        COMP_WORDS=(kvrmem "$command" --) COMP_CWORD=2
        _kvrmem
        diff <(printf '%s\n' "${COMPREPLY[@]}" | sort) <(help_options "$command")
    done
}

@test "bash completes values and files" {
    # shellcheck disable=SC1091 # made by setup_file
    source "$BATS_FILE_TMPDIR/bash"
    cd "$BATS_TEST_TMPDIR" || return
    touch "a b.mif"
    COMP_WORDS=(kvrmem convert --to "") COMP_CWORD=3
    _kvrmem
    [ "${COMPREPLY[*]}" = "mif hex rif" ]
    COMP_WORDS=(kvrmem convert a) COMP_CWORD=2
    _kvrmem
    [ "${COMPREPLY[0]}" = "a b.mif" ]
}

@test "fish completes commands and the options of the help" {
    fish -c "source '$BATS_FILE_TMPDIR/fish'; complete -C 'kvrmem '" | cut -f 1 | grep '^[a-z]*$' | sort >"$BATS_TEST_TMPDIR/names"
    diff <(commands | sort) "$BATS_TEST_TMPDIR/names"
    for command in $(commands); do
        fish -c "source '$BATS_FILE_TMPDIR/fish'; complete -C 'kvrmem $command --'" | cut -f 1 | sort >"$BATS_TEST_TMPDIR/fish"
        diff <(help_options "$command") "$BATS_TEST_TMPDIR/fish"
    done
}

@test "zsh accepts its completion, which has the options of the help" {
    zsh -n "$BATS_FILE_TMPDIR/zsh"
    for command in $(commands); do
        awk -v name="    $command)" '$0 == name { inside = 1 } inside; /;;$/ { inside = 0 }' "$BATS_FILE_TMPDIR/zsh" |
            grep -o "^            '--[a-z-]*\[" | tr -d " '[" | sort >"$BATS_TEST_TMPDIR/zsh"
        diff <(help_options "$command") "$BATS_TEST_TMPDIR/zsh"
    done
}

@test "every example of the help begins with the tool or with git" {
    for command in $(commands); do
        "$KVRMEM" "$command" --help | sed -n '/^Examples$/,/^$/p' | grep '^  ' >"$BATS_TEST_TMPDIR/examples"
        [ -s "$BATS_TEST_TMPDIR/examples" ]
        [ "$(grep -vc '^  \$ \(kvrmem\|git\) ' "$BATS_TEST_TMPDIR/examples")" -eq 0 ]
    done
}

@test "no line of the help is wider than a terminal of 120 columns" {
    for command in $(commands); do
        [ "$("$KVRMEM" "$command" --help | grep -c '.\{121\}')" -eq 0 ]
    done
    [ "$("$KVRMEM" --help | grep -c '.\{121\}')" -eq 0 ]
}
