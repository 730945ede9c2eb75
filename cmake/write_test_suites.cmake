# cmake -D PROGRAM=<program> -D OUTPUT=<file> -D PREFIX=<text> -D PROPERTIES=<list> [-D EMULATOR=<command>]
#       -P write_test_suites.cmake
#
# Writes a file for ctest with a test for each suite of the googletest program PROGRAM. EMULATOR runs the program.

execute_process(
    COMMAND ${EMULATOR} "${PROGRAM}" --gtest_list_tests
    OUTPUT_VARIABLE listed COMMAND_ERROR_IS_FATAL ANY)
# The line of a suite ends with "."; the lines of its tests are indented.
string(REGEX MATCHALL "\n[A-Za-z0-9_/]+\\." suites "\n${listed}")
if(NOT suites)
    message(FATAL_ERROR "${PROGRAM} lists no suites")
endif()
string(REPLACE ";" " " EMULATOR "${EMULATOR}")
set(tests "")
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "[\n.]" "" suite "${suite}")
    string(APPEND tests "add_test([[${PREFIX}${suite}]] ${EMULATOR} [[${PROGRAM}]] --gtest_brief=1 [[--gtest_filter=${suite}.*]])\n")
    if(PROPERTIES)
        string(REPLACE ";" " " properties "${PROPERTIES}")
        string(APPEND tests "set_tests_properties([[${PREFIX}${suite}]] PROPERTIES ${properties})\n")
    endif()
endforeach()
file(WRITE "${OUTPUT}" "${tests}")
