#include "kvrimage/formats/hex/hex_edit.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/edit/digit_style.h"
#include "kvrimage/edit/edit_pieces.h"
#include "kvrimage/edit/text_lines.h"
#include "kvrimage/edit/touched_places.h"
#include "kvrimage/formats/hex/hex_faults.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/hex/hex_record_maker.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns why no record can hold the words of @p given in a file read from @p base.
std::optional<diagnostic> obstacle_to(const assignment& given, const hex_layout& layout, std::uint64_t base) {
    if (layout.bytes_per_cell() > most_record_bytes) {
        return diagnose::record_too_small({}, layout.width, most_record_bytes * bits_per_byte);
    }
    const std::uint64_t cells = deepest_memory - std::min(base, deepest_memory);
    const std::uint64_t words = cells / layout.cells_per_word();
    if (words == 0) { // the last cell of word 0 exceeds the address range of the file
        const std::uint64_t last = base + layout.cells_per_word() - 1;
        return diagnose::hex_address({}, std::max(base, last), deepest_memory - 1);
    }
    if (given.addresses.last >= words) {
        return diagnose::hex_address({}, given.addresses.last, words - 1);
    }
    const auto found =
        std::ranges::find_if(given.words, [](const word& each) { return each.has_dont_care(); });
    if (found != given.words.end()) {
        const auto index = static_cast<std::uint64_t>(found - given.words.begin());
        return diagnose::holds_no_dont_care({}, text_of_word(*found), given.addresses.first + index,
                                            "Intel HEX");
    }
    return std::nullopt;
}

/// Converts @p given to cell addresses of the file, including the base.
assignment by_cells(const assignment& given, const hex_layout& layout) {
    if (!layout.counts_bytes()) {
        return given;
    }
    const std::uint64_t bytes = layout.cells_per_word();
    assignment result{{given.addresses.first * bytes, given.addresses.last * bytes + bytes - 1}, {}};
    for (const word& each : given.words) {
        std::string digits = text_of_word(each);
        digits.insert(0, 2 * std::size_t{layout.bytes_per_word()} - digits.size(), '0');
        digits = in_byte_order(digits, layout.order);
        for (std::size_t at = 0; at < digits.size(); at += 2) {
            result.words.push_back(word_of_text(std::string_view(digits).substr(at, 2), bits_per_byte));
        }
    }
    return result;
}

/// The result of one pass over the records.
struct record_survey {
    std::vector<setting_place> places; ///< with the offsets of their records
    hex_record_style style;
    std::size_t end = 0;               ///< offset for new records
    std::uint64_t offset = 0;          ///< address offset in force there
    std::optional<diagnostic> wrapped; ///< a record of bytes wraps at the end of its segment
};

address_range cells_of(const hex_data& data, const hex_layout& layout) {
    return {data.address, data.address + data.bytes / layout.bytes_per_cell() - 1};
}

record_survey survey_records(std::string_view contents, const hex_layout& layout, const edit_pieces& pieces) {
    record_survey survey;
    style_finder digits;
    hex_offset offset;
    const hex_parser parser = for_each_data_record(contents, offset, [&](const hex_data& data) {
        digits.see(data.where.in(contents));
        if (data.bytes < layout.bytes_per_cell()) {
            return;
        }
        if (layout.counts_bytes() && offset.counts_segments() &&
            data.address + data.bytes > offset.value() + hex_page_size) {
            survey.wrapped = diagnose::address_wraps(data.where, offset.value() + hex_page_size - 1);
        }
        if (const address_range cells = cells_of(data, layout); pieces.touch(cells)) {
            survey.places.push_back({data.where.offset, cells});
        }
        survey.style.largest_record = std::max(survey.style.largest_record, data.bytes);
    });
    const bool has_end = parser.line().record.type == hex_record_type::end;
    survey.end = has_end ? parser.line().whole.offset : contents.size();
    survey.offset = offset.value();
    survey.style.lower_case = digits.found().lower_case;
    survey.style.line_end = line_end_at(contents, survey.end);
    return survey;
}

/// Returns the letter case of @p digits, or that of the whole @p record if they contain no letter.
bool is_lower_case(std::string_view digits, std::string_view record) {
    const bool has_letter = digits.find_first_not_of("0123456789") != std::string_view::npos;
    return style_of(has_letter ? digits : record).lower_case;
}

