#include "kvrimage/image/text_rows.h"

#include "kvr/memory/store/word_row.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/work_position.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

namespace {

/// Passes @p row, whose first word has the offset @p first, to the callbacks.
void take_texts(const kvr::word_row& row, std::uint64_t first, const row_visitor& visit_row,
                const std::function<void(const text_run& run)>& visit_run) {
    for (std::uint32_t index = 0; index < row.count;) {
        const std::uint64_t offset = first + index;
        const auto taken = static_cast<std::uint32_t>(visit_row(row.part(index, row.count - index), offset));
        if (taken == 0) {
            visit_run(text_run{offset, offset, row[index]});
        }
        index += std::max(taken, 1U);
    }
}

} // namespace

bool for_each_text_of_bytes(const image_words& words, const row_visitor& visit_row,
                            const std::function<void(const text_run& run)>& visit_run) {
    constexpr std::size_t part_size = std::size_t{1} << 14U; // bytes whose texts fit the cache
    const byte_words* const bytes = words.bytes();
    if (bytes == nullptr || word_shape(bytes->width()).digits > kvr::word_row::longest) {
        return false;
    }
    const std::size_t size = bytes->bytes_per_word();
    const auto digits = static_cast<std::uint32_t>(word_shape(bytes->width()).digits);
    const std::size_t part = std::max<std::size_t>(part_size / size, 1) * size;
    byte_texts texts(bytes->width(), bytes->order());
    for (const byte_words::block& block : bytes->blocks()) {
        std::uint64_t offset = block.first;
        for (std::string_view left = block.bytes; !left.empty();) {
            const std::string_view some = left.substr(0, part);
            const auto count = static_cast<std::uint32_t>(some.size() / size);
            note_work(offset, words.size());
            take_texts({texts.make(some).data(), digits, count}, offset, visit_row, visit_run);
            offset += count;
            left.remove_prefix(some.size());
        }
    }
    return true;
}

} // namespace kvrimage
