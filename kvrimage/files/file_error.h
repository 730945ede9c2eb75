#pragma once

#include <string>
#include <system_error>
#include <utility>

namespace kvrimage {

/// A file that cannot be opened, read or written. what() is a complete message with the name of the file
/// ("boot.mif: cannot be opened: No such file or directory"). code() is the reason: the system's, or
/// std::errc::file_too_large for an input without end or with too long a line.
class file_error : public std::system_error {
public:
    file_error(std::error_code reason, std::string message)
        : std::system_error(reason),
          text(std::move(message)) {}
    file_error(int reason, std::string message)
        : file_error(std::error_code(reason, std::generic_category()), std::move(message)) {}
    file_error(const file_error&) = default;
    file_error& operator=(const file_error&) = default;
    file_error(file_error&&) = default;
    file_error& operator=(file_error&&) = default;
    ~file_error() override;

    [[nodiscard]] const char* what() const noexcept override { return text.c_str(); }

private:
    std::string text;
};

} // namespace kvrimage
