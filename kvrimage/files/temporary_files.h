#pragma once

#include "kvrimage/files/unfinished_files.h"

#include <string>

namespace kvrimage {

/// A new file in a folder that is removed again, by remove_temporary_files() or in the end, unless it is
/// kept.
class temporary_file {
public:
    temporary_file() = default;
    ~temporary_file();
    temporary_file(const temporary_file&) = delete;
    temporary_file& operator=(const temporary_file&) = delete;

    /// Makes it in the folder @p folder ("" for the working directory), with a name of its own and the
    /// permissions that a new file gets, and returns its descriptor, which the caller closes; -1, with errno,
    /// when that fails.
    /// @param is_private nobody else may open it
    [[nodiscard]] int make_in(const std::string& folder, bool is_private);
    [[nodiscard]] const std::string& path() const noexcept { return name; }
    /// It is not removed any more.
    void keep() noexcept;

private:
    void forget() noexcept;

    std::string name;       ///< "" when there is nothing to remove
    std::size_t listed = 0; ///< in the list of temporary files
};

} // namespace kvrimage
