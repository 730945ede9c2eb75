# cmake -D "TABLES=<file>;<file>..." -D OUTPUT=<folder> -P write_diagnostics.cmake
#
# Converts the tables of diagnostics to OUTPUT/diagnostic_id.h (the enumeration), OUTPUT/diagnose.h (a function for each
# diagnostic, which fills in its message), OUTPUT/diagnostic_kinds.h (their common properties) and OUTPUT/diagnostics.md
# (the table of the documents). kvrimage/diagnostics/diagnostics.txt describes the form of a table.

cmake_policy(VERSION 3.24)

# CMake splits a list at semicolons outside of brackets. These placeholders replace both in the lines of a table.
string(ASCII 1 for_semicolon)
string(ASCII 2 for_open)
string(ASCII 3 for_close)

set(classes broken consumer suspect)
set(ids "")
set(kinds "")
set(functions "")
set(rows "")
set(seen "")

# Adds to <names> the names in braces in <text> that it does not contain yet.
macro(add_names text)
    string(REGEX MATCHALL "{[a-z_]+}" found "${text}")
    foreach(name IN LISTS found)
        string(REGEX REPLACE "[{}]" "" name "${name}")
        list(APPEND names ${name})
    endforeach()
    list(REMOVE_DUPLICATES names)
endmacro()

# Sets <out> to the C++ expression that creates <text> with its names filled in.
function(expression_of text out)
    string(REPLACE "\\" "\\\\" text "${text}")
    string(REPLACE "\"" "\\\"" text "${text}")
    string(REGEX REPLACE "{([a-z_]+)}" "\" + \\1.text() + \"" text "${text}")
    set(result "std::string(\"${text}\")")
    # Only the first literal is a string object; empty literals are omitted.
    string(REGEX REPLACE "^std::string\\(\"(([^\"\\\\]|\\\\.)*)\" \\+ " "std::string(\"\\1\") + " result "${result}")
    string(REGEX REPLACE "\"\\)$" "\"" result "${result}")
    string(REGEX REPLACE "^std::string\\(\"([^\"]*)\"$" "std::string(\"\\1\")" result "${result}")
    string(REPLACE " + \"\" + " " + " result "${result}")
    string(REGEX REPLACE " \\+ \"\"$" "" result "${result}")
    set(${out} "${result}" PARENT_SCOPE)
endfunction()

function(fail reason)
    message(FATAL_ERROR "${table}: ${code}: ${reason}")
endfunction()

# Adds the diagnostic that was read last.
macro(finish)
    if(code)
        foreach(part IN ITEMS message doc example)
            if("${${part}}" STREQUAL "")
                fail("there is no ${part}")
            endif()
        endforeach()
        list(FIND seen "${code}" place)
        if(NOT place EQUAL -1)
            fail("is there twice")
        endif()
        list(APPEND seen "${code}")
        string(REPLACE "-" "_" id "${code}")
        set(names "")
        add_names("${message}")
        add_names("${hint}")
        set(parameters "const places& where")
        foreach(name IN LISTS names)
            if(name STREQUAL advice)
                string(APPEND parameters ", const whole_text& ${name}")
            else()
                string(APPEND parameters ", const named_text& ${name}")
            endif()
        endforeach()
        expression_of("${message}" message_text)
        expression_of("${hint}" hint_text)
        string(REPLACE "\\" "\\\\" escaped_doc "${doc}")
        string(REPLACE "\"" "\\\"" escaped_doc "${escaped_doc}")
        string(REPLACE "\\" "\\\\" escaped_example "${example}")
        string(REPLACE "\"" "\\\"" escaped_example "${escaped_example}")
        string(APPEND ids "    ${id},\n")
        string(APPEND kinds "    {\"${code}\", diagnostic_class::${level}, \"${escaped_doc}\", \"${escaped_example}\"},\n")
        string(APPEND functions "[[nodiscard]] inline diagnostic ${id}(${parameters}) {\n"
                                "    return made(diagnostic_id::${id}, where, ${message_text}, ${hint_text});\n}\n\n")
        string(REPLACE "|" "\\|" shown_example "${example}")
        string(REPLACE "|" "\\|" shown_message "${message}")
        string(APPEND rows "| `${code}` | ${level} | ${doc} | ${shown_message} | `${shown_example}` |\n")
    endif()
    set(code "")
    set(level "")
    foreach(part IN ITEMS message hint doc example)
        set(${part} "")
    endforeach()
endmacro()

foreach(table IN LISTS TABLES)
    file(READ "${table}" text)
    string(REPLACE ";" "${for_semicolon}" text "${text}")
    string(REPLACE "[" "${for_open}" text "${text}")
    string(REPLACE "]" "${for_close}" text "${text}")
    string(REPLACE "\n" ";" lines "${text}")
    finish()
    foreach(line IN LISTS lines)
        string(REPLACE "${for_semicolon}" ";" line "${line}")
        string(REPLACE "${for_open}" "[" line "${line}")
        string(REPLACE "${for_close}" "]" line "${line}")
        if(line MATCHES "^#" OR line STREQUAL "")
            continue()
        elseif(line MATCHES "^([a-z0-9-]+) ([a-z]+)$")
            set(new_code "${CMAKE_MATCH_1}")
            set(new_level "${CMAKE_MATCH_2}")
            finish()
            set(code "${new_code}")
            set(level "${new_level}")
            list(FIND classes "${level}" place)
            if(place EQUAL -1)
                fail("'${level}' is no class")
            endif()
        elseif(line MATCHES "^  (message|hint|doc|example) (.+)$")
            set(${CMAKE_MATCH_1} "${CMAKE_MATCH_2}")
        else()
            fail("'${line}' cannot be read")
        endif()
    endforeach()
    finish()
endforeach()

file(WRITE "${OUTPUT}/diagnostic_id.h" "#pragma once

#include <cstdint>

namespace kvrimage {

/// Every diagnostic that there is; see about().
enum class diagnostic_id : std::uint16_t {
${ids}};

} // namespace kvrimage
")
file(WRITE "${OUTPUT}/diagnostic_kinds.h" "#pragma once

#include \"kvrimage/diagnostics/diagnostic.h\"

#include <array>

namespace kvrimage {

/// In the order of diagnostic_id.
inline constexpr auto diagnostic_kinds = std::to_array<diagnostic_kind>({
${kinds}});

} // namespace kvrimage
")
file(WRITE "${OUTPUT}/diagnose.h" "#pragma once

#include \"kvrimage/diagnostics/diagnostic.h\"
#include \"kvrimage/diagnostics/named_text.h\"
#include \"kvrimage/diagnostics/places.h\"

#include <string>

namespace kvrimage::diagnose {

/// The diagnostic @p id at @p where, of which offsets and lengths are known.
[[nodiscard]] diagnostic made(diagnostic_id id, const places& where, std::string message, std::string hint);

${functions}} // namespace kvrimage::diagnose
")
file(WRITE "${OUTPUT}/diagnostics.md" "| Code | Class | What it means | Message | Example |\n|---|---|---|---|---|\n${rows}")
