# The effect of the tool's build options in CMake, with KVR_SOURCE. Nothing is built.

bats_require_minimum_version 1.5.0

configure() { # [OPTION...]
    run cmake -S "$KVR_SOURCE" -B "$BATS_TEST_TMPDIR/build" -G Ninja -DCMAKE_CXX_COMPILER=g++ -DKVR_BUILD_TESTS=OFF "$@"
    echo "$output"
}

target_exists() { # NAME
    cmake --build "$BATS_TEST_TMPDIR/build" --target help | grep -q "^$1: "
}

@test "the tool is built where it can be" {
    configure
    [ "$status" -eq 0 ]
    target_exists kvrmem
}

@test "without one of its libraries the tool is left out, and the reason is shown" {
    for library in fmt nlohmann_json; do
        configure --fresh -DCMAKE_DISABLE_FIND_PACKAGE_$library=ON
        [ "$status" -eq 0 ]
        [[ $output == *"-- kvrmem is not built: the library $library is not found"* ]]
        run ! target_exists kvrmem
    done
}

@test "without Lua the tool is built without formulas, and the reason is shown" {
    configure --fresh -DCMAKE_FIND_ROOT_PATH="$BATS_TEST_TMPDIR" -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY
    [ "$status" -eq 0 ]
    [[ $output == *"-- expr is not built: the library lua5.4 is not found"* ]]
    target_exists kvrmem
    grep -q 'no_expression.cpp' "$BATS_TEST_TMPDIR/build/build.ninja"
}

@test "without stb the tool is left out, and the reason is shown" {
    configure --fresh -DCMAKE_FIND_ROOT_PATH="$BATS_TEST_TMPDIR" -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY
    [ "$status" -eq 0 ]
    [[ $output == *"-- kvrmem is not built: the library stb is not found"* ]]
    run ! target_exists kvrmem
}

@test "without fmt the library of memory images is left out, and the reason is shown" {
    configure -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
    [ "$status" -eq 0 ]
    [[ $output == *"-- kvrimage is not built: the library fmt is not found"* ]]
    run ! target_exists kvrimage
}

@test "the library of memory images is built without the library that only the tool needs" {
    configure -DCMAKE_DISABLE_FIND_PACKAGE_nlohmann_json=ON
    [ "$status" -eq 0 ]
    target_exists kvrimage
}

@test "a library of memory images that is requested and cannot be built is an error" {
    configure -DKVR_BUILD_IMAGE=ON -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
    [ "$status" -ne 0 ]
    [[ $output == *"kvrimage cannot be built: the library fmt is not found."* ]]
}

@test "a library that is installed later brings the tool back" {
    configure -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
    run ! target_exists kvrmem
    configure -DCMAKE_DISABLE_FIND_PACKAGE_fmt=OFF
    target_exists kvrmem
}

@test "a tool that is requested and cannot be built is an error" {
    configure -DKVR_BUILD_TOOL=ON -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
    [ "$status" -ne 0 ]
    [[ $output == *"kvrmem cannot be built: the library fmt is not found."* ]]
}

@test "the tool is linked statically only on request" {
    configure
    run ! grep -E 'LINK_FLAGS = .*-static( |$)' "$BATS_TEST_TMPDIR/build/build.ninja"
    configure -DKVR_STATIC_TOOL=ON
    grep -E 'LINK_FLAGS = .*-static( |$)' "$BATS_TEST_TMPDIR/build/build.ninja"
}
