# The behavior of the tool on a terminal and after an interruption. "script" provides a pseudo-terminal.

setup() {
    bats_require_minimum_version 1.5.0
    cd "$BATS_TEST_TMPDIR" || return
    unset NO_COLOR
    export TERM=xterm
    printf 'WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 41;\nEND;\n' >in.mif
    escape=$(printf '\033')
}

# Fails if standard input contains TEXT.
lacks() { # TEXT
    ! grep -qF -e "$1"
}

on_a_terminal() { # COMMAND LINE
    script -qec "$1" /dev/null </dev/null
}

# Some containers have no pseudo-terminals.
needs_a_terminal() {
    on_a_terminal true >"$BATS_TEST_TMPDIR/answer" 2>&1 || skip "$(cat "$BATS_TEST_TMPDIR/answer")"
}

@test "there is colour on a terminal" {
    needs_a_terminal
    on_a_terminal "'$KVRMEM' dump in.mif" | grep -qF "${escape}[2m0000${escape}[0m"
}

@test "NO_COLOR takes the colour away" {
    needs_a_terminal
    NO_COLOR=1 on_a_terminal "'$KVRMEM' dump in.mif" | lacks "$escape"
}

@test "an empty NO_COLOR says nothing" {
    needs_a_terminal
    NO_COLOR='' on_a_terminal "'$KVRMEM' dump in.mif" | grep -qF "$escape"
}

@test "a dumb terminal gets no colour" {
    needs_a_terminal
    TERM=dumb on_a_terminal "'$KVRMEM' dump in.mif" | lacks "$escape"
}

@test "--color never and always hold against terminal and NO_COLOR" {
    needs_a_terminal
    on_a_terminal "'$KVRMEM' dump --color never in.mif" | lacks "$escape"
    NO_COLOR=1 on_a_terminal "'$KVRMEM' dump --color always in.mif" | grep -qF "$escape"
}

@test "standard output and standard error are judged apart" {
    needs_a_terminal
    on_a_terminal "'$KVRMEM' dump in.mif >words; '$KVRMEM' dump none.mif; true" >messages
    lacks "$escape" <words
    grep -qF "${escape}[1;31mkvrmem:${escape}[0m none.mif: cannot be opened" messages
    on_a_terminal "'$KVRMEM' dump none.mif 2>messages; '$KVRMEM' dump in.mif" >words
    lacks "$escape" <messages
    grep -qF "$escape" words
}

@test "work beyond a second shows its progress, which goes away again" {
    needs_a_terminal
    mkfifo slow.mif
    timeout 20 sh -c "exec >slow.mif; sleep 1.6; cat in.mif" 3>&- &
    on_a_terminal "'$KVRMEM' get slow.mif 0" >shown
    return=$(printf '\r')
    grep -qF "$return${escape}[Kreading slow.mif" shown
    [ "$(sed "s/.*reading slow.mif//" shown | tr -d '\r')" = "${escape}[K41" ]
}

# Runs the tool on a terminal and stops it in the middle of FILE until its progress line is due.
paused_on_a_terminal() { # FILE COMMAND
    cat >pause.sh <<'END'
eval "exec $2" &
tool=$!
while kill -STOP "$tool"; do
    for descriptor in /proc/"$tool"/fd/*; do
        if [ "$descriptor" -ef "$1" ]; then
            read -r _ position </proc/"$tool"/fdinfo/"${descriptor##*/}"
            [ "$position" -eq 0 ] || break 2
        fi
    done
    kill -CONT "$tool"
done
sleep 1.2
kill -CONT "$tool"
wait "$tool"
END
    on_a_terminal "timeout 60 bash pause.sh '$1' \"$2\""
}

@test "progress is shown in percent, also for a file on standard input" {
    needs_a_terminal
    "$KVRMEM" new big.mif --width 8 --depth 0x7FFFF --no-runs
    paused_on_a_terminal big.mif "'$KVRMEM' info big.mif" >shown
    grep -Eq 'reading big.mif [0-9]+ %, [0-9]+ s left' shown
    paused_on_a_terminal big.mif "'$KVRMEM' info --from mif - <big.mif" >shown
    grep -Eq 'reading standard input [0-9]+ %' shown
}

