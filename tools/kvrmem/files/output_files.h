#pragma once

#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/format.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Files that are written together: each to a temporary file, and all are moved to their places when the last
/// one is complete. Without commit() none is replaced. Only if a move fails, or the program ends between two
/// moves, are there new files beside old ones; the new ones are then those that were added first.
class output_files {
public:
    /// Writes @p image, which must be writable, as the file @p target.
    /// @throws kvrimage::file_error, as do the two functions below
    void add(const std::string& target, const kvrimage::memory_image& image,
             const kvrimage::write_options& options);
    void add(const std::string& target, std::string_view text);
    /// Completes all files, and then moves them to their places in the order of add().
    void commit();

private:
    std::vector<std::unique_ptr<kvrimage::replacement_file>> files;
};

} // namespace kvrmem
