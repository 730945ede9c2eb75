#pragma once

#include "kvr/memory/output_file.h"

#include <string>

namespace kvrmem {

/// A file that is written beside its place and moved over it when it is whole, so that whoever looks
/// finds the old contents or the new ones and never a part. "-" and what is no regular file (a terminal, a
/// pipe, /dev/null) are written directly.
class replacement_file {
public:
    /// @throws tool_error when no file can be written there.
    explicit replacement_file(const std::string& target);
    /// Removes what was written unless commit() was called.
    ~replacement_file();
    replacement_file(const replacement_file&) = delete;
    replacement_file& operator=(const replacement_file&) = delete;

    [[nodiscard]] kvr::output_file& output() noexcept { return file; }

    /// Writes out the rest and moves the file to its place.
    /// @throws tool_error when that fails; the old file is then still there.
    void commit();

private:
    void open_beside();
    void open_directly();
    [[noreturn]] void fail(const std::string& reason);

    std::string name;      ///< as the person wrote it
    std::string place;     ///< where the file goes, symbolic links resolved
    std::string temporary; ///< "" when the file is written directly
    kvr::output_file file{nullptr};
};

} // namespace kvrmem
