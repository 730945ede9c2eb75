# The warnings that the whole tree is free of with g++ 12 and clang 14. They are errors in the presets that check
# (CMAKE_COMPILE_WARNING_AS_ERROR), but not for a user who builds kvr with another compiler.
add_library(kvr_warnings INTERFACE)
target_compile_options(
    kvr_warnings
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wsign-conversion
              -Wshadow
              -Wold-style-cast
              -Wcast-align
              -Wcast-qual
              -Wdouble-promotion
              -Wformat=2
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              -Wextra-semi
              -Wundef
              $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast>
              # If std::size_t has 32 bits, a 64-bit index needs a cast; if it has 64 bits, the same cast is useless.
              $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>:-Wno-conversion -Wno-sign-conversion -Wno-useless-cast>
              # std::uint_fast32_t of random numbers has 32 bits on Windows and 64 bits elsewhere: only there is a cast
              # useless.
              $<$<PLATFORM_ID:Windows>:-Wno-useless-cast>
              $<$<CXX_COMPILER_ID:Clang>:-Wimplicit-fallthrough -Wmissing-prototypes>)

# For the tests, benchmarks and fuzzers of a folder: g++ 12 gives false warnings at dozens of places. It takes an
# optimized std::string = "literal" or "literal" + std::string for an overlapping or out-of-bounds copy, and the value
# of a tested std::optional for uninitialized. The shipped code keeps these warnings.
macro(kvr_leave_out_false_warnings_in_this_folder)
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        add_compile_options(-Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-maybe-uninitialized)
    endif()
endmacro()
