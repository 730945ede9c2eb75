# The parts of scripts/matrix that build nothing.

@test "every configuration is listed once, with what is done in it" {
    run "$KVR_SOURCE/scripts/matrix" --list
    [ "$status" -eq 0 ]
    [ "${#lines[@]}" -gt 10 ]
    [ -z "$(printf '%s\n' "${lines[@]}" | awk '{ print $1 }' | sort | uniq --repeated)" ]
    for line in "${lines[@]}"; do
        [[ $line =~ (unit|replay|memcheck) ]]
    done
}

@test "an unknown configuration is refused, whatever else is named" {
    run "$KVR_SOURCE/scripts/matrix" gcc-debug no-such
    [ "$status" -eq 4 ]
    [ "$output" = "matrix: there is no configuration 'no-such'; see matrix --list" ]
}

counts_in() { # OUTPUT SUCCEEDED
    PYTHONPATH=$KVR_SOURCE/scripts/build_matrix python3 -B -c \
        'import sys; from trial import counts_in; print(counts_in(sys.argv[1], sys.argv[2] == "True"))' "$1" "$2"
}

@test "tests and failures of every repetition are counted" {
    output=$(printf '%s\n' '[==========] 12 tests from 3 test suites ran. (5 ms total)' \
        '[==========] 12 tests from 3 test suites ran. (5 ms total)' '[  FAILED  ] 2 tests, listed below:')
    [ "$(counts_in "$output" False)" = "Counts(tests=24, failures=2)" ]
    [ "$(counts_in '90% tests passed, 1 tests failed out of 10' False)" = "Counts(tests=10, failures=1)" ]
}

@test "a program that fails without a failing test counts as a failure" {
    [ "$(counts_in '[==========] 1 test from 1 test suite ran. (0 ms total)' False)" = "Counts(tests=1, failures=1)" ]
    [ "$(counts_in '[==========] 1 test from 1 test suite ran. (0 ms total)' True)" = "Counts(tests=1, failures=0)" ]
}
