# The contents of the SVG files of kvrmem plot and their positions, as xmllint reads them.

setup() {
    cd "$BATS_TEST_TMPDIR"
    PATH=$(dirname -- "$KVRMEM"):$PATH
    examples=$KVR_SOURCE/examples
    # The layout in pixels, and the distance that extreme values keep from the frame.
    left=96 right=920 top=64 bottom=328 margin=6
}

memory() { # FILE WIDTH DEPTH CONTENT
    printf 'WIDTH=%s;\nDEPTH=%s;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n%s\nEND;\n' \
        "$2" "$3" "$4" >"$1"
}

plot() { # FILE [OPTION...], to out.svg
    kvrmem plot "$@" -o out.svg
    is_sound out.svg
}

is_sound() {
    xmllint --noout --nonet "$1"
    [ "$(wc -c <"$1")" -lt 500000 ]
    ! grep -Eiq '[^a-z](nan|inf)[^a-z]' "$1"
}

text() { # XPATH
    xmllint --xpath "string($1)" out.svg
}

count() { # XPATH
    xmllint --xpath "count($1)" out.svg
}

path() { # CLASS
    text "//*[@class='$1']/@d"
}

# "X Y" for the start of each step of the waveform.
steps() {
    path wave | sed 's/M/\n/; s/H/\n/g' | sed 's/V/ /' | grep ' '
}

@test "every example is well-formed and names its file" {
    for file in "$examples"/*.*; do
        # The options that some files need.
        case ${file##*/} in
            *.elf) kvrmem formats | grep -q '^elf ' || continue ;;& # the tool may be built without it
            boot_32bit.s37 | firmware_32bit.elf) options=(--base 0x80000000) ;;
            digits_7bit.dat) options=(--from readmemb) ;;
            window_12bit.csv) options=(--width 12 --value-radix fixed:1.11) ;;
            *) options=() ;;
        esac
        plot "$file" "${options[@]}"
        [ "$(text '//*[@class="name"]')" = "${file##*/}" ]
        if [ "$(kvrmem info "$file" "${options[@]}" | awk '$1 == "width" { print $2 }')" -le 64 ]; then # else a map of bits
            plot "$file" "${options[@]}" --signed
            [ "$(text '//*[@class="name"]')" = "${file##*/}" ]
        fi
    done
}

@test "title and axes say what is shown" {
    plot "$examples/sine_16bit.mif" --signed
    [ "$(text '//*[local-name()="title"]')" = "sine_16bit.mif: MIF, 256 words of 16 bits, all set" ]
    [ "$(text '//*[@class="title"]')" = "MIF, 256 words of 16 bits, all set" ]
    [ "$(count '//*[.="value (signed, 16 bits)"]')" = 1 ]
    [ "$(count '//*[.="address (words)"]')" = 1 ]
    [ "$(count '//*[@class="legend"]')" = 2 ]
}

@test "ticks are round values and hexadecimal addresses" {
    plot "$examples/sine_16bit.mif" --signed
    [ "$(xmllint --xpath '//*[@class="end value"]/text()' out.svg | tr '\n' ' ')" = \
        "-30000 -20000 -10000 0 10000 20000 30000 " ]
    [ "$(xmllint --xpath '//*[@class="middle address"]/text()' out.svg | tr '\n' ' ')" = \
        "0x00 0x10 0x20 0x30 0x40 0x50 0x60 0x70 0x80 0x90 0xA0 0xB0 0xC0 0xD0 0xE0 0xF0 0xFF " ]
}

@test "the sine has its maximum and its minimum where they belong" {
    plot "$examples/sine_16bit.mif" --signed
    [ "$(steps | sort -n -k 2 | head -n 1)" = "$((left + 64 * (right - left) / 256)) $((top + margin))" ]
    [ "$(steps | sort -n -k 2 | tail -n 1)" = "$((left + 192 * (right - left) / 256)) $((bottom - margin))" ]
    [ "$(steps | head -n 1)" = "$left $(((top + bottom) / 2))" ]
}

@test "unsigned, the second half of the sine is above the first" {
    plot "$examples/sine_16bit.mif"
    # -804 is the greatest unsigned value; it is at the addresses 129 and 255.
    [ "$(steps | grep " $((top + margin))\$")" = $'511.22 70\n916.78 70' ]
    [ "$(steps | head -n 1)" = "$left $((bottom - margin))" ]
}

