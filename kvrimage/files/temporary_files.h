#pragma once

#include "kvrimage/files/unfinished_files.h"

#include <string>

namespace kvrimage {

/// A new file that the destructor or remove_temporary_files() removes, unless keep() was called.
class temporary_file {
public:
    temporary_file() = default;
    ~temporary_file();
    temporary_file(const temporary_file&) = delete;
    temporary_file& operator=(const temporary_file&) = delete;

    /// Creates the file in the folder @p folder ("" for the working directory), with a random name and the
    /// default permissions. Returns its descriptor, which the caller closes; -1, with errno, if that fails.
    /// @param is_private only the user may open it
    [[nodiscard]] int make_in(const std::string& folder, bool is_private);
    [[nodiscard]] const std::string& path() const noexcept { return name; }
    /// Prevents the removal of the file.
    void keep() noexcept;

private:
    void forget() noexcept;

    std::string name;       ///< "" if there is no file to remove
    std::size_t listed = 0; ///< its number in the list of temporary files
};

} // namespace kvrimage
