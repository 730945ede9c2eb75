#include "kvrimage/operations/error_correction/protection.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/image/work_position.h"
#include "kvrimage/operations/byte_numbers.h"
#include "kvrimage/operations/error_correction/ecc_bits.h"
#include "kvrimage/operations/error_correction/ecc_code.h"
#include "kvrimage/operations/linear_map.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

void require_width(const memory_image& image, std::uint32_t width) {
    if (image.width() != width) {
        throw std::invalid_argument(
            fmt::format("words of {} bits, but the scheme has {}", image.width(), width));
    }
}

wide_number sum_of(const wide_number& left, const wide_number& right) {
    return {left.low ^ right.low, left.high ^ right.high};
}

bool fits_numbers(const ecc_code& code) {
    return code.width() <= widest_number_word;
}

/// Protects words given as numbers.
class number_encoder {
public:
    explicit number_encoder(const ecc_code& code) : map(columns_of(code)) {
        for (const ecc_check& check : code.checks) {
            if (check.is_inverted) {
                inverted = sum_of(inverted, single_bit(check.position));
            }
        }
    }

    [[nodiscard]] wide_number operator()(const wide_number& data) const {
        return sum_of(map(data), inverted);
    }

private:
    static std::vector<wide_number> columns_of(const ecc_code& code) {
        std::vector<wide_number> columns;
        for (std::uint32_t bit = 0; bit < code.data_width(); ++bit) {
            wide_number column = single_bit(code.data_positions[bit]);
            for (const ecc_check& check : code.checks) {
                column = check.covers(bit) ? sum_of(column, single_bit(check.position)) : column;
            }
            columns.push_back(column);
        }
        return columns;
    }

    linear_map map;
    wide_number inverted;
};

/// Decodes protected words given as numbers.
class number_decoder {
public:
    explicit number_decoder(const ecc_code& code)
        : decoder(code),
          data_map(data_columns(code)),
          syndrome_map(syndrome_columns(code)) {
        for (std::size_t index = 0; index < code.checks.size(); ++index) {
            inverted |= std::uint64_t{code.checks[index].is_inverted} << index;
        }
    }

    [[nodiscard]] std::uint64_t syndrome_of(const wide_number& word) const {
        return syndrome_map(word).low ^ inverted;
    }
    [[nodiscard]] std::optional<std::uint32_t> wrong_bit(std::uint64_t syndrome) const {
        return decoder.wrong_bit(syndrome);
    }
    /// Returns the data of @p word, which must be intact.
    [[nodiscard]] wide_number data_of_intact(const wide_number& word) const { return data_map(word); }
    /// Returns the data of @p word, which must not be damaged.
    [[nodiscard]] wide_number data_of(const wide_number& word) const {
        const std::uint64_t syndrome = syndrome_of(word);
        return data_map(syndrome == 0 ? word : sum_of(word, single_bit(wrong_bit(syndrome).value())));
    }

private:
    static std::vector<wide_number> data_columns(const ecc_code& code) {
        std::vector<wide_number> columns(code.width());
        for (std::uint32_t bit = 0; bit < code.data_width(); ++bit) {
            columns[code.data_positions[bit]] = single_bit(bit);
        }
        return columns;
    }
    static std::vector<wide_number> syndrome_columns(const ecc_code& code) {
        std::vector<wide_number> columns;
        for (const std::uint64_t syndrome : syndromes(code)) {
            columns.push_back({syndrome, 0});
        }
        return columns;
    }

    ecc_decoder decoder;
    linear_map data_map;
    linear_map syndrome_map;
    std::uint64_t inverted = 0;
};

/// Equal words at regular distances.
struct word_places {
    std::uint64_t first;
    std::uint64_t count;
    std::uint64_t step;
};

class protection_checker {
public:
    protection_checker(const memory_image& of, const ecc_code& code) : image(of), decoder(code) {
        if (fits_numbers(code)) {
            numbers.emplace(code);
        }
    }

    /// Checks words that are stored as bytes and fit numbers.
    void take_bytes(const byte_words& words) {
        byte_number_reader reader(words);
        const std::size_t size = words.bytes_per_word();
        const std::size_t part = byte_number_reader::most_at_once / size * size;
        for (const byte_words::block& each : words.blocks()) {
            std::uint64_t offset = each.first;
            for (std::string_view left = each.bytes; !left.empty();
                 left.remove_prefix(std::min(part, left.size()))) {
                note_work(offset, image.depth());
                reader.read(left.substr(0, part), [&](const wide_number& value) {
                    take_number(value, {offset++, 1, 1});
                });
            }
        }
    }
    std::uint64_t visit_row(const kvr::word_row& row, std::uint64_t offset) {
        for (std::uint32_t index = 0; index < row.count; ++index) {
            take(row[index], {offset + index, 1, 1});
        }
        return row.count;
    }
    std::uint64_t visit_cycle(const text_cycle& cycle) {
        for (std::uint64_t index = 0; index < cycle.period; ++index) {
            const std::uint64_t count = (cycle.length() - index - 1) / cycle.period + 1;
            take(image.words()[cycle.first + index], {cycle.first + index, count, cycle.period});
        }
        return cycle.length();
    }
    void visit_run(const text_run& run) { take(run.text, {run.first, length_of(run), 1}); }

