# Sets <out> to the reason why kvrimage cannot be built here, to nothing if it can.
function(kvr_kvrimage_obstacle out)
    find_package(fmt QUIET)
    set(${out} "" PARENT_SCOPE)
    if(NOT UNIX)
        set(${out} "it needs a POSIX system" PARENT_SCOPE)
    elseif(NOT fmt_FOUND)
        set(${out} "the library fmt is not found" PARENT_SCOPE)
    endif()
endfunction()

# The same for the reader of ELF files.
function(kvr_elf_obstacle out)
    find_path(KVR_ELF_HEADERS gelf.h)
    find_library(KVR_ELF_LIBRARY elf)
    set(${out} "" PARENT_SCOPE)
    if(NOT KVR_ELF_HEADERS OR NOT KVR_ELF_LIBRARY)
        set(${out} "the library libelf is not found" PARENT_SCOPE)
    endif()
endfunction()

# The same for kvrmem, which is built with kvrimage.
function(kvr_kvrmem_obstacle out)
    find_package(nlohmann_json QUIET)
    kvr_kvrimage_obstacle(obstacle)
    if(NOT obstacle AND NOT nlohmann_json_FOUND)
        set(obstacle "the library nlohmann_json is not found")
    endif()
    set(${out} "${obstacle}" PARENT_SCOPE)
endfunction()

# Adds the option KVR_BUILD_<part>, for <name>, which is <description>. Without a value for it, <name> is built where it
# can be, and nothing is kept for the next time. What is asked for and cannot be built is an error.
macro(kvr_option_to_build part name description)
    cmake_language(CALL kvr_${name}_obstacle obstacle)
    if(obstacle AND KVR_BUILD_${part})
        message(FATAL_ERROR "${name} cannot be built: ${obstacle}. Without KVR_BUILD_${part} it is left out.")
    elseif(obstacle AND PROJECT_IS_TOP_LEVEL AND NOT DEFINED KVR_BUILD_${part})
        message(STATUS "${name} is not built: ${obstacle}")
        set(KVR_BUILD_${part} OFF)
    else()
        option(KVR_BUILD_${part} "Build ${name}, ${description}" ${PROJECT_IS_TOP_LEVEL})
    endif()
endmacro()
