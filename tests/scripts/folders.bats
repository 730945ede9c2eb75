# The order of the layers, and of the folders of kvrimage in docs/architecture.md.

# Prints each include in the tree $1 of a layer above, of a folder of kvrimage that the document lists further down, or
# of one format in another.
upward_includes() {
    local folders includes
    folders=$(grep -o '^    kvrimage/[a-z]*/' "$1/docs/architecture.md")
    includes=$(cd "$1" && grep -rHo '^#include "[a-z]*/[^"]*' --include=*.h --include=*.cpp kvr kvrimage)
    awk -v folders="$folders" '
        BEGIN {
            count = split(folders, names)
            for (i = 1; i <= count; ++i) {
                place[names[i]] = i
            }
            layer["kvr"] = 1
            layer["kvrimage"] = 2
            layer["tools"] = 3
        }
        function folder_of(path) {
            return match(path, /^kvrimage\/[a-z]*\//) ? substr(path, 1, RLENGTH) : ""
        }
        function format_of(path) {
            return match(path, /^kvrimage\/formats\/[a-z]*\//) ? substr(path, 1, RLENGTH) : ""
        }
        function first_of(path) {
            return substr(path, 1, index(path, "/") - 1)
        }
        {
            source = $1
            sub(/:.*/, "", source)
            header = substr($2, 2)
            from = folder_of(source)
            to = folder_of(header)
            if (from != "" && !(from in place)) {
                print "not in the document: " from
                next
            }
            is_above = layer[first_of(header)] > layer[first_of(source)] || (from != "" && place[to] > place[from])
            is_other_format = format_of(source) != "" && format_of(header) !~ "^$|^" format_of(source)
            if (is_above || is_other_format) {
                print source " includes " header
            }
        }' <<<"$includes"
}

@test "no folder includes one above it" {
    run upward_includes "$KVR_SOURCE"
    [ "$status" -eq 0 ]
    [ "$output" = "" ]
}

@test "an include of a folder above is found" {
    mkdir -p "$BATS_TEST_TMPDIR/docs" "$BATS_TEST_TMPDIR/kvrimage/image" "$BATS_TEST_TMPDIR/kvr/util"
    cp "$KVR_SOURCE/docs/architecture.md" "$BATS_TEST_TMPDIR/docs"
    echo '#include "kvrimage/formats/format.h"' >"$BATS_TEST_TMPDIR/kvrimage/image/word.h"
    echo '#include "kvrimage/export.h"' >"$BATS_TEST_TMPDIR/kvr/util/paths.cpp"
    run upward_includes "$BATS_TEST_TMPDIR"
    [ "$(sort <<<"$output")" = "kvr/util/paths.cpp includes kvrimage/export.h
kvrimage/image/word.h includes kvrimage/formats/format.h" ]
}

@test "an include of another format is found" {
    mkdir -p "$BATS_TEST_TMPDIR/docs" "$BATS_TEST_TMPDIR/kvrimage/formats/mif" "$BATS_TEST_TMPDIR/kvr"
    cp "$KVR_SOURCE/docs/architecture.md" "$BATS_TEST_TMPDIR/docs"
    printf '#include "kvrimage/formats/%s.h"\n' mif/mif_line coe/coe_parser format \
        >"$BATS_TEST_TMPDIR/kvrimage/formats/mif/mif_reader.cpp"
    run upward_includes "$BATS_TEST_TMPDIR"
    [ "$output" = "kvrimage/formats/mif/mif_reader.cpp includes kvrimage/formats/coe/coe_parser.h" ]
}

@test "a folder that the document does not list is found" {
    mkdir -p "$BATS_TEST_TMPDIR/docs" "$BATS_TEST_TMPDIR/kvrimage/extra" "$BATS_TEST_TMPDIR/kvr"
    cp "$KVR_SOURCE/docs/architecture.md" "$BATS_TEST_TMPDIR/docs"
    echo '#include "kvrimage/export.h"' >"$BATS_TEST_TMPDIR/kvrimage/extra/new.h"
    run upward_includes "$BATS_TEST_TMPDIR"
    [ "$output" = "not in the document: kvrimage/extra/" ]
}
