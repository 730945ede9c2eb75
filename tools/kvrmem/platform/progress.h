#pragma once

#include <cstdint>
#include <string>

namespace kvrmem {

// The progress of long work: a line on standard error, if that is a terminal. It appears after a second, is
// updated in place, and is erased before other output. The work itself is not slowed down: a timer asks the
// system for the position in the file, and kvrimage for the position in the memory.

/// Starts the timer.
void start_progress();

/// From now on the line shows "reading" and @p name, the share of the @p size bytes of the open file @p
/// descriptor before its position, and the remaining time; for a size of 0, only the bytes read. The
/// descriptor may be closed at any time.
void show_reading(const std::string& name, int descriptor, std::uint64_t size);

/// The same for a file that is written; its size is not known.
void show_writing(const std::string& name, int descriptor, std::uint64_t size);

/// The same for an operation on the memory of the file @p name: "--reshape 8 of boot.bin 45 %, 2 s left".
void show_operation(const std::string& operation, const std::string& name);

/// Erases the line for other output. While the object exists, the line does not appear again, and no second
/// object may be made in the same thread.
class progress_pause {
public:
    progress_pause();
    ~progress_pause();
    progress_pause(const progress_pause&) = delete;
    progress_pause& operator=(const progress_pause&) = delete;
};

/// Erases the line; it appears again only for new work.
void end_progress();

} // namespace kvrmem
