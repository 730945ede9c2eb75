# The preset "tidy" sets CMAKE_CXX_CLANG_TIDY, so the build lints each source when it compiles it and then
# leaves it alone until it changes. Sources must be linted again when the checks change too: their hash
# becomes a part of the command.
if(CMAKE_CXX_CLANG_TIDY)
    foreach(checks IN ITEMS .clang-tidy tests/.clang-tidy bench/.clang-tidy)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${checks})
        file(SHA256 ${PROJECT_SOURCE_DIR}/${checks} hash)
        string(APPEND checks_hash ${hash})
    endforeach()
    string(SHA256 checks_hash "${checks_hash}")
    list(APPEND CMAKE_CXX_CLANG_TIDY --extra-arg=-DKVR_LINTED_WITH=${checks_hash})
endif()
