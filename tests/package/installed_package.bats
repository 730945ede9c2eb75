# KVR_STAGE contains the installed packages "static" and "shared", KVR_SOURCE their source tree, and KVR_TREE_CONSUMER
# programs with kvr in their own tree.

setup_file() {
    # The place of installation is empty from here on: a path that still points to it fails.
    first=$BATS_FILE_TMPDIR/first
    moved="$BATS_FILE_TMPDIR/moved elsewhere"
    mkdir "$first" "$moved"
    cp -R "$KVR_STAGE/static" "$KVR_STAGE/shared" "$first"
    cp -R "$KVR_STAGE/static" "$KVR_STAGE/shared" "$moved"
    memory=$BATS_FILE_TMPDIR/table.mif
    printf '%s\n' 'WIDTH=8;' 'DEPTH=4;' 'ADDRESS_RADIX=HEX;' 'DATA_RADIX=BIN;' 'CONTENT BEGIN' \
        '0 : 00101010;' '[1..3] : 00000000;' 'END;' >"$memory"
    export first moved memory
}

configure_consumer() { # PREFIX [OPTION...]
    prefix=$1
    shift
    cmake -S "$KVR_SOURCE/tests/consumer/find_package" -B "$BATS_TEST_TMPDIR/consumer" -G Ninja \
        -DCMAKE_CXX_COMPILER=g++ -DCMAKE_COMPILE_WARNING_AS_ERROR=ON "-DCMAKE_PREFIX_PATH=$prefix" "$@"
}

says_what_is_in_the_memory() {
    run "$@" "$memory"
    echo "$output"
    [ "$status" -eq 0 ]
    [ "$output" = "4 words of 8 bits, the first is 2A" ]
}

uses_it_through_find_package() { # PREFIX
    configure_consumer "$1"
    cmake --build "$BATS_TEST_TMPDIR/consumer"
    "$BATS_TEST_TMPDIR/consumer/exported_interface/kvr_exported_interface"
    says_what_is_in_the_memory "$BATS_TEST_TMPDIR/consumer/consumer"
    says_what_is_in_the_memory "$BATS_TEST_TMPDIR/consumer/image_consumer"
}

uses_it_through_pkg_config() { # PREFIX
    pc=$(find "$1" -name kvr.pc)
    PKG_CONFIG_PATH=${pc%/*} "$KVR_SOURCE/tests/consumer/with_pkg_config" "$BATS_TEST_TMPDIR/consumer"
    PKG_CONFIG_PATH=${pc%/*} "$KVR_SOURCE/tests/consumer/with_pkg_config" "$BATS_TEST_TMPDIR/image_consumer" kvrimage
    library=$(find "$1" -name 'libkvr.*' | head -n 1)
    export LD_LIBRARY_PATH=${library%/*}
    says_what_is_in_the_memory "$BATS_TEST_TMPDIR/consumer"
    says_what_is_in_the_memory "$BATS_TEST_TMPDIR/image_consumer"
}

@test "the tree is used through add_subdirectory" {
    says_what_is_in_the_memory "$KVR_TREE_CONSUMER/consumer"
    says_what_is_in_the_memory "$KVR_TREE_CONSUMER/image_consumer"
}

@test "a static package is used through find_package" {
    uses_it_through_find_package "$first/static"
}

@test "a shared package is used through find_package" {
    uses_it_through_find_package "$first/shared"
}

@test "a static package is used through pkg-config" {
    uses_it_through_pkg_config "$first/static"
}

@test "a shared package is used through pkg-config" {
    uses_it_through_pkg_config "$first/shared"
}

@test "a moved static package is used through find_package" {
    uses_it_through_find_package "$moved/static"
}

@test "a moved shared package is used through find_package" {
    uses_it_through_find_package "$moved/shared"
}

@test "a moved static package is used through pkg-config" {
    uses_it_through_pkg_config "$moved/static"
}

@test "a moved shared package is used through pkg-config" {
    uses_it_through_pkg_config "$moved/shared"
}

@test "no installed file names the place where it was installed or built" {
    run grep -rlF -e "$KVR_STAGE" -e "$KVR_SOURCE" "$KVR_STAGE"
    echo "$output"
    [ "$status" -eq 1 ]
}

@test "a request for another version is refused" {
    installed=$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")$/\1/p' "$first"/static/lib*/cmake/kvr/kvr-config-version.cmake)
    minor=$(cut -d . -f 2 <<<"$installed")
    for version in 0.$((minor - 1)) 0.$((minor + 1)) 1.0; do
        run configure_consumer "$first/static" -DWANTED_VERSION=$version
        [ "$status" -ne 0 ]
        [[ $output == *"kvr-config.cmake, version: $installed"* ]]
    done
}

@test "the installed headers are those that the umbrella reaches, no more and no less" {
    cd "$first/static/include"
    for library in kvr kvrimage; do
        installed=$(find $library -type f | sort)
        reached=$(g++ -std=c++20 -MM -I. $library/$library.h | tr -s ' \\' '\n' | grep -v ':$' | sort -u |
            sed '/^$/d;s|^\./||')
        diff <(echo "$reached") <(echo "$installed")
    done
}

@test "the installed tool is linked dynamically, as programs are" {
    objdump --private-headers "$first/static/bin/kvrmem" | grep -E 'NEEDED +libstdc\+\+\.so'
    objdump --private-headers "$first/static/bin/kvrmem" | grep -E 'NEEDED +libfmt\.so'
}

@test "the installed tool runs" {
    run "$first/static/bin/kvrmem" info "$memory"
    echo "$output"
    [ "$status" -eq 0 ]
}

@test "the manual pages and the completions are installed" {
    cd "$first/static/share"
    groff -ww -man -Tutf8 man/man1/kvrmem.1 | grep -q 'KVRMEM(1)'
    commands=$("$first/static/bin/kvrmem" --help | sed -n '/^Commands$/,/^$/s/^  \([a-z]*\) .*/\1/p')
    [ -n "$commands" ]
    for command in $commands; do
        "$first/static/bin/kvrmem" --generate man "$command" | cmp - "man/man1/kvrmem-$command.1"
    done
    for kind in man:man/man1/kvrmem.1 bash:bash-completion/completions/kvrmem zsh:zsh/site-functions/_kvrmem \
        fish:fish/vendor_completions.d/kvrmem.fish; do
        "$first/static/bin/kvrmem" --generate "${kind%%:*}" | cmp - "${kind#*:}"
    done
}

@test "the schemas of the JSON are installed" {
    cd "$first/static/share/kvr/schemas"
    diff -r . "$KVR_SOURCE/docs/schemas"
}

@test "the files for vim and emacs are installed" {
    diff -r "$first/static/share/kvr/emacs" "$KVR_SOURCE/editors/emacs"
    diff -r --exclude=tags "$first/static/share/kvr/vim" "$KVR_SOURCE/editors/vim"
}

@test "the documents are installed and find each other and the examples" {
    cd "$first/static/share/doc/kvr"
    [ -x examples/programs/stamp_build ]
    [ -f docs/formats.md ]
    links=0
    for document in *.md docs/*.md examples/programs/*.md; do
        while read -r target; do
            links=$((links + 1))
            case $target in
            https:* | *kvr/*.h | *kvrimage/*.h) ;; # headers are installed elsewhere
            *) [ -e "$(dirname "$document")/$target" ] || { echo "$document: $target leads nowhere" && false; } ;;
            esac
        done < <(awk '/^```/ { code = !code } !code' "$document" | grep -o '\](\([^)#]*\)' | sed 's/^](//')
    done
    [ "$links" -gt 10 ]
}
