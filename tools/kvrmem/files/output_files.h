#pragma once

#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/format.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Files that are written together: each beside its place, and all are moved there when the last one is
/// complete. Without commit(), none is.
class output_files {
public:
    /// Writes @p image, which can be written so, as the file @p target.
    /// @throws kvrimage::file_error; so do the two below
    void add(const std::string& target, const kvrimage::memory_image& image,
             const kvrimage::write_options& options);
    void add(const std::string& target, std::string_view text);
    /// Moves all files to their places, in the order in which they were added.
    void commit();

private:
    std::vector<std::unique_ptr<kvrimage::replacement_file>> files;
};

} // namespace kvrmem
