# Help and manual page are made from one table: what they say of each command is the same. What the completions do is
# tested in completions/.

setup_file() {
    bats_require_minimum_version 1.5.0
    "$KVRMEM" --generate man >"$BATS_FILE_TMPDIR/man"
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

@test "the completion for bash passes shellcheck" {
    "$KVRMEM" --generate bash | shellcheck --shell bash -
}

@test "the words without a command that the manual page names are taken" {
    sed -n '/^\.SH WITHOUT A COMMAND/,/^\.SH EXIT/s/^\\fB\([^\]*\(\\-[^\]*\)*\)\\fR.*/\1/p' "$BATS_FILE_TMPDIR/man" |
        sed 's/\\-/-/g' >"$BATS_TEST_TMPDIR/words"
    [ "$(tr '\n' ' ' <"$BATS_TEST_TMPDIR/words")" = "help --help --version --generate " ]
    "$KVRMEM" help convert
    "$KVRMEM" --help
    "$KVRMEM" --version
    for kind in bash zsh fish man; do
        "$KVRMEM" --generate "$kind"
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