    [[nodiscard]] ecc_report& result() {
        std::ranges::stable_sort(report.findings, {}, &ecc_finding::address);
        return report;
    }

private:
    void take(std::string_view text, const word_places& places) {
        const auto value = numbers ? wide_number_of(text) : std::nullopt;
        if (value) {
            take_number(*value, places);
        } else {
            take_bits(text, places);
        }
    }
    void take_number(const wide_number& value, const word_places& places) {
        report.checked += places.count;
        const std::uint64_t syndrome = numbers->syndrome_of(value);
        if (syndrome != 0) {
            add(places, numbers->wrong_bit(syndrome));
        }
    }
    void take_bits(std::string_view text, const word_places& places) {
        report.checked += places.count;
        static_cast<void>(show_word(text, radix::bin, image.width(), bits));
        if (!is_plain(bits)) {
            throw std::domain_error(fmt::format("the word at address 0x{:X} has don't-care bits: {}",
                                                image.base() + places.first, bits));
        }
        const decoded_bits decoded = decoder.decode(bits);
        if (decoded.what != ecc_result::state::intact) {
            add(places, decoded.bit);
        }
    }
    void add(const word_places& places, const std::optional<std::uint32_t>& bit) {
        (bit ? report.corrected : report.damaged) += places.count;
        if (report.findings.size() < ecc_most_findings) {
            report.findings.push_back({image.base() + places.first, places.count, places.step, bit});
        }
    }

    const memory_image& image;
    ecc_decoder decoder;
    std::optional<number_decoder> numbers;
    ecc_report report;
    std::string bits;
};

void require_not_damaged(const ecc_report& report) {
    const auto damaged =
        std::ranges::find_if(report.findings, [](const ecc_finding& one) { return !one.bit; });
    if (report.damaged != 0) {
        throw std::domain_error(fmt::format(
            "the check bits of {} do not identify the wrong bits{}", counted(report.damaged, "word"),
            damaged == report.findings.end()
                ? ""
                : fmt::format(", the first at address 0x{:X}", damaged->address)));
    }
}

} // namespace

memory_image protected_by(const memory_image& image, const ecc_scheme& scheme) {
    require_width(image, scheme.data_width());
    const ecc_code& code = scheme.as_code();
    const auto encode_bits = [&code](std::string_view bits) {
        return is_plain(bits) ? std::optional(encoded_bits(code, bits)) : std::nullopt;
    };
    if (!fits_numbers(code)) {
        return mapped_words(image, {code.width(), encode_bits, {}});
    }
    return mapped_words(image, {code.width(), encode_bits, number_encoder(code)});
}

ecc_report check_protection(const memory_image& image, const ecc_scheme& scheme) {
    require_width(image, scheme.width());
    protection_checker checker(image, scheme.as_code());
    if (const byte_words* const bytes = image.words().bytes();
        bytes != nullptr && fits_numbers(scheme.as_code())) {
        checker.take_bytes(*bytes);
        return std::move(checker.result());
    }
    for_each_row_cycle_or_run(
        image.words(),
        [&checker](const kvr::word_row& row, std::uint64_t offset) { return checker.visit_row(row, offset); },
        [&checker](const text_cycle& cycle) { return checker.visit_cycle(cycle); },
        [&checker](const text_run& run) { checker.visit_run(run); });
    return std::move(checker.result());
}

memory_image unprotected(const memory_image& image, const ecc_scheme& scheme) {
    return unprotected(image, scheme, check_protection(image, scheme));
}

memory_image unprotected(const memory_image& image, const ecc_scheme& scheme, const ecc_report& checked) {
    require_width(image, scheme.width());
    require_not_damaged(checked);
    const ecc_code& code = scheme.as_code();
    const ecc_decoder decoder(code);
    const auto decode_bits = [&decoder](std::string_view bits) {
        return std::optional(decoder.decode(bits).data);
    };
    if (!fits_numbers(code)) {
        return mapped_words(image, {code.data_width(), decode_bits, {}});
    }
    const number_decoder numbers(code);
    if (checked.corrected == 0) {
        return mapped_words(image, {code.data_width(), decode_bits, [&numbers](const wide_number& value) {
                                        return numbers.data_of_intact(value);
                                    }});
    }
    return mapped_words(image, {code.data_width(), decode_bits,
                                [&numbers](const wide_number& value) { return numbers.data_of(value); }});
}

} // namespace kvrimage
