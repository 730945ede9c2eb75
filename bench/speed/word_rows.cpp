// Single words.

#include "bench/speed/table.h"
#include "bench/speed/timing.h"
#include "kvr/kvr.h"

#include <array>
#include <cstdio>
#include <deque>
#include <string>

namespace speed {

namespace {

template <class Get>
double time_of_all(Get get) {
    std::size_t characters = 0;
    const double begin = now();
    for (unsigned address = 0; address < words_measured; ++address) {
        const std::string word = get(address);
        characters += word.size();
    }
    const double time = now() - begin;
    if (characters == 0) {
        std::puts("no words");
    }
    return time / words_measured;
}

std::string text_of(unsigned address, int length) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%0*X", length,
                  address * 2654435761U >> (length < 8 ? 32 - 4 * length : 0));
    return text.data();
}

void print_get(const table_settings& settings, int length, unsigned bits) {
    KVR_MEMORY_FILE file;
    std::deque<std::string> texts;
    file.set_file_type(FILE_TYPE_MIF);
    file.set_word_size(bits);
    file.set_memory_radix(RADIX_HEX);
    file.set_number_of_words(words_measured);
    for (unsigned address = 0; address < words_measured; ++address) {
        texts.push_back(text_of(address, length));
        file.set_data_word(address, texts.back(), RADIX_HEX);
    }
    const comparison result = compare(
        [&file] { return time_of_all([&file](unsigned at) { return file.get_data_word(at, RADIX_HEX); }); },
        [&texts] { return time_of_all([&texts](unsigned at) { return texts[at]; }); }, settings.rounds);
    std::array<char, 64> figures{};
    std::snprintf(figures.data(), figures.size(), "%.3g ns / %.3g ns", result.work * 1e9, result.floor * 1e9);
    print_row({"get_data_word, same radix, " + std::to_string(length) + " characters", result.ratio, 1.0, 0.6,
               figures.data()});
}

/// Nanoseconds per call, for @p calls calls in ascending address order.
double time_of_commented_words(unsigned calls) {
    KVR_MEMORY_FILE file;
    file.set_file_type(FILE_TYPE_MIF);
    file.set_word_size(8);
    file.set_memory_radix(RADIX_HEX);
    file.set_number_of_words(calls);
    const double begin = now();
    for (unsigned address = 0; address < calls; ++address) {
        file.set_data_word_with_comments(address, "5A", "-- entry", RADIX_HEX);
    }
    return (now() - begin) / calls * 1e9;
}

} // namespace

void word_rows(const table_settings& settings) {
    print_get(settings, 2, 8);
    print_get(settings, 8, 32);
    std::vector<double> times;
    std::vector<double> growth;
    for (int round = 0; round < settings.rounds; ++round) {
        times.push_back(time_of_commented_words(1U << 16));
        growth.push_back(time_of_commented_words(1U << 19) / times.back());
    }
    print_row({"set_data_word_with_comments, ns a call", median(times), 200, 60, ""});
    print_row({"the same, 8 times as many calls, ratio", median(growth), 1.25, 1.0, ""});
}

} // namespace speed
