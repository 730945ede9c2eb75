# kvr_program_to_run(<out> <target>): sets <out> to the path of the command that runs the program <target>. This is the
# program itself or, if it is for another machine, a script that starts it in the emulator.
function(kvr_program_to_run out target)
    set(program $<TARGET_FILE:${target}>)
    if(CMAKE_CROSSCOMPILING_EMULATOR)
        list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
        set(script ${CMAKE_CURRENT_BINARY_DIR}/emulated/${target})
        file(
            GENERATE
            OUTPUT ${script}
            CONTENT "#!/bin/sh\nexec ${emulator} '${program}' \"$@\"\n"
            FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
        set(program ${script})
    endif()
    set(${out} ${program} PARENT_SCOPE)
endfunction()
