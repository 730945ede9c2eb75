#pragma once

#include "kvr/memory/io/output_file.h"

#include <string>
#include <sys/stat.h>

namespace kvrmem {

/// How messages name the output @p target: "standard output" for "-", and nothing that a terminal may not
/// show.
[[nodiscard]] std::string title_of_output(const std::string& target);

/// A name in a folder that is removed again, by a signal or in the end, unless it is kept.
class temporary_name {
public:
    temporary_name() = default;
    ~temporary_name();
    temporary_name(const temporary_name&) = delete;
    temporary_name& operator=(const temporary_name&) = delete;

    /// Makes a new file in the folder @p folder ("" for the working directory) and answers with its
    /// descriptor, which the caller closes; -1, with errno, when that fails.
    [[nodiscard]] int make_in(const std::string& folder);
    [[nodiscard]] const std::string& path() const noexcept { return name; }
    /// It is not removed any more.
    void keep() noexcept;

private:
    std::string name; ///< "" when there is nothing to remove
};

/// A file that is written beside its place and moved over it when it is whole, so that whoever looks
/// finds the old contents or the new ones and never a part. It gets the owner and the permissions of the file
/// that it replaces; other names (hard links) of that file keep the old contents. "-" and what is no regular
/// file (a terminal, a pipe, /dev/null) are written directly.
class replacement_file {
public:
    /// @throws tool_error when no file can be written there.
    explicit replacement_file(const std::string& target);

    [[nodiscard]] kvr::output_file& output() noexcept { return file; }

    /// Writes out the rest and moves the file to its place. Without this call, what was written is removed.
    /// @throws tool_error when that fails; the old file is then still there.
    void commit();

private:
    /// @param old what is there already, if anything is.
    void open_beside(const struct stat& old);
    void open_directly();
    [[noreturn]] void fail(int reason) const;

    std::string name;         ///< as messages call it
    std::string place;        ///< where the file goes, symbolic links resolved
    temporary_name temporary; ///< not used when the file is written directly
    bool replaces = false;    ///< there is a file at the place
    kvr::output_file file{nullptr};
};

} // namespace kvrmem
