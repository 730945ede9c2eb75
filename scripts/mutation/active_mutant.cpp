// Linked into the programs that scripts/mutate builds. Determines the mutant that runs, its time limit, and
// where the parts of the sources that the program enters are marked.

#include "active_mutant.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <unistd.h>

unsigned kvr_active_mutant = 0; // none
alignas(parts_size) unsigned char kvr_entered_parts[parts_size];

unsigned number_in(const char* variable) {
    const char* text = std::getenv(variable);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : 0;
}

namespace {

/// Runs before the first constructor of a global object.
[[gnu::constructor(101)]] void choose_mutant() {
    kvr_active_mutant = number_in("KVR_ACTIVE_MUTANT");
    if (const unsigned milliseconds = number_in("KVR_MOST_MILLISECONDS"); milliseconds != 0) {
        const timeval limit = {milliseconds / 1000, static_cast<suseconds_t>(milliseconds % 1000) * 1000};
        const itimerval timer = {{}, limit};
        setitimer(ITIMER_PROF, &timer, nullptr); // processor time; the signal ends the program
    }
}

/// A test may also enter a part in a child process, which must mark the same bytes. The tool runs several
/// times in one case; all its processes mark the bytes of one file.
[[gnu::constructor(101)]] void share_parts() {
    const char* path = std::getenv("KVR_ENTERED_PARTS");
    const int file = path != nullptr ? open(path, O_RDWR) : -1;
    const int kind = file < 0 ? MAP_ANONYMOUS : 0;
    mmap(kvr_entered_parts, parts_size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED | kind, file, 0);
    if (file >= 0) {
        close(file);
    }
}

} // namespace
