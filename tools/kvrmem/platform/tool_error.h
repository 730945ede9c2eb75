#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

namespace kvrmem {

/// What the tool answers to the shell.
enum class exit_code {
    success = 0,
    negative = 1,     ///< the answer to the question asked is no
    bad_input = 2,    ///< a file holds something wrong
    input_output = 3, ///< a file cannot be opened, read or written
    wrong_usage = 4,
    internal = 5, ///< out of memory, or a mistake of ours
};

/// Ends a command: a message for the user, and the exit code.
class tool_error : public std::exception {
public:
    tool_error(exit_code code, std::string message)
        : exit(code),
          text(std::make_shared<const std::string>(std::move(message))) {}
    [[nodiscard]] exit_code code() const noexcept { return exit; }
    /// The whole message, which may hold a NUL of a file.
    [[nodiscard]] const std::string& message() const noexcept { return *text; }
    [[nodiscard]] const char* what() const noexcept override { return text->c_str(); }

private:
    exit_code exit;
    std::shared_ptr<const std::string> text; ///< shared: an exception is copied without an exception
};

/// @throws tool_error (wrong usage) always.
[[noreturn]] inline void usage_error(const std::string& message) {
    throw tool_error(exit_code::wrong_usage, message);
}

} // namespace kvrmem
