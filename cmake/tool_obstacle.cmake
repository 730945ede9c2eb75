# Sets <out> to the reason why kvrimage cannot be built here, or to an empty string if it can.
function(kvr_kvrimage_obstacle out)
    find_package(fmt QUIET)
    set(${out} "" PARENT_SCOPE)
    if(NOT fmt_FOUND)
        set(${out} "the library fmt is not found" PARENT_SCOPE)
    endif()
endfunction()

# The same for a part that needs the library <title>: <header>, which may be in one of the folders <...>, and the
# library file <name>. They become KVR_<part>_HEADERS and KVR_<part>_LIBRARY.
function(kvr_library_obstacle out part title header name)
    find_path(KVR_${part}_HEADERS ${header} PATH_SUFFIXES ${ARGN})
    find_library(KVR_${part}_LIBRARY ${name})
    set(${out} "" PARENT_SCOPE)
    if(NOT KVR_${part}_HEADERS OR NOT KVR_${part}_LIBRARY)
        set(${out} "the library ${title} is not found" PARENT_SCOPE)
    endif()
endfunction()

# The same for the reader of ELF files.
macro(kvr_elf_obstacle out)
    kvr_library_obstacle(${out} ELF libelf gelf.h elf)
endmacro()

# The same for SHA-256 in kvrmem.
macro(kvr_sha256_obstacle out)
    kvr_library_obstacle(${out} NETTLE nettle nettle/sha2.h nettle)
endmacro()

# The same for the formulas of kvrmem.
macro(kvr_expr_obstacle out)
    kvr_library_obstacle(${out} LUA lua5.4 lua.hpp lua5.4 lua5.4)
endmacro()

# The same for the JPEG pictures of kvrmem.
macro(kvr_jpeg_obstacle out)
    kvr_library_obstacle(${out} JPEG libjpeg jpeglib.h jpeg)
endmacro()

# The same for kvrmem, which requires kvrimage.
function(kvr_kvrmem_obstacle out)
    find_package(nlohmann_json QUIET)
    kvr_kvrimage_obstacle(obstacle)
    find_path(KVR_STB_HEADERS stb/stb_image.h)
    if(NOT obstacle AND NOT nlohmann_json_FOUND)
        set(obstacle "the library nlohmann_json is not found")
    elseif(NOT obstacle AND NOT KVR_STB_HEADERS)
        set(obstacle "the library stb is not found")
    endif()
    set(${out} "${obstacle}" PARENT_SCOPE)
endfunction()

# Adds the option KVR_BUILD_<part> for <name>; <description> describes it. If the option has no value, <name> is built
# if possible, and the decision is not cached. If it is requested explicitly and cannot be built, configuring fails.
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
