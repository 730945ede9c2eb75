#include "kvr/memory/store/word_batch.h"

#include <algorithm>
#include <cstring>

namespace kvr {

namespace {

/// Longer words are not packed.
constexpr std::size_t longest_gathered = 256;

// Collecting takes more time than it saves if lengths differ or addresses jump.
constexpr std::size_t least_words_worth_gathering = 8;
constexpr std::uint32_t words_set_apart = 32;

} // namespace

word_batch::~word_batch() {
    try {
        flush();
    } catch (...) {
        // The exception that ends the batch reports the failure to the caller.
    }
}

void word_batch::set_side_by_side(std::uint32_t first, std::string_view all, std::size_t length) {
    while (!all.empty()) {
        char* place = room_for(first, length);
        if (place == nullptr) {
            words->set(first, all.substr(0, length));
            all.remove_prefix(length);
            ++first;
            continue;
        }
        // room_for() has made room for the first word; as many more fit as belong to the same page.
        const std::size_t size = std::min(all.size(), limit - used + length);
        std::memcpy(place, all.data(), size);
        used += size - length;
        next += size / length - 1;
        first += static_cast<std::uint32_t>(size / length);
        all.remove_prefix(size);
    }
}

void word_batch::flush() {
    const std::size_t count = used != 0 ? used / word_length : 0;
    const auto first = static_cast<std::uint32_t>(next - count);
    if (count == page_words) {
        words->set_page(first, texts, word_length);
    } else if (count != 0) {
        words->set_side_by_side(first, {texts.get(), used}, word_length);
    }
    drop();
}

/// Makes room for words of @p length from @p address on. Returns false if such words are not collected.
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
    // The store may take over a page as it is, so the buffer must have exactly the size of the page.
    const bool may_become_page = address % page_words == 0;
    if (texts == nullptr || length > length_in_texts || (may_become_page && length != length_in_texts)) {
        texts = pages.make(length * page_words + slack);
        length_in_texts = length;
    }
    next = address;
    word_length = length;
    limit = (page_words - address % page_words) * length;
    return true;
}

} // namespace kvr
