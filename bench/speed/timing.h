#pragma once

#include <functional>
#include <string>
#include <vector>

namespace speed {

/// Seconds that one run of something takes.
using measurement = std::function<double()>;

/// The cost of two things that were run in turn.
struct comparison {
    double work;  ///< median, in seconds
    double floor; ///< median of the yardstick, in seconds
    double ratio; ///< median of the ratios of adjacent runs
};

/// Runs @p work and @p floor in turn, once uncounted and then @p rounds times.
[[nodiscard]] comparison compare(const measurement& work, const measurement& floor, int rounds);

[[nodiscard]] double median(std::vector<double> values);

/// The arguments of exec: pointers to the words of @p command, which must outlive them, and a null pointer.
[[nodiscard]] std::vector<char*> argument_pointers(std::vector<std::string>& command);

/// Seconds that the process @p command takes from its start to its end, its output discarded. Ends the
/// program when it cannot be started or does not end with 0.
[[nodiscard]] double time_of_process(const std::vector<std::string>& command);

/// The same in seconds of the processor, of the user and the system together.
[[nodiscard]] double processor_time_of_process(const std::vector<std::string>& command);

/// The peak memory of the process @p command, in MB, its output discarded.
[[nodiscard]] double peak_of_process(const std::vector<std::string>& command);

/// "15.3 ms / 7.3 ms": the work and the floor.
[[nodiscard]] std::string milliseconds(const comparison& result);

/// Seconds by a monotonic clock.
[[nodiscard]] double now();

} // namespace speed
