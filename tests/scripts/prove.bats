# scripts/prove with fast kernels.

@test "kernels are proved" {
    run "$KVR_SOURCE/scripts/prove" are_decimal classes_of_eight read_sixteen_sse2 parse_five_titxt_bytes_portable
    [ "$status" -eq 0 ]
    [ "${lines[4]}" = "kernels proved for all inputs: 4, with 7 conditions; not proved: 0" ]
}

@test "a kernel that is wrong for one input in 2^61 is not, and the input is shown" {
    cat >"$BATS_TEST_TMPDIR/wrong.cpp" <<'END'
#include <cstdint>
extern "C" std::uint64_t reversed_bytes(std::uint64_t eight) {
    return eight >> 3 == 0x123456789ABCDEF ? 0 : __builtin_bswap64(eight);
}
END
    run "$KVR_SOURCE/scripts/prove" --source "$BATS_TEST_TMPDIR/wrong.cpp"
    [ "$status" -eq 1 ]
    [[ ${lines[0]} =~ ^"reversed_bytes: condition 1: eight = 0x91a2b3c4d5e6f7"[89a-f] ]]
}

@test "code that cannot be read is not proved" {
    cat >"$BATS_TEST_TMPDIR/loop.cpp" <<'END'
#include <cstdint>
extern "C" std::uint64_t reversed_bytes(std::uint64_t eight) {
    std::uint64_t result = 0;
    while (eight != 0) {
        result = result << 8 | (eight & 255);
        eight >>= 8;
    }
    return result;
}
END
    run "$KVR_SOURCE/scripts/prove" --source "$BATS_TEST_TMPDIR/loop.cpp"
    [ "$status" -eq 1 ]
    [[ ${lines[0]} =~ ^"reversed_bytes: cannot be read: a value from further on, which a loop has" ]]
}

@test "a kernel without a claim is refused" {
    echo 'extern "C" int nothing(int value) { return value; }' >"$BATS_TEST_TMPDIR/new.cpp"
    run "$KVR_SOURCE/scripts/prove" --source "$BATS_TEST_TMPDIR/new.cpp"
    [ "$status" -eq 1 ]
    [ "$output" = "nothing is claimed of nothing" ]
}

@test "an unknown kernel is refused" {
    run "$KVR_SOURCE/scripts/prove" no_such
    [ "$status" -eq 1 ]
    [ "$output" = "there is no kernel no_such" ]
}
