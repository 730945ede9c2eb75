# The files of editors/emacs, without the user's configuration.

setup() {
    cd "$BATS_TEST_TMPDIR"
    export HOME=$BATS_TEST_TMPDIR
}

@test "the modes are compiled without a warning" {
    cp "$KVR_SOURCE/editors/emacs/kvrmem.el" .
    run emacs --batch -Q --eval '(setq byte-compile-error-on-warn t)' -f batch-byte-compile kvrmem.el
    echo "$output"
    [ "$status" -eq 0 ]
    [ -z "$output" ]
}

@test "the modes do what they should" {
    run timeout 60 emacs --batch -Q -L "$KVR_SOURCE/editors/emacs" -l "$KVR_SOURCE/tests/editors/emacs_test.el" \
        -f ert-run-tests-batch-and-exit
    echo "$output"
    [ "$status" -eq 0 ]
}
