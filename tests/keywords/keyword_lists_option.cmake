# cmake -D SOURCE=<project> -D BUILD=<folder> -D GENERATOR=<name> -D COMPILER=<c++> -P keyword_lists_option.cmake
#
# Configures the project with KVR_KEYWORD_LISTS set to other_lists/ and expects the names of these lists, and no others,
# in the generated tables.
file(REMOVE_RECURSE "${BUILD}")
execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${BUILD}" -G "${GENERATOR}"
            -D "CMAKE_CXX_COMPILER=${COMPILER}" -D KVR_BUILD_TESTS=OFF -D KVR_BUILD_TOOL=OFF -D KVR_BUILD_IMAGE=OFF
            -D "KVR_KEYWORD_LISTS=${CMAKE_CURRENT_LIST_DIR}/other_lists"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(
    COMMAND ${CMAKE_COMMAND} --build "${BUILD}" --target kvr_objects_keyword_tables
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS "${BUILD}/kvr/keywords/keyword_names.h" names REGEX "^    \"")
file(REMOVE_RECURSE "${BUILD}")
string(REGEX REPLACE "(\"sv,|[ \";])+" " " names "${names}")
set(expected " adder shifter SHIFTER GATE$1 adder ADDER ")
if(NOT names STREQUAL expected)
    message(FATAL_ERROR "keyword tables hold '${names}' instead of '${expected}'")
endif()
