# What CMake makes of the options of the tool, in KVR_SOURCE. Nothing is built.

bats_require_minimum_version 1.5.0

configure() { # [OPTION...]
    run cmake -S "$KVR_SOURCE" -B "$BATS_TEST_TMPDIR/build" -G Ninja -DCMAKE_CXX_COMPILER=g++ -DKVR_BUILD_TESTS=OFF "$@"
    echo "$output"
}

tool_is_a_target() {
    cmake --build "$BATS_TEST_TMPDIR/build" --target help | grep -q '^kvrmem: '
}

@test "the tool is built where it can be" {
    configure
    [ "$status" -eq 0 ]
    tool_is_a_target
}

@test "without one of its libraries the tool is left out, and the reason is shown" {
    for library in fmt nlohmann_json; do
        configure --fresh -DCMAKE_DISABLE_FIND_PACKAGE_$library=ON
        [ "$status" -eq 0 ]
        [[ $output == *"-- kvrmem is not built: the library $library is not found"* ]]
        run ! tool_is_a_target
    done
}

@test "a library that is installed later brings the tool back" {
    configure -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
    run ! tool_is_a_target
    configure -DCMAKE_DISABLE_FIND_PACKAGE_fmt=OFF
    tool_is_a_target
}

@test "a tool that is asked for and cannot be built is an error" {
    configure -DKVR_BUILD_TOOL=ON -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
    [ "$status" -ne 0 ]
    [[ $output == *"kvrmem cannot be built: the library fmt is not found."* ]]
}

@test "the tool is linked statically only if that is asked for" {
    configure
    run ! grep -E 'LINK_FLAGS = .*-static( |$)' "$BATS_TEST_TMPDIR/build/build.ninja"
    configure -DKVR_STATIC_TOOL=ON
    grep -E 'LINK_FLAGS = .*-static( |$)' "$BATS_TEST_TMPDIR/build/build.ninja"
}
