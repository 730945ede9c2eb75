#pragma once

#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/format.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Files that are written together: each beside its place, and all are moved there when the last one is
/// complete. Without commit(), none is. Only a move that fails, or an end of the program between two moves,
/// leaves new files beside old ones; the ones that were added first are then the new ones.
class output_files {
public:
    /// Writes @p image, which can be written so, as the file @p target.
    /// @throws kvrimage::file_error; so do the two below
    void add(const std::string& target, const kvrimage::memory_image& image,
             const kvrimage::write_options& options);
    void add(const std::string& target, std::string_view text);
    /// Completes all files, and then moves them to their places, in the order in which they were added.
    void commit();

private:
    std::vector<std::unique_ptr<kvrimage::replacement_file>> files;
};

} // namespace kvrmem
