# The preset "tidy" sets CMAKE_CXX_CLANG_TIDY, so the build lints each batch of sources when it compiles it and
# then leaves it alone until it changes. A batch is a file of the build folder that includes its sources: that
# costs a fifth of linting them one by one. Sources must be linted again when the checks change too: their hash
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

# The checks of a folder that has its own ones: a batch is in another folder, so they would not be found.
macro(kvr_use_checks_of_this_folder)
    if(CMAKE_CXX_CLANG_TIDY)
        list(APPEND CMAKE_CXX_CLANG_TIDY --config-file=${CMAKE_CURRENT_SOURCE_DIR}/.clang-tidy)
    endif()
endmacro()
