# KVR_SANITIZERS names the sanitizers that everything is built with, for example "address,undefined".
set(KVR_SANITIZERS "" CACHE STRING "Sanitizers to build with, comma-separated")
if(KVR_SANITIZERS)
    add_compile_options(-fsanitize=${KVR_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KVR_SANITIZERS})
endif()

option(KVR_COVERAGE "Count which lines run, for gcov" OFF)
if(KVR_COVERAGE)
    # Tests run in parallel and share the count files.
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

option(KVR_BUILD_QUICKLY "Compile tool and tests without optimization: they run for less time than it takes" OFF)
function(kvr_compile_quickly target)
    if(KVR_BUILD_QUICKLY)
        target_compile_options(${target} PRIVATE -O0)
    endif()
endfunction()
