#pragma once

#include "kvr/memory/io/output_file.h"
#include "kvrimage/formats/format.h"

#include <cstddef>
#include <string_view>

namespace kvrimage {

/// Collects text in large blocks for a sink. Also lets the kvr functions that format many words into an
/// output_file write to the sink.
class sink_buffer {
public:
    explicit sink_buffer(text_sink& target) : sink(target), begin(block.room(0)) {}
    sink_buffer(const sink_buffer&) = delete;
    sink_buffer& operator=(const sink_buffer&) = delete;

    void write(std::string_view text);
    /// Passes the buffered text to the sink.
    void flush();

    /// Buffers the output of @p format (kvr::output_file&), which must not exceed `room_limit` bytes. Returns
    /// its result.
    static constexpr std::size_t room_limit = kvr::output_file::block_size / 2;
    template <class Format>
    auto write_with(Format&& format) {
        require(room_limit);
        const auto result = format(block);
        filled = static_cast<std::size_t>(block.room(0) - begin);
        return result;
    }

private:
    void require(std::size_t count) {
        if (count > kvr::output_file::block_size - filled) {
            flush();
        }
    }

    text_sink& sink;
    kvr::output_file block{nullptr}; ///< buffer without a file
    const char* begin;
    std::size_t filled = 0;
};

} // namespace kvrimage
