# scripts/matrix as far as it builds nothing.

@test "every configuration is listed once, with what is done in it" {
    run "$KVR_SOURCE/scripts/matrix" --list
    [ "$status" -eq 0 ]
    [ "${#lines[@]}" -gt 10 ]
    [ -z "$(printf '%s\n' "${lines[@]}" | awk '{ print $1 }' | sort | uniq --repeated)" ]
    for line in "${lines[@]}"; do
        [[ $line =~ (unit|replay|memcheck) ]]
    done
}

@test "a configuration that there is not is refused, whatever stands beside it" {
    run "$KVR_SOURCE/scripts/matrix" gcc-debug no-such
    [ "$status" -eq 4 ]
    [ "$output" = "matrix: there is no configuration 'no-such'; see matrix --list" ]
}
