#include "tools/kvrmem/plot/plot_picture.h"

#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/plot/plot_text.h"
#include "tools/kvrmem/surroundings/counted.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrmem {

namespace {

/// More work than this is spared by samples. Where bits are counted one by one, a run costs its bits.
constexpr std::uint64_t most_runs = std::uint64_t{1} << 24;
constexpr std::uint64_t most_bits = std::uint64_t{1} << 28;
constexpr run_samples full_samples = {64, 16};

std::string title_of(const memory_image& image, const address_range& range) {
    std::string title = fmt::format("{}, {} of {}", format_title(image.format), counted(image.depth, "word"),
                                    counted(image.width, "bit"));
    if (range.first != 0 || range.last != image.depth - 1) {
        title += fmt::format(", addresses 0x{:X} to 0x{:X}", range.first, range.last);
    }
    return title;
}

/// No more samples than the bits of wide words allow, but one run a column in any case.
run_samples samples_for(std::uint32_t width, std::uint32_t columns) {
    if (width <= widest_plotted_value) {
        return full_samples;
    }
    const auto runs = static_cast<std::uint32_t>(std::max<std::uint64_t>(most_bits / width / columns, 1));
    const std::uint32_t places = std::min(runs, full_samples.places);
    return {std::min(runs / places, full_samples.runs), places};
}

std::optional<run_samples> samples_of(const memory_image& image, const address_grid& grid) {
    const std::uint64_t limit = image.width > widest_plotted_value ? most_bits / image.width : most_runs;
    if (!has_more_runs(image.words, grid.range(), limit)) {
        return std::nullopt;
    }
    return samples_for(image.width, grid.columns());
}

std::uint32_t least_power_of_two(std::uint32_t count, std::uint32_t most) {
    std::uint32_t power = 1;
    while ((count - 1) / power + 1 > most) {
        power *= 2;
    }
    return power;
}

} // namespace

plot_picture make_picture(const memory_image& image, const std::string& name, const address_range& range,
                          bool is_signed, const picture_size& size) {
    const bool is_wide = image.width > widest_plotted_value;
    const address_grid grid(range, size.most_columns);
    const value_order order(image.width, is_signed);
    plot_picture picture{shown_name(name),
                         title_of(image, range),
                         grid,
                         samples_of(image, grid),
                         occupancy_strip(address_grid(range, size.most_strip_columns)),
                         order,
                         std::nullopt,
                         std::nullopt};
    if (is_wide) {
        picture.bits.emplace(grid, image.width, size.most_bit_rows);
    } else {
        picture.waveform.emplace(grid, order);
    }
    walk_runs(image.words, grid, picture.samples, [&picture](const kvr::word_run& run) {
        picture.strip.take(run);
        if (picture.bits) {
            picture.bits->take(run);
        } else {
            picture.waveform->take(run);
        }
    });
    return picture;
}

value_axis axis_of(const plot_picture& picture) {
    const auto bounds = picture.waveform->bounds();
    return bounds ? axis_for(picture.order, bounds->lowest, bounds->highest)
                  : value_axis{0, picture.order.highest_key()};
}

std::string vertical_title(const plot_picture& picture) {
    if (picture.bits) {
        return "bit position";
    }
    const value_order& order = picture.order;
    return fmt::format("value ({}, {})", order.is_signed() ? "signed" : "unsigned",
                       counted(order.width(), "bit"));
}

std::string note_on(const plot_picture& picture) {
    const auto& strip = picture.strip.columns();
    if (std::all_of(strip.begin(), strip.end(),
                    [](const word_column& column) { return column.state() == occupancy::unset; })) {
        return "no word is set";
    }
    if (!picture.samples) {
        return "";
    }
    return fmt::format("sampled: {} at each of {} a column", counted(picture.samples->runs, "run"),
                       counted(picture.samples->places, "place"));
}

std::vector<address_tick> address_ticks(const address_range& range, double least_step) {
    std::uint64_t step = 1;
    while (static_cast<double>(step) < least_step) {
        step *= 2;
    }
    const std::size_t digits = address_label_size(range) - 2;
    std::vector<address_tick> ticks;
    for (std::uint64_t address = (range.first + step - 1) / step * step; address <= range.last;
         address += step) {
        ticks.push_back({address, fmt::format("0x{:0{}X}", address, digits)});
    }
    if (ticks.empty()) {
        ticks.push_back({range.first, fmt::format("0x{:0{}X}", range.first, digits)});
    }
    return ticks;
}

std::size_t address_label_size(const address_range& range) {
    return fmt::format("0x{:X}", range.last).size();
}

std::vector<std::uint32_t> bit_ticks(std::uint32_t width, std::uint32_t most) {
    const std::uint32_t step = least_power_of_two(width, most);
    std::vector<std::uint32_t> ticks;
    for (std::uint32_t bit = 0; bit < width; bit += step) {
        ticks.push_back(bit);
    }
    if (width - 1 - ticks.back() >= (step + 1) / 2) {
        ticks.push_back(width - 1);
    }
    return ticks;
}

} // namespace kvrmem
