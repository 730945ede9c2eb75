#include "kvrimage/formats/mif/mif_survey.h"

#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/formats/mif/regular_mif_line.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kvrimage {

namespace {

constexpr std::array<unsigned, 5> radix_bases = {2, 8, 10, 10, 16};

std::optional<std::uint64_t> address_of(std::string_view text, unsigned base) {
    std::uint64_t address = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), address, static_cast<int>(base));
    return end.ec == std::errc() && end.ptr == text.data() + text.size() ? std::optional(address)
                                                                         : std::nullopt;
}

class survey_sink : public mif_sink {
public:
    survey_sink(std::string_view file, const file_facts& facts, const edit_pieces& wanted, mif_survey& result)
        : contents(file),
          address_radix(facts.address_radix.value_or(radix::hex)),
          base(radix_bases[static_cast<std::size_t>(address_radix)]),
          pieces(wanted),
          survey(result) {}

    void statement(const mif_statement& found) override {
        const std::optional<address_range> addresses = addresses_of(contents, found, address_radix);
        if (!addresses) {
            return;
        }
        survey.addresses.see(found.first.in(contents));
        if (found.is_range()) {
            survey.addresses.see(found.last.in(contents));
        }
        for (const span& value : found.values) {
            survey.values.see(value.in(contents));
        }
        take(found.whole.offset, *addresses, found.values.size() <= 1);
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
        if (has_one_value && addresses.first == addresses.last && addresses.first < deepest_memory) {
            survey.single_addresses.insert(static_cast<std::uint32_t>(addresses.first));
        }
        if (pieces.touch(addresses)) {
            survey.places.push_back({offset, addresses});
        }
    }

    std::string_view contents;
    radix address_radix;
    unsigned base;
    const edit_pieces& pieces;
    mif_survey& survey;
};

} // namespace

std::optional<address_range> addresses_of(std::string_view contents, const mif_statement& statement,
                                          radix address_radix) {
    const unsigned base = radix_bases[static_cast<std::size_t>(address_radix)];
    const auto first = address_of(statement.first.in(contents), base);
    if (!first) {
        return std::nullopt;
    }
    if (!statement.is_range()) {
        return address_range{*first, *first + std::max<std::size_t>(statement.values.size(), 1) - 1};
    }
    const auto last = address_of(statement.last.in(contents), base);
    return last && *last >= *first ? std::optional(address_range{*first, *last}) : std::nullopt;
}

void survey_mif(std::string_view contents, const file_facts& facts, const edit_pieces& pieces,
                mif_survey& survey) {
    survey.end = contents.size();
    survey_sink sink(contents, facts, pieces, survey);
    parse_mif(contents, sink);
}

} // namespace kvrimage
