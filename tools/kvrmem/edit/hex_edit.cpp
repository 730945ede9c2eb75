#include "tools/kvrmem/edit/hex_edit.h"

#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

namespace kvrmem {

namespace {

using step = kvr::hex_record_walk::step;

constexpr std::uint32_t usual_data_bytes = 16;
constexpr std::size_t data_begin = 9; // behind the colon, record length, address and record type

std::uint32_t bytes_of(const memory_image& image) {
    return bytes_for(image.width);
}

/// @p word as the digits of its bytes.
std::string data_digits(const memory_image& image, const std::string& word) {
    if (!is_plain(word)) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("word {} has a don't-care digit, which Intel HEX cannot hold", word));
    }
    return in_style(word, {2 * std::size_t{bytes_of(image)}, false});
}

/// The style of @p digits, or that of the whole @p record when they have no letter.
digit_style style_within(std::string_view digits, std::string_view record) {
    const bool has_letter =
        std::any_of(digits.begin(), digits.end(), [](char c) { return c < '0' || c > '9'; });
    return {digits.size(), style_of(has_letter ? digits : record).lower_case};
}

/// What one walk over the records finds.
struct record_survey {
    std::vector<setting_place> places;
    std::uint32_t largest_record = 0;  ///< bytes of data
    std::size_t end_record = 0;        ///< where its line starts
    std::uint64_t offset_in_force = 0; ///< at the end record
    bool lower_case = false;
};

/// Calls @p take with every record of @p text, a file that was read before, and the walk that found it.
template <class Take>
void for_each_record(std::string_view text, Take&& take) {
    kvr::line_source lines(text, kvr::hex_record_walk::longest_line);
    kvr::hex_record_walk walk(lines);
    while (walk.next() == step::record) {
        take(walk.record(), walk);
    }
}

record_survey survey_records(std::string_view text, const memory_image& image, const edit_pieces& pieces) {
    record_survey survey;
    style_finder digits;
    line_starts starts(text);
    std::uint64_t number = 0;
    for_each_record(text, [&](const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        const std::uint64_t first = address_of_record(walk);
        if (record.kind == kvr::hex_record_type::data && record.data_bytes > 0) {
            const std::uint64_t last = first + record.data_bytes / bytes_of(image) - 1;
            if (pieces.touch(first, last)) {
                survey.places.push_back({number, first, last});
            }
            survey.largest_record = std::max(survey.largest_record, record.data_bytes);
        } else if (record.kind == kvr::hex_record_type::end_of_file) {
            survey.end_record = starts.of(walk.line());
            survey.offset_in_force = walk.address_offset();
        }
        digits.see(record.text);
        ++number;
    });
    survey.lower_case = digits.found().lower_case;
    return survey;
}

/// Puts the words of @p pieces into @p record, the text behind the colon, whose first word has the address
/// @p first. False when they are there already.
bool change_words(std::string& record, std::uint64_t first, const memory_image& image,
                  const std::vector<edit_piece>& pieces) {
    const std::string before = record;
    const std::size_t digits = 2 * std::size_t{bytes_of(image)};
    for (const edit_piece& piece : pieces) {
        for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
            if (image.words[static_cast<std::uint32_t>(address)] != piece.word(address)) {
                const std::size_t at = data_begin - 1 + digits * (address - first);
                const digit_style style = style_within(std::string_view(before).substr(at, digits), before);
                record.replace(at, digits, in_style(data_digits(image, piece.word(address)), style));
            }
        }
    }
    if (record == before) {
        return false;
    }
    const std::size_t checksum = record.size() - 2;
    const std::string_view old = std::string_view(before).substr(checksum);
    const std::string sum = checksum_of(std::string_view(record).substr(0, checksum));
    record.replace(checksum, 2, in_style(sum, style_within(old, before)));
    return true;
}

