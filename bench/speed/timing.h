#pragma once

#include <functional>
#include <string>
#include <vector>

namespace speed {

/// Runs something once and returns the time in seconds.
using measurement = std::function<double()>;

/// The cost of two things that were run alternately.
struct comparison {
    double work;  ///< median, in seconds
    double floor; ///< median of the yardstick, in seconds
    double ratio; ///< median of the ratios of adjacent runs
};

/// Runs @p work and @p floor alternately: once without counting, then @p rounds times.
[[nodiscard]] comparison compare(const measurement& work, const measurement& floor, int rounds);

[[nodiscard]] double median(std::vector<double> values);

/// The arguments of exec: pointers to the words of @p command, which must outlive them, and a null pointer.
[[nodiscard]] std::vector<char*> argument_pointers(std::vector<std::string>& command);

/// The elapsed time of the process @p command in seconds, with its output discarded. Ends the program if the
/// command cannot be started or does not exit with 0.
[[nodiscard]] double time_of_process(const std::vector<std::string>& command);

/// The same in seconds of processor time, user and system together.
[[nodiscard]] double processor_time_of_process(const std::vector<std::string>& command);

/// The peak memory of the process @p command in MB, with its output discarded.
[[nodiscard]] double peak_of_process(const std::vector<std::string>& command);

/// "15.3 ms / 7.3 ms": the work and the floor.
[[nodiscard]] std::string milliseconds(const comparison& result);

/// The time of a monotonic clock in seconds.
[[nodiscard]] double now();

} // namespace speed
