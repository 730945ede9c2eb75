#pragma once

#include <fcntl.h>
#include <unistd.h>

inline bool is_open_descriptor(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

/// While it exists, standard input is closed, as in a program that was started without it: the next file that
/// is opened has the descriptor 0.
class free_standard_input {
public:
    free_standard_input() : kept(dup(STDIN_FILENO)) { close(STDIN_FILENO); }
    free_standard_input(const free_standard_input&) = delete;
    free_standard_input& operator=(const free_standard_input&) = delete;
    ~free_standard_input() {
        dup2(kept, STDIN_FILENO);
        close(kept);
    }

private:
    int kept;
};
