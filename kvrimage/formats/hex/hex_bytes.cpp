#include "kvrimage/formats/hex/hex_bytes.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/hex/hex_faults.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/image/word_runs.h"

#include <algorithm>

namespace kvrimage {

hex_word_joiner::hex_word_joiner(std::string_view file, const hex_layout& of, image_words& to)
    : contents(file),
      layout(of),
      words(to),
      bytes_per_word(of.bytes_per_word()),
      digits_of_word(2 * std::size_t{bytes_per_word}, '0') {}

void hex_word_joiner::join(const image_words& bytes) {
    const auto take_row = [this](const kvr::word_row& row, std::uint64_t first) {
        for (std::uint32_t index = 0; index < row.count; ++index) {
            put(first + index, row[index]);
        }
        return row.count;
    };
    for_each_row_or_run(bytes, take_row, [this](const text_run& run) {
        for (std::uint64_t address = run.first; address <= run.last; ++address) {
            put(address, run.text);
        }
    });
    finish_word();
}

void hex_word_joiner::put(std::uint64_t address, std::string_view digits) {
    const std::uint64_t word = address / bytes_per_word;
    if (word != current) {
        finish_word();
        current = word;
    }
    const std::uint64_t index = address % bytes_per_word;
    const std::uint64_t place = layout.order == byte_order::big ? index : bytes_per_word - 1 - index;
    digits.copy(&digits_of_word[2 * place], 2);
    ++bytes_found;
}

void hex_word_joiner::finish_word() {
    if (bytes_found == bytes_per_word) {
        words.set(current, digits_of_word);
    } else if (bytes_found != 0) {
        bytes_of_first_partial = partial_words.empty() ? bytes_found : bytes_of_first_partial;
        partial_words.push_back({current, current});
    }
    bytes_found = 0;
}

void hex_word_joiner::report(diagnostic_list& diagnostics) const {
    if (partial_words.empty()) {
        return;
    }
    const std::size_t shown = std::min(partial_words.size(), places::kept);
    std::vector<span> found(partial_words.size());
    hex_offset offset;
    static_cast<void>(for_each_data_record(contents, offset, [&](const hex_data& data) {
        for (std::size_t number = 0; number < shown; ++number) {
            const std::uint64_t first = partial_words[number].first * bytes_per_word;
            if (data.address < first + bytes_per_word && first < data.address + data.bytes) {
                found[number] = data.where;
            }
        }
    }));
    places where;
    std::ranges::for_each(found, [&where](const span& each) { where.add(each); });
    diagnostics.add(diagnose::partial_word(where, partial_words.front().first, bytes_of_first_partial,
                                           count_of(bytes_per_word, "byte")));
}

std::string in_byte_order(std::string_view digits, byte_order order) {
    std::string result(digits);
    if (order == byte_order::little) {
        for (std::size_t at = 0; at < digits.size(); at += 2) {
            digits.substr(digits.size() - 2 - at, 2).copy(&result[at], 2);
        }
    }
    return result;
}

} // namespace kvrimage
