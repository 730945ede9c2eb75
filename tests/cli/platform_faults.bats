# Full disks, closed streams, read-only folders, and inputs and outputs that arrive in pieces.

setup() {
    bats_require_minimum_version 1.5.0
    cd "$BATS_TEST_TMPDIR" || return
    mkdir box
    printf 'WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n[0..F] : 41;\nEND;\n' >box/in.mif
    printf 'WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n[0..F] : 41\nEND;\n' >box/broken.mif
    cp -a box before
    cd box || return
}

# The commands that write to standard output, one per line.
printing_commands() {
    cat <<'END'
info in.mif
info --json in.mif
dump in.mif
get in.mif 0..15
check broken.mif
check --json broken.mif
diff in.mif broken.mif
diff --json in.mif broken.mif
convert in.mif - --to rif
set in.mif -o - 1=2
fill in.mif -o - 1..2=3
new - --to mif --width 8 --depth 4
plot in.mif
plot in.mif -o -
radix 5 --width 8
--help
--version
--generate man
END
}

# Fails unless the folder is unchanged.
nothing_changed() {
    diff -r ../before .
}

# Runs each printing command with the redirection TARGET of standard output. It must fail with a message.
every_command_tells() { # TARGET
    while read -r words; do
        status=0
        eval "\"\$KVRMEM\" $words $1 2>../messages" || status=$?
        echo "$words: $status"
        [ "$status" -eq 3 ] || [ "$words" = "diff in.mif broken.mif" ] || [ "$words" = "diff --json in.mif broken.mif" ]
        [ "$status" -ge 2 ]
        [ -s ../messages ]
    done < <(printing_commands)
    nothing_changed
}

@test "every command reports a full standard output" {
    every_command_tells '>/dev/full'
}

@test "every command reports a closed standard output" {
    every_command_tells '>&-'
}

@test "no message gets into a file when standard error is closed" {
    "$KVRMEM" set in.mif 1=2 2>../expected
    cp in.mif ../expected.mif
    cp ../before/in.mif in.mif
    "$KVRMEM" set in.mif 1=2 2>&-
    cmp in.mif ../expected.mif
    "$KVRMEM" convert in.mif out.hex 2>&-
    "$KVRMEM" convert in.mif ../out.hex
    cmp out.hex ../out.hex
    "$KVRMEM" check --fix -o fixed.mif broken.mif 2>&-
    "$KVRMEM" check --fix -o ../fixed.mif broken.mif
    cmp fixed.mif ../fixed.mif
    "$KVRMEM" convert out.hex out.mif >&- 2>&- <&-
    "$KVRMEM" convert out.hex ../out.mif
    cmp out.mif ../out.mif
}

# Creates NAME as the system's device of that name. For root, creates a new device, because a faulty tool would replace
# the system's device.
make_device() { # NAME MINOR
    if [ "$(id -u)" -ne 0 ]; then
        ln -s "/dev/$1" "../$1"
    elif ! { mknod "../$1" c 1 "$2" && : >"../$1"; }; then
        skip "no device can be made here"
    fi
}

@test "a device and pipes are written as they are" {
    "$KVRMEM" convert in.mif ../expected.rif
    make_device null 3
    run -0 "$KVRMEM" new --width 8 --depth 2 --to rif ../null
    [ -z "$output" ]
    run -0 "$KVRMEM" convert in.mif ../null --to rif
    [ -c ../null ]
    "$KVRMEM" convert in.mif /dev/stdout --to rif | cmp - ../expected.rif
    [ "${PIPESTATUS[*]}" = "0 0" ]
    mkfifo ../pipe
    timeout 20 cat ../pipe >../actual.rif &
    "$KVRMEM" convert in.mif ../pipe --to rif
    wait "$!"
    [ -p ../pipe ]
    cmp ../actual.rif ../expected.rif
    nothing_changed
}

@test "a full device is reported" {
    make_device full 7
    for words in "new ../full --to mif --width 8 --depth 4" "convert in.mif ../full --to rif" \
        "set in.mif -o ../full 1=2" "fill in.mif -o ../full 1..2=3" "check --fix -o ../full broken.mif" \
        "plot in.mif -o ../full"; do
        # shellcheck disable=SC2086
        run -3 "$KVRMEM" $words
        [ "$output" = "kvrmem: ../full: cannot be written: No space left on device" ]
    done
    [ -c ../full ]
    nothing_changed
}

@test "a closed standard input is reported" {
    # In a separate shell: "run" would assign the free number to the pipe that it reads from.
    run -3 bash -c "exec <&-; '$KVRMEM' info - --from mif"
    [ "$output" = "kvrmem: standard input: cannot be opened: Bad file descriptor" ]
}

@test "a folder that may not be written keeps its files" {
    if [ "$(id -u)" -eq 0 ]; then
        # Root may write everywhere: use another user.
        chmod 755 "$BATS_TEST_TMPDIR"
        cp "$KVRMEM" ../kvrmem
        as_nobody=(setpriv --reuid=65534 --regid=65534 --clear-groups)
        "${as_nobody[@]}" test -x ../kvrmem || skip "nobody may look into the folder of the test"
    else
        cp "$KVRMEM" ../kvrmem
        chmod 555 .
        as_nobody=()
    fi
    for words in "set in.mif 1=2" "fill in.mif 1..2=3" "convert in.mif out.hex" "check --fix -o out.mif broken.mif" \
        "new out.rif --width 8 --depth 4" "plot in.mif -o out.svg"; do
        # shellcheck disable=SC2086
        run -3 "${as_nobody[@]}" ../kvrmem $words
        [ -n "$output" ]
    done
    nothing_changed
    chmod 755 .
}

