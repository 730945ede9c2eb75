#include "kvrimage/operations/checksum/checksum.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/number_of_bytes.h"
#include "kvrimage/image/range_check.h"
#include "kvrimage/image/word_copy.h"
#include "kvrimage/image/word_search.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace kvrimage {

namespace {

constexpr std::uint32_t widest_sum = 64;

void require_plain_words(const memory_image& image) {
    if (const auto offset = find_dont_care_word(image.words())) {
        throw std::domain_error(fmt::format("the word at address 0x{:X} has don't-care bits: {}",
                                            image.base() + *offset, image.words()[*offset]));
    }
}

/// Returns the words of @p range of @p image. Words that are not set become @p unset.
memory_image part_of(const memory_image& image, const address_range& range,
                     const std::optional<word>& unset) {
    require_within(image, range);
    const address_range offsets = {range.first - image.base(), range.last - image.base()};
    memory_image part(image.width(), range.last - range.first + 1, range.first);
    if (const byte_words* const bytes = image.words().bytes()) {
        part.words() = image_words(part.depth(), bytes->part(offsets.first, offsets.last));
    } else {
        copy_words(image.words(), offsets.first, offsets.last, part.words(), 0);
    }
    if (unset) {
        part.fill_unset(*unset);
    }
    return part;
}

/// Passes the bytes of all covered words to a function, in blocks of whole words.
class counted_words {
public:
    counted_words(const memory_image& of, const checksum_options& by) : image(of), options(by) {}

    template <class Add>
    void take(byte_order order, Add&& add) const {
        if (!options.ranges.empty()) {
            for (const address_range& range : options.ranges) {
                take_all(part_of(image, range, options.unset), order, add);
            }
        } else if (options.unset) {
            take_all(part_of(image, {image.base(), image.last_address()}, options.unset), order, add);
        } else {
            take_all(image, order, add);
        }
    }
    [[nodiscard]] std::uint32_t bytes_per_word() const { return bytes_of_width(image.width()); }
    [[nodiscard]] byte_order order() const { return options.order; }

private:
    template <class Add>
    static void take_all(const memory_image& words, byte_order order, Add&& add) {
        require_plain_words(words);
        for_each_byte_block(words, order, [&add](std::uint64_t, std::string_view bytes) { add(bytes); });
    }

    const memory_image& image;
    const checksum_options& options;
};

std::uint64_t sum_of_all_bytes(const counted_words& words) {
    std::uint64_t sum = 0;
    words.take(byte_order::little, [&sum](std::string_view bytes) {
        for (const char byte : bytes) {
            sum += static_cast<unsigned char>(byte);
        }
    });
    return sum;
}

/// Returns the sum modulo 2^64.
std::uint64_t sum_of_all_words(const counted_words& words) {
    const std::size_t bytes_per_word = words.bytes_per_word();
    const std::size_t bytes_that_count = std::min(bytes_per_word, sizeof(std::uint64_t));
    std::uint64_t sum = 0;
    words.take(byte_order::little, [&](std::string_view bytes) {
        for (; !bytes.empty(); bytes.remove_prefix(bytes_per_word)) {
            sum += number_of_bytes(bytes.substr(0, bytes_that_count), byte_order::little);
        }
    });
    return sum;
}

word result_of(const counted_words& words, const crc_model& model) {
    crc check(model);
    words.take(words.order(), [&check](std::string_view bytes) { check.add(bytes); });
    return word::of(check.value(), model.width);
}

word result_of(const counted_words& words, const additive_sum& what) {
    if (what.width == 0 || what.width > widest_sum) {
        throw std::invalid_argument(fmt::format("a sum of {} bits: the width is 1 to 64", what.width));
    }
    const std::uint64_t sum = what.of_words ? sum_of_all_words(words) : sum_of_all_bytes(words);
    const std::uint64_t all = ~std::uint64_t{0} >> (widest_sum - what.width);
    return word::of((what.is_complemented ? 0 - sum : sum) & all, what.width);
}

void add_sums(std::vector<named_checksum>& names, std::string_view kind, bool of_words,
              bool is_complemented) {
    for (const std::uint32_t width : {8U, 16U, 32U, 64U}) {
        names.push_back({fmt::format("{}-{}", kind, width), additive_sum{width, of_words, is_complemented}});
    }
}

std::vector<named_checksum> make_named_checksums() {
    std::vector<named_checksum> names;
    for (const known_crc& known : known_crcs()) {
        names.push_back({std::string(known.name), known.model});
    }
    add_sums(names, "sum", false, false);
    add_sums(names, "balance", false, true);
    add_sums(names, "word-sum", true, false);
    add_sums(names, "word-balance", true, true);
    return names;
}

} // namespace

const std::vector<named_checksum>& named_checksums() {
    static const std::vector<named_checksum> all = make_named_checksums();
    return all;
}

std::optional<checksum_kind> checksum_of_name(std::string_view name) {
    const auto found = std::ranges::find(named_checksums(), name, &named_checksum::name);
    return found == named_checksums().end() ? std::nullopt : std::optional(found->what);
}

word checksum_of(const memory_image& image, const checksum_kind& what, const checksum_options& options) {
    const counted_words words(image, options);
    return std::visit([&words](const auto& kind) { return result_of(words, kind); }, what);
}

void for_each_counted_block(const memory_image& image, const checksum_options& options,
                            const std::function<void(std::string_view bytes)>& take) {
    counted_words(image, options).take(options.order, take);
}

} // namespace kvrimage
