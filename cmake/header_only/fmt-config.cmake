# fmt as headers only. The configuration of an installed fmt rejects programs with another word size, because its
# library would not link. The tool does not need the library.
if(TARGET fmt::fmt-header-only)
    return()
endif()
find_path(KVR_FMT_INCLUDE_DIR fmt/format.h REQUIRED)
add_library(fmt::fmt-header-only INTERFACE IMPORTED)
set_target_properties(
    fmt::fmt-header-only PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${KVR_FMT_INCLUDE_DIR}"
                                    INTERFACE_COMPILE_DEFINITIONS FMT_HEADER_ONLY=1)
