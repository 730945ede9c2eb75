#include "kvrimage/formats/mif/mif_survey.h"

#include "kvr/memory/memory_state.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/formats/mif/regular_mif_line.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

namespace {

class survey_sink : public mif_sink {
public:
    survey_sink(std::string_view file, const mif_number_form& numbers, const edit_pieces& wanted,
                mif_survey& result)
        : contents(file),
          form(numbers),
          base(kvr::radix_base(kvr_radix(form.addresses))),
          pieces(wanted),
          survey(result) {}

    void statement(const mif_statement& found) override {
        survey.addresses.see(found.first.in(contents));
        if (found.is_range()) {
            survey.addresses.see(found.last.in(contents));
        }
        for (const span& value : found.values) {
            survey.values.see(value.in(contents));
        }
        take(found.whole.offset, set_addresses_of(contents, found, form), found.values.size() <= 1);
    }
    void end(const span& keyword, const span& /*semicolon*/) override { survey.end = keyword.offset; }

    std::size_t read_lines(std::size_t offset) override {
        std::size_t at = offset;
        while (const auto line = regular_mif_line_at(contents, at, base)) {
            survey.addresses.see(
                contents.substr(line->address_begin, line->address_end - line->address_begin));
            see_values(*line);
            take(line->address_begin, {line->address, line->address + line->value_count - 1},
                 line->value_count == 1);
            at = line->next_line;
        }
        return at - offset;
    }

private:
    void see_values(const regular_mif_line& line) {
        std::string_view rest = contents.substr(line.values_begin, line.values_end - line.values_begin);
        for (std::size_t count = 1; count < line.value_count; ++count) {
            const std::size_t end = rest.find_first_of(" \t");
            survey.values.see(rest.substr(0, end));
            rest.remove_prefix(rest.find_first_not_of(" \t", end));
        }
        survey.values.see(rest);
    }
    void take(std::uint64_t offset, const address_range& addresses, bool has_one_value) {
        survey.last_statement = offset;
        if (has_one_value && addresses.first == addresses.last) {
            survey.single_addresses.insert(static_cast<std::uint32_t>(addresses.first));
        }
        if (pieces.touch(addresses)) {
            survey.places.push_back({offset, addresses});
        }
    }

    std::string_view contents;
    const mif_number_form& form;
    unsigned base;
    const edit_pieces& pieces;
    mif_survey& survey;
};

} // namespace

address_range set_addresses_of(std::string_view contents, const mif_statement& statement,
                               const mif_number_form& form) {
    const mif_addresses found = addresses_of(statement, contents, form);
    return {found.first, found.last};
}

void survey_mif(std::string_view contents, const mif_number_form& form, const edit_pieces& pieces,
                mif_survey& survey) {
    survey.end = contents.size();
    survey_sink sink(contents, form, pieces, survey);
    parse_mif(contents, sink);
}

} // namespace kvrimage