/// Writes the words of pieces into one record.
class record_edit {
public:
    record_edit(std::string_view file, const hex_layout& of, const hex_data& record)
        : contents(file),
          cell_digits(2 * std::size_t{of.bytes_per_cell()}),
          data(record),
          digits(digits_of(record)),
          before(digits) {}

    void set(const edit_piece& piece) {
        for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
            const std::size_t at = hex_record::header + cell_digits * (address - data.address);
            const bool lower = is_lower_case(std::string_view(before).substr(at, cell_digits), before);
            const std::string value = in_style(piece.text_at(address), {cell_digits, lower});
            if (in_style(before.substr(at, cell_digits), {cell_digits, lower}) != value) {
                digits.replace(at, cell_digits, value);
            }
        }
        cells_set += piece.size();
    }
    [[nodiscard]] bool changes() const { return data.is_in_doubt() || digits != before; }
    /// Returns whether no ambiguous word remains.
    [[nodiscard]] bool is_certain() const {
        return !data.is_in_doubt() || cells_set * cell_digits == data.digits.size();
    }

    [[nodiscard]] text_edit finish() {
        const std::size_t checksum = digits.size() - 2;
        const bool lower = is_lower_case(std::string_view(before).substr(checksum), before);
        digits.resize(checksum);
        digits += in_style(hex_checksum(digits), {2, lower});
        return {data.where.offset, data.where.length, with_blanks()};
    }

private:
    std::string digits_of(const hex_data& record) const {
        return std::string(record.line != nullptr ? record.line->record.digits
                                                  : record.where.in(contents).substr(1));
    }
    [[nodiscard]] std::string with_blanks() const {
        std::string text(data.where.in(contents));
        auto next = digits.begin();
        for (auto place = text.begin() + 1; place != text.end(); ++place) {
            if (hex_blanks.find(*place) == std::string_view::npos) {
                *place = *next++;
            }
        }
        return text;
    }

    std::string_view contents;
    std::size_t cell_digits;
    const hex_data& data;
    std::string digits; ///< after the colon
    std::string before;
    std::uint64_t cells_set = 0;
};

void change_records(std::string_view contents, const hex_layout& layout,
                    const std::vector<touched_place>& places, edit_result& result) {
    auto next = places.begin();
    hex_offset offset;
    static_cast<void>(for_each_data_record(contents, offset, [&](const hex_data& data) {
        if (next == places.end() || next->number != data.where.offset) {
            return;
        }
        record_edit edit(contents, layout, data);
        std::ranges::for_each(next->pieces, [&edit](const edit_piece& piece) { edit.set(piece); });
        ++next;
        if (!edit.is_certain()) {
            result.diagnostics.push_back(describe_hex_fault(contents, *data.line));
        } else if (edit.changes()) {
            result.edits.push_back(edit.finish());
        }
    }));
}

void add_records(std::string_view contents, const hex_layout& layout, const record_survey& survey,
                 const edit_pieces& pieces, edit_result& result) {
    hex_record_maker maker(layout, survey.style, survey.offset);
    for (const edit_piece& piece : pieces.all()) {
        maker.add(piece);
    }
    std::string records = maker.take_records();
    if (records.empty()) {
        return;
    }
    if (survey.end == contents.size() && !contents.ends_with('\n')) {
        records.insert(0, survey.style.line_end);
    }
    result.edits.push_back({survey.end, 0, std::move(records)});
}

} // namespace

edit_result edit_hex(std::string_view contents, const read_options& options, const read_result& ours,
                     std::span<const assignment> assignments) {
    const hex_layout layout = layout_of(ours);
    const std::uint64_t base = options.base.value_or(0);
    edit_result result;
    std::vector<assignment> cells;
    for (const assignment& each : assignments) {
        if (auto obstacle = obstacle_to(each, layout, base)) {
            result.diagnostics.push_back(*std::move(obstacle));
            return result;
        }
        cells.push_back(by_cells(each, layout));
    }
    edit_pieces pieces(cells, base);
    const record_survey survey = survey_records(contents, layout, pieces);
    if (survey.wrapped) {
        result.diagnostics.push_back(*survey.wrapped);
        return result;
    }
    change_records(contents, layout, find_touched_places(survey.places, pieces), result);
    add_records(contents, layout, survey, pieces, result);
    if (!result.diagnostics.empty()) {
        result.edits.clear();
    }
    return result;
}

} // namespace kvrimage
