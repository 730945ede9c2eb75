# kvr_diagnostic_tables(<target> <root> <table>...): before <target> is compiled, converts the tables of diagnostics to
# headers in <root>/kvrimage/diagnostics and to <root>/kvrimage/diagnostics/diagnostics.md.
function(kvr_diagnostic_tables target root)
    set(script "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/write_diagnostics.cmake")
    set(folder "${root}/kvrimage/diagnostics")
    set(made ${folder}/diagnostic_id.h ${folder}/diagnose.h ${folder}/diagnostic_kinds.h ${folder}/diagnostics.md)
    add_custom_command(
        OUTPUT ${made}
        COMMAND ${CMAKE_COMMAND} -D "TABLES=${ARGN}" -D "OUTPUT=${folder}" -P "${script}"
        DEPENDS "${script}" ${ARGN}
        COMMENT "Generating the diagnostics"
        VERBATIM)
    add_custom_target(${target}_diagnostics DEPENDS ${made})
    add_dependencies(${target} ${target}_diagnostics)
endfunction()
