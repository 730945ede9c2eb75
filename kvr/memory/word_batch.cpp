#include "kvr/memory/word_batch.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kvr {

namespace {

/// Longer words would leave room for too few of them.
constexpr std::size_t longest_gathered = 256;

// To gather is more work than it saves where the lengths differ or the addresses jump.
constexpr std::size_t least_words_worth_gathering = 8;
constexpr std::uint32_t words_set_apart = 32;

} // namespace

void word_batch::set_side_by_side(std::uint32_t first, std::string_view all, std::size_t length) {
    while (!all.empty()) {
        char* place = room_for(first, length);
        if (place == nullptr) {
            words->set(first, all.substr(0, length));
            all.remove_prefix(length);
            ++first;
            continue;
        }
        // Room for the first of them, and for as many more as go into the same page.
        const std::size_t size = std::min(all.size(), limit - used + length);
        std::memcpy(place, all.data(), size);
        used += size - length;
        next += size / length - 1;
        first += static_cast<std::uint32_t>(size / length);
        all.remove_prefix(size);
    }
}

void word_batch::flush() {
    const std::string_view gathered(texts.data(), std::exchange(used, 0));
    const std::uint64_t end = std::exchange(next, no_address);
    limit = 0;
    if (!gathered.empty()) {
        const std::uint64_t first = end - gathered.size() / word_length;
        words->set_side_by_side(static_cast<std::uint32_t>(first), gathered, word_length);
    }
}

/// Makes room for words of @p length from @p address on; false when such words are not gathered.
bool word_batch::begin(std::uint32_t address, std::size_t length) {
    if (used != 0) {
        apart = used < least_words_worth_gathering * word_length ? words_set_apart : 0;
        flush();
    }
    if (apart != 0) {
        --apart;
        return false;
    }
    if (length == 0 || length > longest_gathered) {
        return false;
    }
    const std::size_t room =
        std::min<std::size_t>(page_words - address % page_words, (texts.size() - slack) / length);
    next = address;
    word_length = length;
    limit = room * length;
    return true;
}

} // namespace kvr