@test "several words a column are an envelope" {
    memory in.mif 8 4944 '[0..134F] : 0 FF;' # three words per column
    plot in.mif
    [ "$(count '//*[@class="wave"]')" = 0 ]
    [ "$(path envelope)" = "M$left $((top + margin))H${right}V$((bottom - margin))H${left}Z" ]
}

@test "words that are not set leave a gap and their place in the strip" {
    memory in.mif 8 4 $'0 : 1 1;\n3 : 2;'
    plot in.mif
    [ "$(path wave)" = "M96 196H508M714 70H920" ]
    [ "$(path run)" = "M96 336H508v14H96z" ]
    [ "$(path unset)" = "M508 336H714v14H508z" ]
    [ "$(path set)" = "M714 336H920v14H714z" ]
}

@test "a line stands between two runs" {
    memory in.mif 8 4 '0 : 1 1 2 2;'
    plot in.mif
    [ "$(path begin)" = "M508 336v14" ]
}

@test "a lone word in a large memory is between two breaks" {
    memory in.mif 8 2000000000 '3B9ACA00 : 1;'
    plot in.mif
    [ -n "$(path set)" ]
    [ "$(text '//*[@class="note"]')" = "2 breaks leave out 1999999997 unset words" ]
    [ "$(xmllint --xpath '//*[@class="middle address"]/text()' out.svg | tr '\n' ' ')" = \
        "0x00000000 0x3B9ACA00 0x773593FF " ]
    [ "$(path break | tr M '\n' | grep -c l)" = 2 ]
}

@test "bars of signed values grow from zero" {
    memory in.mif 8 2 '0 : 80 7F;'
    plot in.mif --signed
    [ "$(path zero)" = "M96 195.51H920" ]
    [ "$(path bar)" = "M96 195.51V322H508V70H920V195.51Z" ]
}

@test "dark colours are for those who prefer them" {
    plot "$examples/sine_16bit.mif"
    [[ $(text '//*[local-name()="style"]') == *"@media (prefers-color-scheme:dark){"*".page{fill:#1c1c1c}"*"}" ]]
    [ "$(count '//*[@class="page"]')" = 1 ]
    [ "$(count '//@fill')" = 0 ] # all colors come from the style sheet
}

@test "the differences of two memories have a lane for each kind" {
    memory a.mif 8 8 '[0..3] : 1;'
    memory b.mif 8 8 '[2..5] : 2;'
    plot a.mif b.mif
    [ "$(text '//*[@class="name"]')" = "A: a.mif  B: b.mif" ]
    [ "$(text '//*[@class="title"]')" = "2 words changed, 2 only in A, 2 only in B" ]
    [ "$(path changed)" = "M302 144v-80H508v80z" ]
    [ "$(path left)" = "M96 236v-80H302v80z" ]
    [ "$(path right)" = "M508 328v-80H714v80z" ]
}

@test "a word of don't-care bits has a band of its own" {
    memory in.mif 8 4 '0 : 1 XX 2 3;'
    plot in.mif
    [ "$(text '//*[@class="care"][1]/@d')" = "M302 64H508v264H302z" ]
    [ "$(path care)" = "M302 64H508v264H302z" ] # the first one; the other one is in the strip
    [ "$(count '//*[@class="care"]')" = 2 ]
}

@test "a memory of which nothing is set says so" {
    memory in.mif 16 256 ''
    plot in.mif
    [ "$(text '//*[@class="title"]')" = "MIF, 256 words of 16 bits, none set" ]
    [ "$(count '//*[@class="wave"]')" = 0 ]
}

@test "extreme widths and values are sound" {
    for width in 1 63 64 65 1048576; do
        for words in 0 1 '1 0'; do
            for depth in 2 3; do
                memory in.mif $width $depth "0 : $words;"
                plot in.mif
                [ "$width" -gt 64 ] || plot in.mif --signed # a map of bits has no sign
            done
        done
    done
    memory in.mif 64 2 '0 : 8000000000000000 7FFFFFFFFFFFFFFF;'
    plot in.mif --signed
    [ "$(path wave)" = "M$left $((bottom - margin))H508V$((top + margin))H$right" ]
}

