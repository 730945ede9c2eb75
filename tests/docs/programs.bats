# The programs of examples/programs, with the tool and the library installed in KVR_STAGE/static. Another test compares
# the output of the scripts with their README.

setup() {
    programs=$KVR_SOURCE/examples/programs
    PATH=$KVR_STAGE/static/bin:$PATH
    cd "$BATS_TEST_TMPDIR"
}

@test "the ROM image is built as a program of its own and holds the formula" {
    cp -R "$programs/rom_image" .
    cmake -S rom_image -B build -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_COMPILE_WARNING_AS_ERROR=ON \
        "-DCMAKE_PREFIX_PATH=$KVR_STAGE/static"
    cmake --build build
    build/rom_image sine.mif
    [ "$(kvrmem get --radix uns sine.mif 0..2 31 63 | tr '\n' ' ')" = "50 151 251 2860 4095 " ]
    [ "$(kvrmem check sine.mif)" = "sine.mif: no faults" ]
    [ "$(kvrmem info sine.mif | grep -E '^(width|depth)' | tr -s ' \n' ' ')" = "width 12 depth 64 " ]
}

@test "the ROM image that cannot be written ends with an exit code" {
    g++ -std=c++17 "-I$KVR_STAGE/static/include" "$programs/rom_image/rom_image.cpp" \
        "$(find "$KVR_STAGE/static" -name libkvr.a)" -o rom_image
    run ./rom_image nowhere/sine.mif
    [ "$status" -eq 3 ]
    [ "$output" = "Memory file cannot be opened.  Memory file -- nowhere/sine.mif -- not found. " ]
}

@test "a build number is stamped into one word and no other byte" {
    "$programs/stamp_build" "$KVR_SOURCE/examples/program_32bit.mif" out.mif 0x3F 7
    run diff "$KVR_SOURCE/examples/program_32bit.mif" out.mif
    [ "${#lines[@]}" -eq 4 ]
    [[ ${lines[3]} == *"3f  :   00000007;"* ]]
}

@test "a build number that does not fit, and an address without a word, leave no file" {
    run "$programs/stamp_build" "$KVR_SOURCE/examples/font_1bit.mif" out.mif 0 2
    [ "$status" -eq 4 ]
    run "$programs/stamp_build" "$KVR_SOURCE/examples/font_1bit.mif" out.mif 0x1000 1
    [ "$status" -eq 2 ]
    [ ! -e out.mif ]
}

@test "a folder is converted, and a file that cannot be is named" {
    mkdir 'in folder'
    cp "$KVR_SOURCE/examples/sine_16bit.mif" 'in folder/a sine.mif'
    cp "$KVR_SOURCE/examples/palette_16bit.rif" 'in folder'
    run "$programs/convert_folder" 'in folder' 'out folder' hex
    [ "$status" -eq 1 ]
    [[ $output == *"palette_16bit.rif:6:1: error:"* ]]
    [ "$(ls 'out folder')" = "a sine.hex" ]
    kvrmem diff --width 16 'in folder/a sine.mif' 'out folder/a sine.hex'
}

@test "options of the conversion are passed on" {
    mkdir in
    printf ':0200000012AB41\n:0200020034CDFB\n:00000001FF\n' >in/a.hex
    run "$programs/convert_folder" in out mif --width 16 --address-unit word --fill 7
    echo "$output"
    [ "$status" -eq 0 ]
    [ "$(kvrmem get out/a.mif 0..2 | tr '\n' ' ')" = "12AB 0007 34CD " ]
}

@test "a job succeeds when all memories are valid, also with blanks in their names" {
    mkdir 'a folder'
    cp "$KVR_SOURCE/examples/sine_16bit.mif" 'a folder/a sine.mif'
    run "$programs/check_memories"
    [ "$status" -eq 0 ]
    [ "$output" = "./a folder/a sine.mif: no faults" ]
}

@test "a job fails when a memory is broken, and when there is none" {
    mkdir empty deep deep/er
    printf ':00000001FE\n' >deep/er/boot.hex
    run "$programs/check_memories" deep
    [ "$status" -eq 1 ]
    [[ $output == *"deep/er/boot.hex:1:10: error: checksum is FE, the record adds up to FF"* ]]
    run "$programs/check_memories" empty
    [ "$status" -eq 1 ]
    [ "$output" = "check_memories: there are no memory files in empty" ]
}

@test "the commands of the job do what they say" {
    mkdir -p kvr/scripts kvr/examples memories
    ln -s "$KVR_STAGE/static/bin/kvrmem" kvr/scripts/kvrmem
    ln -s "$programs" kvr/examples/programs
    cp "$KVR_SOURCE/examples/sine_16bit.mif" memories
    sed -n 's/^    - //p' "$programs/check_memories.yml" >job
    [ "$(wc -l <job)" -eq 2 ]
    run env PATH=/usr/bin:/bin sh -eu job
    echo "$output"
    [ "$status" -eq 0 ]
    [ "$output" = "memories/sine_16bit.mif: no faults" ]
    echo '0 : 1;' >memories/broken.mif
    run env PATH=/usr/bin:/bin sh -eu job
    [ "$status" -eq 1 ]
}
