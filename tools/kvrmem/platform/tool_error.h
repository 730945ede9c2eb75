#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace kvrmem {

/// The exit codes of the tool.
enum class exit_code {
    success = 0,
    negative = 1,     ///< no failure, but the result is "no": files differ, words are missing
    bad_input = 2,    ///< a file contains a fault
    input_output = 3, ///< a file cannot be opened, read or written
    wrong_usage = 4,
    internal = 5, ///< out of memory, or a bug
};

/// Ends a command with a message for the user and an exit code.
class tool_error : public std::exception {
public:
    tool_error(exit_code code, std::string message)
        : exit(code),
          text(std::make_shared<const std::string>(std::move(message))) {}
    [[nodiscard]] exit_code code() const noexcept { return exit; }
    /// The complete message, which may contain a NUL of a file.
    [[nodiscard]] const std::string& message() const noexcept { return *text; }
    [[nodiscard]] const char* what() const noexcept override { return text->c_str(); }

private:
    exit_code exit;
    std::shared_ptr<const std::string> text; ///< shared: an exception is copied without an exception
};

/// @throws tool_error always, with exit_code::wrong_usage
[[noreturn]] inline void usage_error(const std::string& message) {
    throw tool_error(exit_code::wrong_usage, message);
}

} // namespace kvrmem
