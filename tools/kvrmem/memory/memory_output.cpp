#include "tools/kvrmem/memory/memory_output.h"

#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/hex_output.h"
#include "tools/kvrmem/memory/mif_output.h"
#include "tools/kvrmem/memory/rif_output.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace kvrmem {

namespace {

bool can_show_dont_cares(std::string_view word, const memory_image& image, const output_layout& layout) {
    std::string text;
    switch (layout.format) {
    case FILE_TYPE_MIF:
        return show_word(word, layout.data_radix, image.width, text);
    case FILE_TYPE_HEX:
        return false;
    default:
        return show_word(word, RADIX_HEX, image.width, text);
    }
}

std::string reason_against_dont_cares(const output_layout& layout) {
    switch (layout.format) {
    case FILE_TYPE_MIF:
        return fmt::format("has a don't-care digit, which {} cannot show", radix_title(layout.data_radix));
    case FILE_TYPE_HEX:
        return "has a don't-care digit, which Intel HEX cannot hold";
    default:
        return "has a don't-care bit beside a plain one, which RIF cannot hold";
    }
}

} // namespace

unwritable_word::unwritable_word(std::uint32_t word_address, std::string_view word, std::string_view reason)
    : tool_error(exit_code::bad_input, fmt::format("word {} at address {} {}", word, word_address, reason)),
      place(word_address) {}

void require_writable(const memory_image& image, const output_layout& layout) {
    if (layout.format == FILE_TYPE_MIF) {
        require_writable_mif(image, layout);
    } else if (layout.format == FILE_TYPE_HEX) {
        require_writable_hex(image);
    }
    // Words without don't-care digits can be written in every format and radix.
    const auto pass_row = [](const kvr::word_row& row, std::uint32_t) {
        const std::size_t dont_care = row.all().find('X');
        return dont_care == std::string_view::npos ? row.count
                                                   : static_cast<std::uint32_t>(dont_care / row.length);
    };
    const auto pass_word = [&](std::uint32_t address, std::string_view word) {
        if (!is_plain(word) && !can_show_dont_cares(word, image, layout)) {
            throw unwritable_word(address, word, reason_against_dont_cares(layout));
        }
    };
    const auto pass_cycle = [&](const kvr::word_cycle& cycle) {
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            pass_word(cycle.first + index, image.words[cycle.first + index]);
        }
        return length_of(cycle);
    };
    for_each_row_cycle_or_run(image.words, pass_row, pass_cycle,
                              [&](const kvr::word_run& run) { pass_word(run.first, run.text); });
}

void write_memory(const memory_image& image, const output_layout& layout, kvr::output_file& output) {
    switch (layout.format) {
    case FILE_TYPE_MIF:
        write_mif(image, layout, output);
        break;
    case FILE_TYPE_HEX:
        write_hex(image, output);
        break;
    default:
        write_rif(image, output);
        break;
    }
}

} // namespace kvrmem
