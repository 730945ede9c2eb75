# run_document detects faults in test documents and in a copy of the README.

setup() {
    cd "$BATS_TEST_TMPDIR"
}

# The document is standard input, with ~~~ instead of ```, which would end a block here.
document() {
    sed 's/^~~~/```/' >document.md
    run "$KVR_SOURCE/tests/docs/run_document" document.md
    echo "$output"
}

is_right() { # SUMMARY
    [ "$status" -eq 0 ]
    [ "$output" = "$1" ]
}

is_wrong_because() { # TEXT
    [ "$status" -eq 1 ]
    [[ $output == *"$1"* ]]
}

@test "commands, files and exit codes that are as shown are right" {
    document <<'DOCUMENT'
~~~mif boot.mif
WIDTH=8;
DEPTH=2;
CONTENT BEGIN
0 : 1 2;
END;
~~~

~~~console
$ kvrmem get boot.mif 0..1
01
02
$ scripts/kvrmem get boot.mif 1 \
> | tr 2 5
05
$ ls examples/sine_16bit.mif; false
examples/sine_16bit.mif
$ echo $?
1
~~~
DOCUMENT
    is_right "4 commands, 0 programs, 0 blocks of statements, 0 links, 0 marked as not run"
}

@test "an output that differs in one character is shown with its line" {
    document <<'DOCUMENT'
~~~console
$ kvrmem radix 0x1F --to uns
32
~~~
DOCUMENT
    is_wrong_because 'document.md:2: $ kvrmem radix 0x1F --to uns'
    is_wrong_because '-32'
    is_wrong_because '+31'
}

@test "an output that is not shown, and one that is shown and not there, are wrong" {
    document <<'DOCUMENT'
~~~console
$ echo one
$ true
two
~~~
DOCUMENT
    is_wrong_because '+one'
    is_wrong_because '-two'
}

@test "what goes to the standard error is output too" {
    document <<'DOCUMENT'
~~~console
$ kvrmem radix 2 --from bin --to hex
~~~
DOCUMENT
    is_wrong_because '+kvrmem:'
}

@test "an exit code other than 0 must be shown" {
    document <<'DOCUMENT'
~~~console
$ false
$ true
~~~
DOCUMENT
    is_wrong_because "document.md:2: ends with 1, which the document does not show"
    document <<'DOCUMENT'
~~~console
$ false
~~~
DOCUMENT
    is_wrong_because "document.md:2: ends with 1, which the document does not show"
    document <<'DOCUMENT'
~~~console
$ false
$ echo $?
2
~~~
DOCUMENT
    is_wrong_because "-2"
}

@test "a program is compiled and run by its name" {
    document <<'DOCUMENT'
~~~cpp logarithm.cpp
#include "kvr/kvr.h"
#include <iostream>
int main(int count, char**) {
    std::cout << kvr_ceil_log2(5) << count << "\n";
}
~~~

~~~console
$ ./logarithm one two
33
~~~
DOCUMENT
    is_right "1 commands, 1 programs, 0 blocks of statements, 0 links, 0 marked as not run"
}

@test "a program that prints something else, does not compile, is not run or has no name is wrong" {
    document <<'DOCUMENT'
~~~cpp wrong.cpp
#include <iostream>
int main() { std::cout << "1\n"; }
~~~

~~~cpp broken.cpp
int main() { return no_such_name; }
~~~

~~~console
$ ./wrong
2
~~~

~~~cpp
int main() {}
~~~
DOCUMENT
    is_wrong_because '+1'
    is_wrong_because "document.md:6: does not compile"
    is_wrong_because "document.md:6: no command runs ./broken"
    is_wrong_because "document.md:15: a program needs a name"
}

@test "statements are compiled and print what their comments say" {
    document <<'DOCUMENT'
~~~cpp
std::cout << kvr_ceil_log2(9) << "\n"; // 4
~~~

~~~cpp
const int eight = kvr_power(2, 3);
std::cout << eight << "\n"; // 8
~~~
DOCUMENT
    is_right "0 commands, 0 programs, 2 blocks of statements, 0 links, 0 marked as not run"
}

@test "statements that print something else, or do not say what, are wrong" {
    document <<'DOCUMENT'
~~~cpp
std::cout << kvr_ceil_log2(9) << "\n"; // 3
std::cout << kvr_ceil_log2(9) << "\n";
~~~

~~~cpp
kvr_ceil_log2(9);
~~~
DOCUMENT
    is_wrong_because '-3'
    is_wrong_because "document.md:3: prints without the expected output"
    is_wrong_because "document.md:6: statements that print nothing"
}

@test "what is marked as not run needs a reason and a block" {
    document <<'DOCUMENT'
<!-- not run: it would take all day -->
~~~console
$ rm -rf important
~~~
DOCUMENT
    is_right "0 commands, 0 programs, 0 blocks of statements, 0 links, 1 marked as not run"
    document <<'DOCUMENT'
<!-- not run -->
~~~console
$ true
~~~

<!-- not run: lost -->
There is no block here.
DOCUMENT
    is_wrong_because "document.md:1: expected: <!-- not run: REASON -->"
    is_wrong_because "document.md:7: the reason for not running is not followed by a block"
}

@test "commands do not hide where nothing runs them" {
    document <<'DOCUMENT'
~~~text
$ echo one
~~~

~~~sh
echo two
~~~

    $ echo three

~~~console
output without a command
~~~
DOCUMENT
    is_wrong_because "document.md:1: a command in a block that is not run"
    is_wrong_because 'document.md:5: there is no rule for a block of "sh"'
    is_wrong_because "document.md:9: an indented command"
    is_wrong_because 'document.md:12: a console block begins with "$ "'
}

@test "a link must lead to something, and a block must end" {
    touch there.md
    document <<'DOCUMENT'
[one](there.md#part) and [two](https://example.org/), but [three](not_there.md)
~~~console
DOCUMENT
    is_wrong_because "document.md:1: the link not_there.md leads nowhere"
    is_wrong_because "document.md:2: a block without an end"
    [[ $output != *"link there.md"* ]]
}

@test "one altered digit in a copy of the README is noticed" {
    mkdir copy
    cp -R "$KVR_SOURCE/docs" "$KVR_SOURCE/examples" "$KVR_SOURCE/kvr" "$KVR_SOURCE/kvrimage" "$KVR_SOURCE"/*.md \
        "$KVR_SOURCE/LICENSE" copy
    run "$KVR_SOURCE/tests/docs/run_document" copy/README.md
    echo "$output"
    [ "$status" -eq 0 ]
    sed -i 's/^0000  0000 0324/0000  0000 0325/' copy/README.md
    run "$KVR_SOURCE/tests/docs/run_document" copy/README.md
    echo "$output"
    is_wrong_because '-0000  0000 0325'
    is_wrong_because '+0000  0000 0324'
    [ "$(grep -c 'README.md:[0-9]' <<<"$output")" -eq 1 ]
}
