# kvr_keyword_tables(<target> <lists> <root>): before <target> is compiled, turns the name lists of the
# folder <lists> into <root>/kvr/keywords/keyword_names.h and puts <root> on its include path. Editing a
# list rebuilds what includes the header.
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
    # The index of the names is made by the compiler, whose limits are too low for tens of thousands.
    target_compile_options(
        ${target}
        PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fconstexpr-ops-limit=2000000000 -fconstexpr-loop-limit=100000000>
                $<$<CXX_COMPILER_ID:Clang>:-fconstexpr-steps=2000000000>)
endfunction()
