# The symbols that the shared library in KVR_STAGE exports. The test of the installed package links every name of the
# interface and so checks that it exists.

setup() {
    library=$(find "$KVR_STAGE/shared" -name 'libkvr.so')
}

# "::" follows a class, the arguments follow a function.
interface='^((KVR_MEMORY_(FILE|HEX_FILE|MIF_FILE|RIF_FILE)|KVR_UTIL_KEYWORD_REGR|LESS_C_STRING)::'
interface+='|(kvr_[a-z0-9_]+|add_trailing_slashes_to_directory_name|convert_(from|to)_binary_string'
interface+='|convert_name_to_kvr_form|is_valid_(bidir_)?dual_port_memory_width_ratio(_in_hardware)?'
interface+='|is_wizard_(generated|deferred_generation)_file)(\[abi:cxx11\])?\()'

shown() { # [OPTION...]
    # The version itself is also a symbol.
    nm --dynamic --defined-only --demangle "$@" "$library" | cut -d ' ' -f 3- | grep -vE '^KVR_0(@@KVR_0)?$'
}

@test "the interface is exported" {
    shown --without-symbol-versions | grep -F 'KVR_MEMORY_FILE::read_file()'
}

@test "nothing else is exported" {
    run grep -vE "$interface" <(shown --without-symbol-versions)
    echo "$output"
    [ "$status" -eq 1 ]
}

@test "every name carries the version of the interface" {
    run grep -v '@@KVR_0$' <(shown)
    echo "$output"
    [ "$status" -eq 1 ]
}

@test "the library is named by its major version" {
    objdump --private-headers "$library" | grep -E 'SONAME +libkvr\.so\.0$'
}

images_shown() { # [OPTION...]
    nm --dynamic --defined-only --demangle "$@" "$(find "$KVR_STAGE/shared" -name 'libkvrimage.so')" |
        cut -d ' ' -f 3- | grep -vE '^KVRIMAGE_0(@@KVRIMAGE_0)?$'
}

@test "the library of memory images exports its namespace and nothing else" {
    images_shown --without-symbol-versions | grep -F 'kvrimage::parse('
    run grep -vE '^(typeinfo (name )?for |vtable for )?kvrimage::' <(images_shown --without-symbol-versions)
    echo "$output"
    [ "$status" -eq 1 ]
    run grep -v '@@KVRIMAGE_0$' <(images_shown)
    echo "$output"
    [ "$status" -eq 1 ]
}

@test "the library of memory images contains what it uses of kvr" {
    run grep -F 'libkvr.so' <(objdump --private-headers "$(find "$KVR_STAGE/shared" -name 'libkvrimage.so')")
    [ "$status" -eq 1 ]
}
