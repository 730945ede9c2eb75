# The files of editors/vim in $EDITOR_PROGRAM, which is vim or neovim, without the user's configuration. The scripts in
# vim/ check their own results and write the failures.

setup() {
    cd "$BATS_TEST_TMPDIR"
    export HOME=$BATS_TEST_TMPDIR KVR_FAILURES=$BATS_TEST_TMPDIR/failures
    PATH=$(dirname "$KVRMEM"):$PATH
}

passes() { # SCRIPT
    run timeout 60 "$EDITOR_PROGRAM" -es -i NONE -n -u "$KVR_SOURCE/tests/editors/vim/vimrc" \
        -S "$KVR_SOURCE/tests/editors/vim/$1.vim" </dev/null
    echo "$output"
    cat failures
    [ "$status" -eq 0 ]
}

@test "a file gets the language of its contents" {
    passes languages
}

@test "syntax groups stand where they should" {
    passes highlight
}

@test "what the tool reports is in the quickfix list" {
    passes quickfix
}

@test "the help is in order" {
    passes help
}

@test "neovim starts the language server" {
    case $EDITOR_PROGRAM in
    *nvim) passes server ;;
    *) skip "vim has no client for language servers" ;;
    esac
}

@test "the folder is a package" {
    for site in .vim .local/share/nvim/site; do
        mkdir -p "$site/pack/kvr/start"
        ln -s "$KVR_SOURCE/editors/vim" "$site/pack/kvr/start/kvrmem"
    done
    printf '%s\n' 'set nocompatible' 'filetype plugin on' >vimrc
    run timeout 60 "$EDITOR_PROGRAM" -es -i NONE -n -u vimrc -c 'edit new.mif' \
        -c "call writefile([&filetype, &commentstring], 'found')" -c 'qall!' </dev/null
    diff found <(printf '%s\n' kvr-mif '-- %s')
}

@test "g:loaded_kvrmem switches detection off" {
    printf '%s\n' 'let g:loaded_kvrmem = 1' 'source $KVR_SOURCE/tests/editors/vim/vimrc' >vimrc
    run timeout 60 "$EDITOR_PROGRAM" -es -i NONE -n -u vimrc -c 'edit new.mif' \
        -c "call writefile([&filetype], 'found')" -c 'qall!' </dev/null
    diff found <(echo)
}
