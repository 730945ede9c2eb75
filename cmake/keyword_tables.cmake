# kvr_keyword_tables(<target> <lists> <root>): before <target> is compiled, converts the name lists of the folder
# <lists> to <root>/kvr/keywords/keyword_names.h. Adds <root> to the include path of <target>. Editing a list rebuilds
# the sources that include the header.
function(kvr_keyword_tables target lists root)
    set(script "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/write_keyword_names.cmake")
    set(header "${root}/kvr/keywords/keyword_names.h")
    add_custom_command(
        OUTPUT "${header}"
        COMMAND ${CMAKE_COMMAND} -D "LISTS=${lists}" -D "OUTPUT=${header}" -P "${script}"
        DEPENDS "${script}"
                "${lists}/plexfunction_names.txt"
                "${lists}/velkora_primitive_names.txt"
                "${lists}/wysiwyg_names.txt"
        COMMENT "Generating the keyword tables of ${target}"
        VERBATIM)
    add_custom_target(${target}_keyword_tables DEPENDS "${header}")
    add_dependencies(${target} ${target}_keyword_tables)
    target_include_directories(${target} PRIVATE "${root}")
    # The compiler builds the index of the names; its default limits are too low for tens of thousands of them.
    target_compile_options(
        ${target}
        PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fconstexpr-ops-limit=2000000000 -fconstexpr-loop-limit=100000000>
                $<$<CXX_COMPILER_ID:Clang>:-fconstexpr-steps=2000000000>)
endfunction()
