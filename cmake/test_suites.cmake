# kvr_add_test_suites(<target> <prefix> [<property> <value>]...): adds a test for each suite of the googletest program
# <target>. The name of the test is <prefix> followed by the suite. A process per suite takes a tenth of the time of a
# process per test.
function(kvr_add_test_suites target prefix)
    set(tests "${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake")
    set(script "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/write_test_suites.cmake")
    add_custom_command(
        TARGET ${target}
        POST_BUILD
        COMMAND ${CMAKE_COMMAND} -D "PROGRAM=$<TARGET_FILE:${target}>" -D "OUTPUT=${tests}" -D "PREFIX=${prefix}"
                -D "PROPERTIES=${ARGN}" -D "EMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR}" -P "${script}"
        VERBATIM)
    if(NOT EXISTS "${tests}")
        # Until the program is built, its test fails.
        file(WRITE "${tests}" "add_test(${target} ${target}_is_not_built)\n")
    endif()
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${tests}")
endfunction()
