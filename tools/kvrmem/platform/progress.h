#pragma once

#include <cstdint>
#include <string>

namespace kvrmem {

// How far long work has come, on standard error and only if that is a terminal: a line that appears after a
// second, changes in place, and goes away before anything else is written. It costs the work nothing: a timer
// asks the system how far the file at hand was read or written, and kvrimage how far its walk over a memory
// is.

/// Arms the timer.
void start_progress();

/// From now on the line says "reading" and @p name, how much of the @p size bytes of the open file @p
/// descriptor lies before its position, and how long the rest will take; bytes alone for a size of 0. The
/// descriptor may be closed at any time.
void show_reading(const std::string& name, int descriptor, std::uint64_t size);

/// The same for a file that is written, whose size is not known.
void show_writing(const std::string& name, int descriptor, std::uint64_t size);

/// The same for an operation on the memory of the file @p name: "--reshape 8 of boot.bin 45 %, 2 s left".
void show_operation(const std::string& operation, const std::string& name);

/// While it lives, there is no such line: something else is written.
class progress_pause {
public:
    progress_pause();
    ~progress_pause();
    progress_pause(const progress_pause&) = delete;
    progress_pause& operator=(const progress_pause&) = delete;
};

/// Takes the line away for good.
void end_progress();

} // namespace kvrmem
