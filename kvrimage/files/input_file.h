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

/// The longest line of a file, and the most that is taken from what may have no end: a pipe, a device, a
/// terminal, and what calls itself an empty file.
inline constexpr std::size_t most_bytes_without_end = std::size_t{32} << 20U;

/// Called when a file was opened, before it is read or written: its name for messages, a descriptor that is
/// open until the work on it is done, and its bytes (0: not known).
using file_observer = std::function<void(const std::string& title, int descriptor, std::uint64_t size)>;

/// Says, by the bytes read so far, that the lines of a file may have any length. Asked only about one that
/// has a longer line than most_bytes_without_end.
using any_lines = std::function<bool(std::string_view bytes)>;

/// A file, read into memory as a whole.
class input_file {
public:
    /// Reads the file @p path, or standard input when that is "-".
    /// @throws file_error when it cannot be opened or read; std::errc::file_too_large when a line has more
    /// than
    ///         most_bytes_without_end bytes, unless @p is_free says that it may, or the whole where that is
    ///         no regular file with a size
    explicit input_file(const std::string& path, const file_observer& opened = {},
                        const any_lines& is_free = {});
    /// Reads the rest of @p descriptor, which stays open. @p title: as messages name it.
    /// @throws file_error as above
    input_file(int descriptor, std::string title, const file_observer& opened = {},
               const any_lines& is_free = {});

    /// As messages name it.
    [[nodiscard]] const std::string& name() const noexcept { return title; }
    /// Valid as long as this object, also after a move.
    [[nodiscard]] std::string_view contents() const noexcept { return bytes->text(); }
    /// See read_options::keeper. It keeps the contents beyond this object, but not from edit().
    [[nodiscard]] std::shared_ptr<const void> keeper() const noexcept { return bytes; }

    /// Makes @p edits, which are in order and do not overlap, in the contents, without a second copy of them.
    /// The file stays as it is.
    void edit(std::span<const text_edit> edits);

private:
    void read(int descriptor, const file_observer& opened, const any_lines& is_free);
    void read_blocks(int descriptor, std::uint64_t size, const any_lines& is_free);

    std::string title;
    open_descriptor file; ///< stays open: the observer may look at it while the contents are parsed
    std::shared_ptr<byte_buffer> bytes = std::make_shared<byte_buffer>();
};

} // namespace kvrimage
