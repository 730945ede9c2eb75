#include "tests/kvrimage/formats/random_images.h"

#include "kvrimage/bytes/bytes_of_words.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

using namespace kvrimage;

namespace {

/// @p width random bits. With @p dont_care, some of the hexadecimal digits are "X".
word random_word_of(std::mt19937& random, std::uint32_t width, bool dont_care) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    const std::uint32_t top_bits = (width - 1) % 4 + 1;
    std::string text;
    for (std::uint32_t left = (width + 3) / 4; left > 0; --left) {
        const std::size_t values = text.empty() ? std::size_t{1} << top_bits : digits.size();
        text += dont_care && random() % 4 == 0 ? 'X' : digits[random() % values];
    }
    return *word::parse(text, radix::hex, width).value;
}

/// Sets the words of @p range in one of three ways: all different, all equal, or a cycle.
void set_words(std::mt19937& random, memory_image& image, const address_range& range, bool dont_care) {
    const auto next = [&] { return random_word_of(random, image.width(), dont_care); };
    switch (random() % 3) {
    case 0:
        for (std::uint64_t address = range.first; address <= range.last; ++address) {
            image.set(address, next());
        }
        break;
    case 1:
        image.fill(range, std::vector{next()});
        break;
    default:
        image.fill(range, std::vector{next(), next(), next()});
    }
}

address_range random_range(std::mt19937& random, const memory_image& image) {
    const std::uint64_t first = image.base() + random() % image.depth();
    return {first, std::min<std::uint64_t>(image.last_address(), first + random() % 20)};
}

/// One of the values of @p kind, which are separated by blanks; no value if any text is allowed.
std::optional<std::string> random_value(std::mt19937& random, const choice_kind& kind) {
    if (kind.operand.empty()) {
        return "";
    }
    std::vector<std::string> values;
    for (std::string_view left = kind.values; !left.empty();) {
        const std::size_t end = std::min(left.find(' '), left.size());
        values.emplace_back(left.substr(0, end));
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    if (!values.empty()) {
        return values[random() % values.size()];
    }
    // The choices with an operand of bytes or words.
    return kind.operand == "BYTES" || kind.operand == "N" ? std::optional(std::to_string(1 + random() % 200))
                                                          : std::nullopt;
}

} // namespace

memory_image random_image(std::mt19937& random, std::uint32_t width, std::uint64_t most_words,
                          const image_traits& traits) {
    const std::uint64_t base = traits.base ? 1 + random() % 100000 : 0;
    memory_image image(width, 1 + random() % most_words, base);
    for (auto parts = 1 + random() % 6; parts > 0; --parts) {
        set_words(random, image, random_range(random, image), traits.dont_care);
    }
    if (!traits.gaps) {
        image.fill_unset(random_word_of(random, width, traits.dont_care));
    }
    return image;
}

memory_image moved_to_zero(const memory_image& image) {
    memory_image moved(image.width(), image.depth());
    for (const run& each : image.runs()) {
        if (each.value) {
            moved.fill({each.addresses.first - image.base(), each.addresses.last - image.base()},
                       std::vector{*each.value});
        }
    }
    return moved;
}

file_form usual_form(std::mt19937& random, const format& as, const memory_image& image) {
    file_form form;
    form.to.as = form.back.as = &as;
    form.back.width = image.width();
    form.back.depth = image.depth();
    if (as.counts == address_unit::either) {
        form.back.unit = address_unit::word;
    }
    std::uint64_t step = 1;
    if (as.counts == address_unit::byte) {
        form.to.order = form.back.order = random() % 2 == 0 ? byte_order::little : byte_order::big;
        step = bytes_of_width(image.width());
    }
    if (image.base() != 0) {
        form.back.base = image.base() * step;
    }
    return form;
}

file_form random_form(std::mt19937& random, const format& as, const memory_image& image) {
    static constexpr radix radixes[] = {radix::bin, radix::oct, radix::dec, radix::uns, radix::hex};
    file_form form = usual_form(random, as, image);
    form.to.runs = random() % 2 == 0;
    if (as.states_radix) {
        form.to.address_radix = radixes[random() % std::size(radixes)];
        form.to.data_radix = radixes[random() % std::size(radixes)];
    }
    for (const choice_kind& kind : as.write_choices) {
        if (random() % 2 != 0) {
            continue;
        }
        if (auto value = random_value(random, kind)) {
            form.to.choices.push_back({std::string(kind.name), *std::move(value)});
        }
    }
    return form;
}

std::string reasons_of(const read_result& result) {
    std::string text;
    for (const diagnostic& found : result.diagnostics) {
        if (about(found.id).level == diagnostic_class::broken) {
            text += found.message + "\n";
        }
    }
    return text;
}

} // namespace kvrimage_tests