/// Replaces the characters of @p line that are no blanks, from the colon on, by ":" and @p record.
std::string with_record(std::string_view line, std::string_view record) {
    std::string result(line);
    std::size_t next = 0;
    bool behind_colon = false;
    for (char& character : result) {
        if (kvr::hex_blanks.find(character) == std::string_view::npos) {
            character = behind_colon ? record[next++] : character;
            behind_colon = true;
        }
    }
    return result;
}

void change_records(std::string_view text, const memory_image& image,
                    const std::vector<touched_place>& places, std::vector<text_change>& changes) {
    line_starts starts(text);
    std::uint64_t number = 0;
    auto next = places.begin();
    for_each_record(text, [&](const kvr::hex_record& found, const kvr::hex_record_walk& walk) {
        if (next != places.end() && next->number == number) {
            std::string record(found.text);
            if (change_words(record, address_of_record(walk), image, next->pieces)) {
                const std::size_t begin = starts.of(walk.line());
                const std::string_view line = text.substr(begin, end_of_line(text, begin) - begin);
                changes.push_back({begin, line.size(), with_record(line, record)});
            }
            ++next;
        }
        ++number;
    });
}

/// Makes records for words that no record sets.
class record_maker {
public:
    record_maker(const memory_image& memory, const record_survey& survey, std::string_view end_of_lines)
        : image(memory),
          line_end(end_of_lines),
          offset(survey.offset_in_force),
          lower_case(survey.lower_case),
          words_a_record(
              std::max(1U, (survey.largest_record == 0 ? usual_data_bytes : survey.largest_record) /
                               bytes_of(memory))) {}

    void add(const edit_piece& piece) {
        for (std::uint64_t address = piece.first; address <= piece.last;) {
            const std::uint64_t page_end = (address / hex_page_words + 1) * hex_page_words;
            const std::uint64_t behind =
                std::min({piece.last + 1, page_end, address + std::uint64_t{words_a_record}});
            select_page(address);
            add_data(piece, address, behind);
            address = behind;
        }
    }
    [[nodiscard]] std::string take_records() { return std::move(records); }

private:
    void select_page(std::uint64_t address) {
        const bool is_reached = address >= offset && address - offset < hex_page_words;
        if (!is_reached) {
            offset = address / hex_page_words * hex_page_words;
            add_record(fmt::format("02000004{:04X}", offset >> hex_page_shift));
        }
    }
    void add_data(const edit_piece& piece, std::uint64_t address, std::uint64_t behind) {
        std::string fields =
            fmt::format("{:02X}{:04X}00", (behind - address) * bytes_of(image), address - offset);
        for (; address < behind; ++address) {
            fields += data_digits(image, piece.word(address));
        }
        add_record(fields);
    }
    void add_record(const std::string& fields) {
        const std::string record = fields + checksum_of(fields);
        records.append(":").append(in_style(record, {record.size(), lower_case})).append(line_end);
    }

    const memory_image& image;
    std::string records;
    std::string_view line_end;
    std::uint64_t offset;
    bool lower_case;
    std::uint32_t words_a_record;
};

void require_narrow_words(const memory_image& image) {
    if (bytes_of(image) > most_data_bytes) {
        throw tool_error(
            exit_code::wrong_usage,
            fmt::format("a word of {} bits does not fit an Intel HEX record, which holds {} bytes",
                        image.width, most_data_bytes));
    }
}

} // namespace

std::vector<text_change> hex_changes(std::string_view text, const memory_image& image, edit_pieces pieces) {
    require_narrow_words(image);
    const record_survey survey = survey_records(text, image, pieces);
    const std::vector<touched_place> places = find_touched_places(survey.places, pieces);
    std::vector<text_change> changes;
    change_records(text, image, places, changes);
    record_maker maker(image, survey, line_end_at(text, survey.end_record));
    for (const edit_piece& piece : pieces.all()) {
        maker.add(piece);
    }
    std::string records = maker.take_records();
    if (!records.empty()) {
        changes.push_back({survey.end_record, 0, std::move(records)});
    }
    return changes;
}

} // namespace kvrmem