@test "an input that comes byte by byte is read as one" {
    head -c 400 <"$KVR_SOURCE/examples/two_pages_16bit.hex" >../in.hex
    printf ':00000001FF\n' >>../in.hex
    "$KVRMEM" dump ../in.hex --width 16 >../expected || true
    for file in "../in.hex hex" "in.mif mif"; do
        # shellcheck disable=SC2086
        set -- $file
        "$KVRMEM" info "$1" --width 16 --from "$2" >../expected 2>&1 || true
        dd if="$1" bs=1 2>/dev/null | "$KVRMEM" info - --width 16 --from "$2" >../actual 2>&1 || true
        diff <(sed "s|\(kvrmem check .*\)$1|\1-|; s|$1|standard input|" ../expected) ../actual
    done
}

@test "a disk that is full in the middle of a file keeps the old file" {
    printf 'old\n' >out.mif
    cp out.mif ../before
    # The system writes as much as fits and then fails, because the signal is ignored. The limit leaves room for the
    # files of a coverage build, more than 1 MiB.
    run -3 bash -c "trap '' XFSZ; ulimit -f 8192; '$KVRMEM' new out.mif --force --width 8 --depth 0xFFFFF --no-runs"
    [ "$output" = "kvrmem: out.mif: cannot be written: File too large" ]
    nothing_changed
}

@test "a file of another user stays his" {
    [ "$(id -u)" -eq 0 ] || skip "only root can give files away"
    chown 65534:65533 in.mif
    chmod 640 in.mif
    "$KVRMEM" set in.mif 1=2
    [ "$(stat -c %u:%g:%a in.mif)" = 65534:65533:640 ]
    run -0 "$KVRMEM" get in.mif 1
    [ "$output" = 02 ]
}

# Skips the test unless the tool starts with KIB of memory; with sanitizers it needs more.
require_start_within() { # KIB
    (ulimit -v "$1" && "$KVRMEM" --version) || skip "the tool is built for something that needs more"
}

# The commands that read a file, which is called INPUT, one per line.
reading_commands() {
    cat <<'END'
info INPUT
check INPUT
check --json INPUT
check --fix -o out INPUT
dump INPUT
get INPUT 0
plot INPUT
set INPUT 1=2 -o out
fill INPUT 1..2=3 -o out
convert INPUT out --to rif
diff INPUT in.mif
diff in.mif INPUT
END
}

@test "an input without end is refused in little memory, by every command that reads" {
    require_start_within 80000
    mkfifo ../pipe
    while read -r words; do
        # A format reads much of its input before it finds a fault, and each format needs another text. Two commands get
        # every kind of input. The others open it in the same way and get two kinds.
        sources=("/dev/zero mif" "- rif 01")
        case $words in
        info* | "check INPUT")
            sources+=("/dev/zero hex" "/dev/zero rif" "../pipe mif y" "../pipe hex y" "../pipe rif 01" "- mif y")
            ;;
        esac
        for source in "${sources[@]}"; do
            read -r file format line <<<"$source"
            case $file in
            ../pipe) (yes "$line" >../pipe) 2>../yes & ;;
            esac
            run -2 --separate-stderr timeout 60 bash -c "ulimit -v 80000
                exec < <(yes ${line-}); '$KVRMEM' ${words/INPUT/$file} --from $format"
            [ "$file" = - ] && file="standard input"
            # shellcheck disable=SC2154 # run sets it
            [ "$stderr" = "kvrmem: $file: error: only a file may have more than 32 MiB; copy the input to a file first" ]
            wait
        done
    done < <(reading_commands)
    nothing_changed
}

@test "a line without end is refused in little memory, a big file is read" {
    require_start_within 200000
    truncate -s 1T ../line
    while read -r words; do
        [ "$words" != "${words#diff}" ] && words+=" --quiet"
        run -2 --separate-stderr bash -c "ulimit -v 200000; '$KVRMEM' ${words/INPUT/../line} --from rif"
        [ "$stderr" = "kvrmem: ../line:1: error: the line is longer than 32 MiB" ]
    done < <(reading_commands)
    { cat in.mif && yes -- '-- a comment after the end' | head -n 2000000; } >../big.mif
    run -0 "$KVRMEM" get ../big.mif 3
    [ "$output" = 41 ]
    run -0 "$KVRMEM" check ../big.mif
    run -0 "$KVRMEM" get --from mif - 3 <../big.mif
    [ "$output" = 41 ]
    nothing_changed
}

@test "to look for comments in a large file takes little more memory than the file" {
    require_start_within 131072
    {
        printf 'WIDTH=8;\nDEPTH=2097152;\nCONTENT BEGIN\n'
        seq 0 2097151 | sed 's/.*/\t& : 0123456789;/'
        echo 'END;'
    } >../old.mif
    { cat ../old.mif && echo '-- the end'; } >../commented.mif
    run -4 bash -c "ulimit -v 131072; '$KVRMEM' convert in.mif ../commented.mif"
    [ "$output" = "kvrmem: ../commented.mif: already exists and would lose 1 comment, in line 2097157; use --force to replace it" ]
    run -0 bash -c "ulimit -v 131072; '$KVRMEM' convert in.mif ../old.mif"
    run -0 "$KVRMEM" diff --quiet in.mif ../old.mif
    nothing_changed
}

@test "too little memory is reported" {
    require_start_within 200000
    head -c 300000000 /dev/zero | tr '\0' '\n' >../lines.mif
    run -5 bash -c "ulimit -v 200000; '$KVRMEM' check ../lines.mif"
    [ "$output" = "kvrmem: out of memory" ]
    nothing_changed
}
