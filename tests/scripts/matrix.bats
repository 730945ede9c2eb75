# The parts of scripts/matrix that build nothing.

@test "every configuration is listed once, with what is done in it" {
    run "$KVR_SOURCE/scripts/matrix" --list
    [ "$status" -eq 0 ]
    [ "${#lines[@]}" -gt 10 ]
    [ -z "$(printf '%s\n' "${lines[@]}" | awk '{ print $1 }' | sort | uniq --repeated)" ]
    for line in "${lines[@]}"; do
        [[ $line =~ (unit|replay|memcheck|other_tools|mcdc) ]]
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

mcdc() { # CODE
    PYTHONPATH=$KVR_SOURCE/scripts/build_matrix python3 -B -c "from mcdc import *; $1"
}

# The output of llvm-cov for a template in a header. The first instance does not cover conditions 2 and 3. In the second
# one, condition 1 is constant and condition 2 is covered.
shown_header() {
    printf '%s\n' "$KVR_SOURCE/kvr/export.h:" '    1|       |#pragma once' '  | _Z1fILi1EEbbb:' \
        '  |  |---> MC/DC Decision Region (1:2) to (1:8)' '  |  |  C1-Pair: covered: (1,2)' \
        '  |  |  C2-Pair: not covered' '  |  |  C3-Pair: not covered' \
        '  |  |---> MC/DC Decision Region (1:2) to (1:8)' '  |  |  C1-Pair: constant folded' \
        '  |  |  C2-Pair: covered: (1,2)' '  |  |  C3-Pair: not covered'
}

@test "a condition is covered when at least one instance of its decision covers it" {
    run mcdc "import sys; print([(place.path, place.text, each.missing) for place, each in decisions_in(sys.stdin).items()])" \
        < <(shown_header)
    [ "$output" = "[('kvr/export.h', 'pragma', [3])]" ]
}

report_with() { # EXCEPTIONS
    mcdc "import sys; print(report(decisions_in(sys.stdin), exceptions_in('''$1''')))" < <(shown_header)
}

@test "a decision that is not covered is reported, unless it is excepted" {
    run report_with ''
    [ "${lines[0]}" = "kvr/export.h:1: condition 3 is not covered: pragma" ]
    [ "${lines[1]}" = False ]
    run report_with "$(printf '%s\n' '# a list' 'kvr/export.h' pragma 'the reason')"
    [ "$output" = True ]
}

@test "an exception that is not needed is reported" {
    run report_with "$(printf '%s\n' 'kvr/export.h' pragma 'the reason' '' 'kvr/kvr.h' 'a && b' 'the reason')"
    [ "${lines[0]}" = "kvr/kvr.h: an exception that is not needed: a && b" ]
    [ "${lines[1]}" = False ]
}
