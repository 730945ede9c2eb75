#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/files/open_descriptor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kvrimage {

/// The limit for each line of a file, and for the whole of an input that may be endless: a pipe, a device, a
/// terminal, or a file of size 0 according to the system.
inline constexpr std::size_t most_bytes_without_end = std::size_t{32} << 20U;

/// Called after a file was opened and before it is read or written. @p title is its name in messages, @p
/// descriptor stays open until the work on the file is done, and @p size is in bytes (0: not known).
using file_observer = std::function<void(const std::string& title, int descriptor, std::uint64_t size)>;

/// Returns true if the lines of a file that begins with @p bytes may have any length. Called only for a file
/// with a line longer than most_bytes_without_end.
using any_lines = std::function<bool(std::string_view bytes)>;

/// The contents of a file, in memory.
class input_file {
public:
    /// Reads the file @p path, or standard input for "-".
    /// @throws file_error if it cannot be opened or read; with std::errc::file_too_large if more than
    ///         most_bytes_without_end bytes are in a line, unless @p is_free allows that, or in an input
    ///         that is not a regular file with a size
    explicit input_file(const std::string& path, const file_observer& opened = {},
                        const any_lines& is_free = {});
    /// Reads the rest of @p descriptor, which stays open. @p title is its name in messages.
    /// @throws file_error as above
    input_file(int descriptor, std::string title, const file_observer& opened = {},
               const any_lines& is_free = {});

    /// The name in messages.
    [[nodiscard]] const std::string& name() const noexcept { return title; }
    /// Valid until this object is destroyed or edited, also after a move.
    [[nodiscard]] std::string_view contents() const noexcept { return bytes->text(); }
    /// See read_options::keeper. It keeps the contents after this object is destroyed, but edit() changes
    /// them.
    [[nodiscard]] std::shared_ptr<const void> keeper() const noexcept { return bytes; }

    /// Applies @p edits, which are in order and do not overlap, to the contents in place. The file itself is
    /// not changed.
    void edit(std::span<const text_edit> edits);

private:
    void read(int descriptor, const file_observer& opened, const any_lines& is_free);
    void read_blocks(int descriptor, std::uint64_t size, const any_lines& is_free);

    std::string title;
    open_descriptor file; ///< stays open for the observer while the contents are parsed
    std::shared_ptr<byte_buffer> bytes = std::make_shared<byte_buffer>();
};

} // namespace kvrimage
