# cmake -D LISTS=<folder> -D OUTPUT=<header> -P write_keyword_names.cmake
#
# Converts the three name lists of the folder LISTS (one name per line) to a header of constant arrays. A name consists
# of letters, digits, "_" and "$"; anything else is an error, so that no name needs quoting.

function(read_names list out)
    set(file "${LISTS}/${list}.txt")
    if(NOT EXISTS "${file}")
        message(FATAL_ERROR "${file}: keyword list not found")
    endif()
    file(READ "${file}" text)
    string(REPLACE "\r\n" "\n" text "${text}")
    string(REGEX MATCH "[^\n]*[^A-Za-z0-9_$\n][^\n]*" bad_line "${text}")
    if(NOT bad_line STREQUAL "")
        message(FATAL_ERROR "${file}: not a keyword: \"${bad_line}\"")
    endif()
    string(REGEX MATCHALL "[^\n]+" names "${text}")
    set(${out} "${names}" PARENT_SCOPE)
endfunction()

set(header "#pragma once\n\n#include <array>\n#include <string_view>\n\n")
string(APPEND header "namespace kvr {\n\nusing namespace std::string_view_literals;\n\n")
foreach(list plexfunction_names velkora_primitive_names wysiwyg_names)
    read_names(${list} names)
    list(LENGTH names count)
    list(TRANSFORM names REPLACE "(.+)" "    \"\\1\"sv,\n")
    list(JOIN names "" lines)
    string(APPEND header "inline constexpr std::array<std::string_view, ${count}> ${list}{\n${lines}};\n\n")
endforeach()
file(WRITE "${OUTPUT}" "${header}} // namespace kvr\n")
