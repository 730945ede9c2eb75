#pragma once

#include <cstdint>
#include <cstdio>

/// What differs between operating systems in the tool; system_posix.cpp and system_windows.cpp are its only
/// sources that depend on one. What concerns files is in kvrimage/files/platform.h.
namespace kvrmem::system {

inline constexpr int standard_input = 0;
inline constexpr int standard_output = 1;
inline constexpr int standard_error = 2;

/// What the first call of main() makes the same on all systems: the words of the command line are UTF-8,
/// standard input and output carry bytes as they are, and a terminal understands UTF-8 and the sequences for
/// colors.
/// @param count, words as main() is given them, and replaced where need be
void prepare(int& count, char**& words);

bool is_terminal(std::FILE* stream);

/// Columns of the terminal that @p stream writes to; 0 when it is none.
std::uint32_t columns_of(std::FILE* stream);

/// Whether a terminal shows UTF-8 where the environment does not say it.
extern const bool shows_utf8_by_itself;

/// Calls @p work, in a signal handler or in another thread, after a second and then five times a second.
void call_regularly(void (*work)());

/// The position of the open file @p descriptor; negative when there is none. A signal handler may call it.
std::int64_t position_of(int descriptor) noexcept;

/// True when there are bytes to read from standard input, or its end was reached. A signal may end the wait.
/// @param milliseconds to wait for that; -1 without an end
bool input_is_waiting(int milliseconds);

/// The signal @p number says that nobody reads the output any more.
bool is_of_closed_pipe(int number) noexcept;

} // namespace kvrmem::system