@test "an envelope goes back along the least values" {
    memory in.mif 8 3296 "$(for address in $(seq 0 3295); do printf '%X : %X;\n' "$address" $((address / 1648 * 4 + address % 2)); done)"
    plot in.mif
    # Two words per column: 0 and 1 in the left half, 4 and 5 in the right half.
    half=$(((left + right) / 2))
    low=$(awk "BEGIN { print $bottom - $margin - 4 * ($bottom - $top - 2 * $margin) / 5 }")
    [[ $(path envelope) == *"H${right}V${low}H${half}V$((bottom - margin))H${left}Z" ]]
}

@test "a map shows each bit in its place" {
    memory in.mif 66 3 $'0 : 1;\n1 : 20000000000000000;\n2 : 0;'
    plot in.mif
    [ "$(count '//*[@class="wave"]')" = 0 ]
    [ "$(path all)" = "M1 0h1M0 65h1" ] # bit 65 is the first row, bit 0 the last
    [ "$(count '//*[@class="legend"]')" = 3 ] # none, all, and set
}

@test "don't-care bits have a shade of their own" {
    plot "$examples/constants_128bit.mif"
    [ "$(path care)" = "M15 120h1M15 121h1M15 122h1M15 123h1M15 124h1M15 125h1M15 126h1M15 127h1" ]
}

@test "a large map of random bits is a small file" {
    awk 'BEGIN {
        print "WIDTH=128; \nDEPTH=10000;\nADDRESS_RADIX=UNS;\nDATA_RADIX=HEX;\nCONTENT BEGIN"
        seed = 1
        for (address = 0; address < 10000; ++address) {
            line = address " : "
            for (part = 0; part < 8; ++part) {
                seed = (seed * 16807) % 2147483647
                line = line sprintf("%04X", int(seed / 8) % 65536)
            }
            print line ";"
        }
        print "END;" }' >in.mif
    plot in.mif
    [ "$(count '//*[@class="half"]')" = 1 ]
}

@test "billions of words take no time, of one word or of several" {
    memory in.mif 16 2147483647 '[0..7FFFFFFE] : 1234;'
    timeout 5 kvrmem plot in.mif --depth 4294967295 -o out.svg
    is_sound out.svg
    [ "$(text '//*[@class="title"]')" = "MIF, 4294967295 words of 16 bits, 2147483647 set" ]
    memory in.mif 16 2147483647 '[0..7FFFFFFE] : 1 2 3;'
    timeout 60 kvrmem plot in.mif -o out.svg
    is_sound out.svg
    [ "$(text '//*[@class="title"]')" = "MIF, 2147483647 words of 16 bits, all set" ]
    [ "$(text '//*[@class="note"]')" = "sampled: 64 runs at each of 16 places a column" ]
}

@test "names of any bytes make well-formed files" {
    memory in.mif 8 2 '0 : 1 2;'
    while IFS= read -r name; do
        # shellcheck disable=SC2059  # the name is a format on purpose
        file=$(printf "$name")
        cp in.mif "./$file"
        plot "./$file" --from mif
        [ -n "$(text '//*[@class="name"]')" ]
        rm "./$file"
    done <<'NAMES'
<script>alert("1")
a & b &amp; &lt; ]]> <!-- -- 'c' "d"
\001\002\010\011\013\014\033\037\177
\377\376\200\300\257
\355\240\200 \357\277\277 \364\220\200\200
\342\200\256 \302\205 \303
%%s %%n {} {0}
NAMES
}

@test "a name is shown as it is, and without its folders" {
    mkdir 'a&b'
    memory 'a&b/<x> & "y".mif' 8 1 '0 : 1;'
    plot 'a&b/<x> & "y".mif'
    [ "$(text '//*[@class="name"]')" = '<x> & "y".mif' ]
}

@test "a name of many characters loses its middle, not half of a character" {
    name=$(printf '\303\244%.0s' {1..100})
    memory "$name" 8 1 '0 : 1;'
    plot "$name" --from mif
    first=$(printf '\303\244%.0s' {1..40})
    last=$(printf '\303\244%.0s' {1..39})
    [ "$(text '//*[@class="name"]')" = "$first…$last" ]
    [ "$(text '//*[local-name()="title"]')" = "$name: MIF, 1 word of 8 bits, all set" ]
}

@test "standard output gets what a file gets" {
    plot "$examples/gamma_9bit.mif"
    kvrmem plot "$examples/gamma_9bit.mif" -o - | cmp - out.svg
}

@test "the picture in the documentation is today's" {
    plot "$examples/sine_16bit.mif" --signed
    cmp out.svg "$KVR_SOURCE/docs/images/sine_16bit.svg"
}
