#pragma once

#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/plot/plot_samples.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

/// How fine a picture can be.
struct picture_size {
    std::uint32_t most_columns;
    std::uint32_t most_bit_rows;      ///< of a bit map
    std::uint32_t most_strip_columns; ///< a part of most_columns
};

/// What is in a picture, however it is drawn: a waveform or a bit map, and a strip below it.
struct plot_picture {
    std::string name;  ///< fit to be shown
    std::string title; ///< "MIF, 256 words of 16 bits"
    address_grid grid;
    std::optional<run_samples> samples; ///< where the picture does not rest on all runs
    occupancy_strip strip;
    value_order order;
    std::optional<value_envelope> waveform;
    std::optional<bit_map> bits; ///< there when the waveform is not
};

/// The picture of the words of @p image, called @p name, in @p range, which must be within its depth.
[[nodiscard]] plot_picture make_picture(const memory_image& image, const std::string& name,
                                        const address_range& range, bool is_signed, const picture_size& size);

/// The axis of a waveform; all values that a word can have when it has none.
[[nodiscard]] value_axis axis_of(const plot_picture& picture);

/// "value (unsigned, 16 bits)" or "bit position".
[[nodiscard]] std::string vertical_title(const plot_picture& picture);

/// What a person needs to know to understand the picture, "" when there is nothing.
[[nodiscard]] std::string note_on(const plot_picture& picture);

/// A place on the axis of addresses.
struct address_tick {
    std::uint64_t address;
    std::string label; ///< hexadecimal
};

/// Ticks at multiples of the least power of two that is at least @p least_step; at the range's first address
/// when there is no multiple in it.
[[nodiscard]] std::vector<address_tick> address_ticks(const address_range& range, double least_step);

/// The characters of the labels of @p range; all have as many.
[[nodiscard]] std::size_t address_label_size(const address_range& range);

/// Bit positions to label, the lowest first: multiples of the least power of two of which at most @p most
/// are needed, and the highest bit where there is room for it.
[[nodiscard]] std::vector<std::uint32_t> bit_ticks(std::uint32_t width, std::uint32_t most);

} // namespace kvrmem
