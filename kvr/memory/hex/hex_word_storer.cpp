#include "kvr/memory/hex/hex_word_storer.h"

#include "kvr/memory/hex/hex_memory.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kvr {

namespace {

constexpr std::uint64_t most_addresses = std::numeric_limits<std::uint32_t>::max();

/// Returns @p data without the digits beyond @p record_bytes, rounded up to whole words.
std::string_view cut_to_record_length(std::string_view data, std::uint32_t record_bytes,
                                      std::uint64_t word_bits) {
    const std::uint64_t record_bits =
        (word_bits + std::uint64_t{8} * record_bytes - 1) / word_bits * word_bits;
    const std::uint64_t data_bits = std::uint64_t{4} * data.size();
    return data_bits >= record_bits + 4 ? data.substr((data_bits - record_bits) / 4) : data;
}

/// Returns the digits of a word at the end of @p digits; empty if there are too few bits.
std::string_view last_word_of(std::string_view digits, std::uint32_t word_size) {
    const std::uint64_t bits = std::uint64_t{4} * digits.size();
    return bits < word_size ? std::string_view() : digits.substr((bits - word_size) / 4);
}

} // namespace

hex_word_storer::hex_word_storer(word_store& target, std::uint32_t bits_per_word) noexcept
    : words(target),
      batch(target),
      word_size(bits_per_word),
      bytes_per_word(bits_per_word / 8 + (bits_per_word % 8 != 0 ? 1 : 0)) {}

void hex_word_storer::learn_record_length(std::uint32_t record_bytes) noexcept {
    const bool whole_bytes = word_size != 0 && word_size % 8 == 0;
    known_bytes = record_bytes;
    known_words = whole_bytes && record_bytes % bytes_per_word == 0 ? record_bytes / bytes_per_word : 0;
}

std::uint32_t hex_word_storer::store_one_by_one(std::uint32_t first, std::string_view data,
                                                std::uint32_t record_bytes) {
    const std::uint64_t word_bits = std::uint64_t{8} * bytes_per_word;
    if (word_bits == 0) {
        return 0;
    }
    const std::size_t word_digits = word_bits / 4;
    std::string_view digits = cut_to_record_length(data, record_bytes, word_bits);
    digits.remove_prefix(std::uint64_t{4} * digits.size() % word_size / 4);
    std::uint32_t count = 0;
    while (!digits.empty()) {
        const std::string_view word = last_word_of(digits.substr(0, word_digits), word_size);
        digits.remove_prefix(std::min(word_digits, digits.size()));
        if (word.empty()) {
            continue;
        }
        const std::uint32_t address = first + count++;
        if (address < words.size()) {
            batch.set(address, word);
        }
    }
    return count;
}

fast_hex_words::fast_hex_words(const hex_memory& memory) noexcept
    : initialize_value(memory.memory_initialize_value),
      storer(words, memory.word_size) {}

/// Resizes the store for the addresses @p first to @p last - 1, or gives up.
void fast_hex_words::make_room(std::uint64_t first, std::uint64_t last) {
    given_up = given_up || first < end || last > most_addresses;
    if (given_up) {
        storer.drop();
        words = word_store();
    } else {
        storer.flush();
        const std::uint64_t whole_roots = (last / root_words + 1) * root_words;
        words.resize(static_cast<std::uint32_t>(std::min(whole_roots, most_addresses)), initialize_value);
    }
}

word_store fast_hex_words::finish(std::uint32_t size) {
    storer.flush();
    words.resize(size, initialize_value);
    return std::move(words);
}

} // namespace kvr
