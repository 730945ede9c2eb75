#include "kvrimage/picture/picture_contents.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/picture/run_samples.h"
#include "kvrimage/picture/shown_text.h"

#include <fmt/format.h>

#include <cmath>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace kvrimage {

namespace {

std::string vertical_title_of(const waveform& wave) {
    const value_order& order = wave.order();
    const std::string bits = counted(order.width(), "bit");
    if (order.is_signed() && order.fraction_bits() != 0) {
        return fmt::format("value (fixed point, {}, {} of a fraction)", bits, order.fraction_bits());
    }
    return fmt::format("value ({}, {})", order.is_signed() ? "signed" : "unsigned", bits);
}

std::string vertical_title_of(const bit_map& map) {
    return map.row_bits() == 1
               ? "bit position"
               : fmt::format("bit position, {} a row", counted(map.row_bits() / bits_per_byte, "byte"));
}

std::string note_on(const std::optional<run_samples>& samples) {
    return samples ? fmt::format("sampled: {} at each of {} a column", counted(samples->runs, "run"),
                                 counted(samples->places, "place"))
                   : "";
}

using drawn_words = std::variant<waveform, bit_map, difference_map>;

drawn_words blank_area(const memory_image& image, const picture_options& options, const column_grid& grid,
                       std::uint32_t most_bit_rows) {
    if (image.width() > widest_waveform) {
        return bit_map(grid, image.width(), most_bit_rows);
    }
    return waveform(grid, value_order(image.width(), {options.is_signed, options.fraction_bits}));
}

std::vector<std::string> without_empty(std::initializer_list<std::string> texts) {
    std::vector<std::string> kept;
    for (const std::string& text : texts) {
        if (!text.empty()) {
            kept.push_back(text);
        }
    }
    return kept;
}

} // namespace

picture_grids grids_for(std::uint64_t first, std::uint64_t last, const set_words& set,
                        std::uint64_t base_address, const picture_size& size) {
    const std::size_t characters = address_axis(column_grid(first, last, 1), base_address).label_size();
    const auto least =
        static_cast<std::uint32_t>(std::ceil(static_cast<double>(characters) * size.columns_a_character));
    std::vector<shown_stretch> stretches =
        shown_stretches(first, last, set, {size.most_strip_columns, least, size.break_columns});
    const column_grid strip(stretches);
    for (shown_stretch& stretch : stretches) {
        stretch.begin *= size.most_columns / size.most_strip_columns;
        stretch.room *= size.most_columns / size.most_strip_columns;
    }
    return {column_grid(stretches), strip};
}

std::string note_on_breaks(const column_grid& grid) {
    std::uint64_t left_out = 0;
    for (std::size_t index = 1; index < grid.parts().size(); ++index) {
        left_out += grid.parts()[index].first - grid.parts()[index - 1].last - 1;
    }
    return left_out == 0 ? ""
                         : fmt::format("{} leave{} out {}", counted(grid.parts().size() - 1, "break"),
                                       grid.parts().size() == 2 ? "s" : "", counted(left_out, "unset word"));
}

std::string set_note(std::uint64_t set, std::uint64_t words) {
    return set == 0 ? ", none set" : set == words ? ", all set" : fmt::format(", {} set", set);
}

address_range drawn_addresses(const address_range& all, const std::optional<address_range>& asked) {
    const address_range range = asked.value_or(all);
    if (range.first < all.first || range.last > all.last || range.first > range.last) {
        throw std::out_of_range(
            fmt::format("a picture of the addresses 0x{:X} to 0x{:X} of a memory from 0x{:X} to 0x{:X}",
                        range.first, range.last, all.first, all.last));
    }
    return range;
}

address_range drawn_addresses(const memory_image& image, const picture_options& options) {
    return drawn_addresses({image.base(), image.last_address()}, options.range);
}

std::string title_of_picture(const memory_image& image, std::string_view format_title,
                             const address_range& range) {
    std::string title = fmt::format("{}{}{} of {}", format_title, format_title.empty() ? "" : ", ",
                                    counted(image.depth(), "word"), counted(image.width(), "bit"));
    if (range.first != 0 || range.last != image.depth() - 1) {
        title += fmt::format(", addresses 0x{:X} to 0x{:X}", range.first, range.last);
    }
    return title;
}

picture_contents contents_of(const memory_image& image, const picture_options& options,
                             const picture_size& size) {
    const address_range range = drawn_addresses(image, options);
    const std::uint64_t first = range.first - image.base();
    const std::uint64_t last = range.last - image.base();
    const set_words set = set_words_of(image.words(), first, last);
    const picture_grids grids = grids_for(first, last, set, image.base(), size);
    const column_grid& grid = grids.columns;
    const std::optional<run_samples> samples = samples_for(image.words(), image.width(), grid);
    occupancy_strip strip(grids.strip);
    drawn_words words = blank_area(image, options, grid, size.most_bit_rows);
    const auto* const map = std::get_if<bit_map>(&words);
    std::string vertical_title =
        map != nullptr ? vertical_title_of(*map) : vertical_title_of(std::get<waveform>(words));
    for_each_sample(image.words(), grid, samples, [&](const text_run& run) {
        strip.take(run);
        if (auto* const area = std::get_if<bit_map>(&words)) {
            area->take(run);
        } else {
            std::get<waveform>(words).take(run);
        }
    });
    return {shown_name(options.name),
            title_of_picture(image, options.format_title, range) + set_note(set.count, last - first + 1),
            std::move(vertical_title),
            without_empty({note_on(samples), note_on_breaks(grid)}),
            grid,
            address_axis(grid, image.base()),
            std::move(strip),
            std::move(words)};
}

} // namespace kvrimage
