# The preset "tidy" sets CMAKE_CXX_CLANG_TIDY: the build lints each batch of sources when it compiles the batch, and
# again only after a change. A batch is a file of the build folder that includes its sources; this takes a fifth of the
# time of linting the sources one by one. The hash of the checks is part of the command, so that a change of the checks
# lints the sources again.
if(CMAKE_CXX_CLANG_TIDY)
    foreach(checks IN ITEMS .clang-tidy tests/.clang-tidy bench/.clang-tidy)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${checks})
        file(SHA256 ${PROJECT_SOURCE_DIR}/${checks} hash)
        string(APPEND checks_hash ${hash})
    endforeach()
    string(SHA256 checks_hash "${checks_hash}")
    list(APPEND CMAKE_CXX_CLANG_TIDY --extra-arg=-DKVR_LINTED_WITH=${checks_hash})
endif()

# Uses the checks of the current folder. They would not be found otherwise, because a batch is in another folder.
macro(kvr_use_checks_of_this_folder)
    if(CMAKE_CXX_CLANG_TIDY)
        list(APPEND CMAKE_CXX_CLANG_TIDY --config-file=${CMAKE_CURRENT_SOURCE_DIR}/.clang-tidy)
    endif()
endmacro()
