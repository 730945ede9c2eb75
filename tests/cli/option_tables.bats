# Help and manual pages are generated from the same table and must agree about each command. The completions are tested
# in completions/.

setup_file() {
    bats_require_minimum_version 1.5.0
    "$KVRMEM" --generate man >"$BATS_FILE_TMPDIR/man"
    "$KVRMEM" --help | sed -n '/^Commands$/,/^$/s/^  \([a-z]*\) .*/\1/p' >"$BATS_FILE_TMPDIR/commands"
}

commands() {
    cat "$BATS_FILE_TMPDIR/commands"
}

# The options in the help of COMMAND: the first "--name" of each line, in any form of the help text.
help_options() { # COMMAND
    "$KVRMEM" "$1" --help | sed -n '/^Options$/,$p' | grep -o '^  \(-[a-z], \)\?--[a-z0-9-]*' | grep -o -e '--[a-z0-9-]*' | sort
}

@test "there are commands, and each has options" {
    [ "$(commands | wc -l)" -ge 7 ]
    for command in $(commands); do
        [ "$(help_options "$command" | wc -l)" -ge 3 ]
    done
}

@test "the manual page of each command has the options of its help" {
    for command in $(commands); do
        "$KVRMEM" --generate man "$command" |
            sed -n 's/^\(\\fB\\-[a-z]\\fR, \)\?\\fB\\-\\-\([^\\]*\(\\-[^\\]*\)*\)\\fR.*/--\2/p' | sed 's/\\-/-/g' |
            sort >"$BATS_TEST_TMPDIR/man"
        diff <(help_options "$command") "$BATS_TEST_TMPDIR/man"
    done
}

# The manual pages of the tool and of its commands.
each_page() { # FUNCTION
    "$1" KVRMEM "$BATS_FILE_TMPDIR/man"
    for command in $(commands); do
        "$KVRMEM" --generate man "$command" >"$BATS_TEST_TMPDIR/page"
        "$1" "KVRMEM-${command^^}" "$BATS_TEST_TMPDIR/page"
    done
}

renders_without_a_warning() { # NAME PAGE
    run --separate-stderr groff -ww -man -Tutf8 "$2"
    [ "$status" -eq 0 ]
    [ -z "$stderr" ]
    grep -q "$1(1)" <<<"$output"
}

@test "every manual page is rendered without a warning" {
    each_page renders_without_a_warning
}

passes_the_linter() { # NAME PAGE
    mandoc -T lint -W warning "$2"
}

@test "every manual page passes a linter" {
    each_page passes_the_linter
}

@test "every manual page has the date of the release" {
    date=$(sed -n 's/^set(KVR_RELEASE_DATE \(.*\))$/\1/p' "$KVR_SOURCE/CMakeLists.txt")
    [ "$date" = "$(date -u -d "$(sed -n 's/^ -- .*>  //p' "$KVR_SOURCE/debian/changelog" | head -n 1)" +%F)" ]
    has_the_date() {
        grep -q "^\.TH [^ ]* 1 \"$date\" " "$2"
    }
    each_page has_the_date
}

@test "the main manual page refers to that of each command, and those to it" {
    for command in $(commands); do
        sed -n '/^\.SH SEE ALSO/,$p' "$BATS_FILE_TMPDIR/man" | grep -q "^\.BR kvrmem\\\\-$command (1)"
        "$KVRMEM" --generate man "$command" | sed -n '/^\.SH SEE ALSO/,$p' | grep -q '^\.BR kvrmem (1)$'
    done
}

@test "the build makes the manual page of each command" {
    [ "$(commands | sed 's/.*/kvrmem-&.1/' | sort)" = "$(cd "$KVRMEM_TEXTS/man1" && ls kvrmem-*.1 | sort)" ]
}

@test "help shows what --help of a command shows" {
    for command in $(commands); do
        diff <("$KVRMEM" help "$command") <("$KVRMEM" "$command" --help)
    done
}

topics() {
    "$KVRMEM" help | sed -n '/^Topics$/,/^$/s/^  \([a-z]*\) .*/\1/p'
}

@test "help has a page for each topic, which the manual has too" {
    [ "$(topics | tr '\n' ' ')" = "formats numbers check " ]
    for topic in $(topics); do
        "$KVRMEM" help "$topic" >"$BATS_TEST_TMPDIR/help"
        title=$(case $topic in
            formats) echo "Choice of the format" ;;
            numbers) echo "Numbers" ;;
            check) echo "Classes, readers and exit codes" ;;
            esac)
        grep -qx "$title" "$BATS_TEST_TMPDIR/help"
        if commands | grep -qx "$topic"; then
            "$KVRMEM" --generate man "$topic" | grep -qx "\.SH ${title^^}"
        else
            grep -qx "\.SH ${title^^}" "$BATS_FILE_TMPDIR/man"
        fi
    done
    [ "$("$KVRMEM" help numbers | grep -c '.\{101\}')" -eq 0 ]
}

@test "the topic of the formats has each of them" {
    "$KVRMEM" help formats >"$BATS_TEST_TMPDIR/help"
    for name in $("$KVRMEM" formats | awk 'NR > 1 { print $1 }'); do
        grep -q "^$name " "$BATS_TEST_TMPDIR/help"
    done
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
    "$KVRMEM" --generate man convert
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
