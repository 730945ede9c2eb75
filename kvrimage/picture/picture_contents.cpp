#include "kvrimage/picture/picture_contents.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/picture/run_samples.h"
#include "kvrimage/picture/shown_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace kvrimage {

namespace {

address_range drawn_addresses(const memory_image& image, const picture_options& options) {
    const address_range all{image.base(), image.last_address()};
    const address_range range = options.range.value_or(all);
    if (range.first < all.first || range.last > all.last || range.first > range.last) {
        throw std::out_of_range(
            fmt::format("a picture of the addresses 0x{:X} to 0x{:X} of a memory from 0x{:X} to 0x{:X}",
                        range.first, range.last, all.first, all.last));
    }
    return range;
}

/// The addresses are part of the title unless they are what the number of words lets expect.
std::string title_of_picture(const memory_image& image, std::string_view format_title,
                             const address_range& range) {
    std::string title = fmt::format("{}{}{} of {}", format_title, format_title.empty() ? "" : ", ",
                                    counted(image.depth(), "word"), counted(image.width(), "bit"));
    if (range.first != 0 || range.last != image.depth() - 1) {
        title += fmt::format(", addresses 0x{:X} to 0x{:X}", range.first, range.last);
    }
    return title;
}

std::string vertical_title_of(const waveform& wave) {
    return fmt::format("value ({}, {})", wave.order().is_signed() ? "signed" : "unsigned",
                       counted(wave.order().width(), "bit"));
}

std::string vertical_title_of(const bit_map& /*map*/) {
    return "bit position";
}

std::string note_on(const occupancy_strip& strip, const std::optional<run_samples>& samples) {
    if (std::ranges::all_of(strip.columns(), [](const word_column& column) { return column.set == 0; })) {
        return "no word is set";
    }
    if (!samples) {
        return "";
    }
    return fmt::format("sampled: {} at each of {} a column", counted(samples->runs, "run"),
                       counted(samples->places, "place"));
}

std::variant<waveform, bit_map> blank_area(const memory_image& image, bool is_signed, const column_grid& grid,
                                           std::uint32_t most_bit_rows) {
    if (image.width() > widest_waveform) {
        return bit_map(grid, image.width(), most_bit_rows);
    }
    return waveform(grid, value_order(image.width(), is_signed));
}

} // namespace

picture_contents contents_of(const memory_image& image, const picture_options& options,
                             const picture_size& size) {
    const address_range range = drawn_addresses(image, options);
    const std::uint64_t first = range.first - image.base();
    const std::uint64_t last = range.last - image.base();
    const column_grid grid(first, last, size.most_columns);
    const std::optional<run_samples> samples = samples_for(image.words(), image.width(), grid);
    occupancy_strip strip(column_grid(first, last, size.most_strip_columns));
    std::variant<waveform, bit_map> words = blank_area(image, options.is_signed, grid, size.most_bit_rows);
    for_each_sample(image.words(), grid, samples, [&](const text_run& run) {
        strip.take(run);
        std::visit([&run](auto& area) { area.take(run); }, words);
    });
    const auto vertical_title = [](const auto& area) { return vertical_title_of(area); };
    return {shown_name(options.name),
            title_of_picture(image, options.format_title, range),
            std::visit(vertical_title, words),
            note_on(strip, samples),
            grid,
            address_axis(grid, image.base()),
            std::move(strip),
            std::move(words)};
}

} // namespace kvrimage
