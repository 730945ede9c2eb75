#pragma once

#include <cstdint>
#include <cstdio>

/// The parts of the tool that depend on the operating system; only system_posix.cpp and system_windows.cpp
/// do. kvrimage/files/platform.h has those for files.
namespace kvrmem::system {

/// Removes differences between systems; main() calls it first. After it, the words of the command line are
/// UTF-8, standard input, output and error convert no bytes, and a terminal interprets UTF-8 and the escape
/// sequences for colors.
/// @param count, words the parameters of main(), replaced if necessary
void prepare(int& count, char**& words);

bool is_terminal(std::FILE* stream);

/// Columns of the terminal that @p stream writes to; 0 if it is not a terminal.
std::uint32_t columns_of(std::FILE* stream);

/// True if a terminal shows UTF-8 when the environment variables do not specify an encoding.
extern const bool shows_utf8_by_itself;

/// Calls @p work after a second and then five times a second, in a signal handler or in another thread.
void call_regularly(void (*work)());

/// The position in the open file @p descriptor; negative if it has none. Safe in a signal handler.
std::int64_t position_of(int descriptor) noexcept;

/// True if standard input has bytes to read or is at its end.
/// @param milliseconds the longest time to wait for that; -1 without limit. A signal may end the wait.
bool input_is_waiting(int milliseconds);

/// True if the signal @p number reports that the reader of the output has closed it.
bool is_of_closed_pipe(int number) noexcept;

} // namespace kvrmem::system