# Runs COMMAND, which reads the pipe slow.bin. After it has opened the pipe, repeated alarms make its progress line due.
shows_the_progress_of() { # TITLE COMMAND
    mkfifo slow.bin
    cat >alarmed.sh <<'END'
eval "exec $1" &
tool=$!
exec 3>slow.bin
while kill -ALRM "$tool" 2>/dev/null; do :; done 3>&- &
cat big.bin >&3
exec 3>&-
wait "$tool"
END
    on_a_terminal "timeout 60 bash alarmed.sh \"$2\"" >shown || true # the result of the operation does not matter
    rm slow.bin
    grep -Eq -e "$1 of slow.bin[^%]* [0-9]+ %, [0-9]+ s left" shown
}

@test "operations show their progress, too" {
    needs_a_terminal
    head -c 8000000 /dev/urandom >big.bin
    shows_the_progress_of '--reshape 12' "'$KVRMEM' convert --from binary --reshape 12 --pad 0 slow.bin big.mif"
}

@test "split, join, merge and the check of check bits report their progress, too" {
    needs_a_terminal
    head -c 300000 /dev/urandom >big.bin
    printf '@0\nFF\nq\n' >near.txt
    shows_the_progress_of '--bits 4' "'$KVRMEM' split --bits 4 slow.bin half%d.mif"
    shows_the_progress_of '--every 2' "'$KVRMEM' join --every 2 --depth 300000 -o both.mif slow.bin near.txt"
    shows_the_progress_of 'merge' "'$KVRMEM' merge -o all.mif slow.bin near.txt"
    shows_the_progress_of '--ecc even-parity' "'$KVRMEM' check --quiet --ecc even-parity slow.bin"
}

@test "a picture is as wide as its terminal" {
    needs_a_terminal
    on_a_terminal "stty cols 50; '$KVRMEM' plot in.mif" | grep -F ', 10 characters a word'
    on_a_terminal "stty cols 40; '$KVRMEM' plot in.mif" | grep -F ', 7 characters a word'
}

@test "quick work shows no progress" {
    needs_a_terminal
    on_a_terminal "'$KVRMEM' get in.mif 0" | lacks reading
}

@test "there is no progress where standard error is no terminal" {
    needs_a_terminal
    mkfifo slow.mif
    timeout 20 sh -c "exec >slow.mif; sleep 1.6; cat in.mif" 3>&- &
    on_a_terminal "'$KVRMEM' get slow.mif 0 2>messages" >words
    [ "$(tr -d '\r' <words)" = 41 ]
    [ ! -s messages ]
}

@test "Ctrl-C leaves neither a file nor a temporary" {
    mkdir box
    set -m
    "$KVRMEM" new box/out.mif --force --width 8 --depth 0x7FFFFFFF --no-runs 3>&- &
    tool=$!
    until [ -n "$(ls -A box)" ]; do
        kill -0 "$tool"
        sleep 0.01
    done
    kill -INT "$tool"
    status=0
    wait "$tool" || status=$?
    [ "$status" -eq 130 ]
    [ -z "$(ls -A box)" ]
}

@test "Ctrl-C leaves the old file as it was" {
    mkdir box
    echo precious >box/out.mif
    set -m
    "$KVRMEM" new box/out.mif --force --width 8 --depth 0x7FFFFFFF --no-runs 3>&- &
    tool=$!
    until [ "$(ls -A box)" != out.mif ]; do
        kill -0 "$tool"
        sleep 0.01
    done
    kill -INT "$tool"
    wait "$tool" || true
    [ "$(ls -A box)" = out.mif ]
    [ "$(cat box/out.mif)" = precious ]
}

@test "a file that grows beyond the limit of the system is taken away" {
    mkdir box
    run bash -c "ulimit -f 1024; '$KVRMEM' new box/out.mif --width 8 --depth 0xFFFFF --no-runs"
    [ "$status" -gt 128 ]
    [ -z "$(ls -A box)" ]
}

@test "a pipe that is closed ends the tool without a message, also where that signal is ignored" {
    run bash -c "'$KVRMEM' new - --to mif --width 8 --depth 0xFFFFF --no-runs | head -n 1"
    [ "$output" = "-- Memory Initialization File, written by kvrmem" ]
    run bash -c "trap '' PIPE; '$KVRMEM' new - --to mif --width 8 --depth 0xFFFFF --no-runs | head -n 1"
    [ "$output" = "-- Memory Initialization File, written by kvrmem" ]
}
