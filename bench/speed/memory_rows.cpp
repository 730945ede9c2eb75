// The memory per word: the bytes that the allocator has allocated, divided by the number of words.

#include "bench/speed/table.h"
#include "kvr/kvr.h"
#include "kvr/memory/store/comment_store.h"
#include "kvr/memory/store/word_store.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <malloc.h>
#include <string>

namespace speed {

namespace {

double allocated() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// The bytes per word of a store after @p fill.
template <class Fill>
double bytes_a_word(Fill fill) {
    const double before = allocated();
    kvr::word_store store;
    fill(store);
    return (allocated() - before) / words_measured;
}

std::string two_digits(std::uint32_t address) {
    std::array<char, 3> text{};
    std::snprintf(text.data(), text.size(), "%02X", address * 37 % 256);
    return text.data();
}

double comment_bytes() {
    constexpr std::string_view text = "-- entry of the table";
    const double before = allocated();
    kvr::comment_store comments;
    for (std::uint32_t index = 0; index < words_measured; ++index) {
        comments.push_front(text);
    }
    return (allocated() - before) / words_measured;
}

} // namespace

void memory_rows(const table_settings& /*settings*/) {
    const double text = 2;
    const double packed = bytes_a_word([](kvr::word_store& store) {
        store.resize(words_measured, "0");
        for (std::uint32_t address = 0; address < words_measured; ++address) {
            store.set(address, two_digits(address));
        }
    });
    print_row({"bytes a word, texts of 2 characters", packed, text + 0.5, text / 2, ""});
    const double untouched = bytes_a_word([](kvr::word_store& store) { store.resize(words_measured, "0"); });
    print_row({"bytes a word, untouched", untouched, 1.0, 0.1, ""});
    const double constant = bytes_a_word([](kvr::word_store& store) {
        store.resize(words_measured, "0");
        store.fill(0, words_measured - 1, {"5A"});
    });
    print_row({"bytes a word, constant", constant, 1.0, 0.1, ""});
    print_row({"bytes a comment of 21 characters", comment_bytes(), 21 + 12, 21 + 6, ""});
}

} // namespace speed
