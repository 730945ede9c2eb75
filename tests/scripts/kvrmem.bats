# scripts/kvrmem in a separate checkout whose tool reports its arguments: the tests are about the script, not about the
# tool.

setup() {
    checkout="$BATS_TEST_TMPDIR/a check out"
    if [ ! -d "$BATS_FILE_TMPDIR/built" ]; then
        make_checkout
        "$checkout/scripts/kvrmem" >"$BATS_FILE_TMPDIR/first-call" 2>&1 || true
        mv "$checkout" "$BATS_FILE_TMPDIR/built"
    fi
    cp -R "$BATS_FILE_TMPDIR/built" "$checkout"
}

make_checkout() {
    mkdir -p "$checkout/tools/kvrmem"
    cp -R "$KVR_SOURCE/scripts" "$KVR_SOURCE/CMakePresets.json" "$checkout"
    cat >"$checkout/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.24)
project(stand_in LANGUAGES CXX)
add_subdirectory(tools/kvrmem)
END
    echo 'add_executable(kvrmem main.cpp)' >"$checkout/tools/kvrmem/CMakeLists.txt"
    tool_says one
}

tool_says() { # WORD
    cat >"$checkout/tools/kvrmem/main.cpp" <<END
#include <filesystem>
#include <iostream>

int main(int count, char** arguments) {
    std::cout << "$1\n" << std::filesystem::current_path().string() << "\n";
    for (int index = 1; index < count; ++index) {
        std::cout << "<" << arguments[index] << ">\n";
    }
    std::cout << std::cin.rdbuf();
    return 7;
}
END
}

kvrmem() {
    run "$checkout/scripts/kvrmem" "$@" </dev/null
    echo "$output"
}

@test "the first call says nothing of its own" {
    run head -n 1 "$BATS_FILE_TMPDIR/first-call"
    [ "$output" = "one" ]
}

@test "arguments and working directory reach the tool" {
    mkdir "$BATS_TEST_TMPDIR/somewhere else"
    cd "$BATS_TEST_TMPDIR/somewhere else"
    kvrmem "two words" "" '*'
    [ "${lines[0]}" = "one" ]
    [ "${lines[1]}" = "$BATS_TEST_TMPDIR/somewhere else" ]
    [ "${lines[2]}" = "<two words>" ]
    [ "${lines[3]}" = "<>" ]
    [ "${lines[4]}" = "<*>" ]
}

@test "the standard input is the tool's" {
    run "$checkout/scripts/kvrmem" < <(echo "from afar")
    [ "${lines[2]}" = "from afar" ]
}

@test "the exit code is the tool's" {
    kvrmem
    [ "$status" -eq 7 ]
}

@test "a changed source is built first" {
    tool_says two
    kvrmem
    [ "${lines[0]}" = "two" ]
}

@test "changed presets are configured first" {
    sed -i 's/"CMAKE_BUILD_TYPE": "Release"/"CMAKE_BUILD_TYPE": "MinSizeRel"/' "$checkout/CMakePresets.json"
    kvrmem
    [ "$status" -eq 7 ]
    grep 'CMAKE_BUILD_TYPE:.*=MinSizeRel' "$checkout/build/release/CMakeCache.txt"
}

@test "a build that fails is shown and the tool is not run" {
    echo 'int main() { return undeclared_name; }' >"$checkout/tools/kvrmem/main.cpp"
    status=0
    "$checkout/scripts/kvrmem" </dev/null >"$BATS_TEST_TMPDIR/output" 2>"$BATS_TEST_TMPDIR/errors" || status=$?
    [ "$status" -eq 5 ]
    [ ! -s "$BATS_TEST_TMPDIR/output" ]
    grep undeclared_name "$BATS_TEST_TMPDIR/errors"
}

@test "a copied checkout builds its own sources" {
    # setup() has made this copy; the tool of the original checkout is unchanged.
    tool_says two
    kvrmem
    [ "${lines[0]}" = "two" ]
    run "$BATS_FILE_TMPDIR/built/scripts/kvrmem" </dev/null
    [ "${lines[0]}" = "one" ]
}

@test "a link to the script is as good as the script" {
    ln -s "$checkout/scripts/kvrmem" "$BATS_TEST_TMPDIR/link"
    run "$BATS_TEST_TMPDIR/link" </dev/null
    [ "${lines[0]}" = "one" ]
}

@test "two first calls at once both reach the tool" {
    rm -rf "$checkout/build"
    "$checkout/scripts/kvrmem" first </dev/null >"$BATS_TEST_TMPDIR/first" 2>&1 &
    run "$checkout/scripts/kvrmem" second </dev/null
    [ "${lines[2]}" = "<second>" ]
    wait $! || true
    grep '<first>' "$BATS_TEST_TMPDIR/first"
}
