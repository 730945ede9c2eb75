#include "kvrimage/formats/mif/mif_reader.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/line_ends.h"
#include "kvrimage/formats/mif/mif_examiner.h"
#include "kvrimage/formats/mif/mif_findings.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/formats/mif/mif_header.h"
#include "kvrimage/formats/mif/mif_header_parser.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_words.h"
#include "kvrimage/image/united_ranges.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

/// Reads a MIF into the texts of its words, and finds what is wrong with its form and its settings.
class mif_text_reader : public mif_sink {
public:
    mif_text_reader(std::string_view contents, const read_options& given, mif_fast_path path)
        : text(contents),
          options(given),
          uses_fast_path(path == mif_fast_path::used),
          findings(contents, given.wants_repairs),
          list(given.wants_repairs ? std::numeric_limits<std::size_t>::max() : given.most_diagnostics),
          header(contents) {}

    void comment(const span& /*whole*/) override { has_comments = true; }
    void finding(const mif_finding& found) override {
        if (found.what == mif_syntax::missing_content && found.where.length != 0) {
            unframed = found.where;
        }
        findings.add(found, list);
    }
    void setting(const mif_setting& found) override {
        has_structure = true;
        header.take(found, list);
    }
    void content(const span& keyword) override {
        has_structure = has_structure || keyword.length != 0;
        content_at = keyword;
        if (!list.has_broken() && header.has(mif_keyword::width) && header.has(mif_keyword::depth)) {
            header.compare_with_kvr(keyword.offset, list);
        }
        form = {header.radix_of(mif_keyword::address_radix), header.radix_of(mif_keyword::data_radix),
                std::min(depth().value_or(deepest_mif), deepest_mif), options.depth ? base() : 0,
                options.depth.has_value()};
        words.emplace(text, form);
    }
    void begin(const span& keyword) override {
        if (keyword.length != 0) {
            unframed.reset(); // a BEGIN without CONTENT is a fault of its own
        }
    }
    void statement(const mif_statement& found) override {
        has_unsound = has_unsound || !found.sound;
        if (found.sound) {
            words->set(found);
        }
    }
    std::size_t read_lines(std::size_t offset) override {
        return uses_fast_path && header.knows_radix(mif_keyword::address_radix) ? words->set_lines(offset)
                                                                                : 0;
    }

    read_result finish();

private:
    [[nodiscard]] std::optional<std::uint64_t> depth() const {
        return options.depth ? options.depth : header.number(mif_keyword::depth);
    }
    [[nodiscard]] std::uint64_t base() const { return options.base.value_or(0); }
    [[nodiscard]] std::optional<std::uint32_t> width() const {
        const auto stated = header.number(mif_keyword::width);
        if (options.width || !stated) {
            return options.width;
        }
        return static_cast<std::uint32_t>(*stated);
    }
    void find_missing_settings(const image_words& all);
    void judge_frame(const image_words& all);
    std::unique_ptr<image_words> find_faults();
    bool is_proportionate(const image_words& all);
    bool make_words(image_words& all);
    void examine();
    [[nodiscard]] static std::uint64_t lowest_depth(const image_words& all);
    [[nodiscard]] static std::uint64_t bits_of_digits(const image_words& all);
    void hand_out(read_result& result, std::unique_ptr<image_words> all);

    std::string_view text;
    const read_options& options;
    bool uses_fast_path;
    mif_findings findings;
    diagnostic_list list;
    mif_header header;
    mif_number_form form;
    std::optional<mif_words> words;
    span content_at;
    bool has_comments = false;
    bool has_structure = false;   ///< a setting or CONTENT
    std::optional<span> unframed; ///< the first statement, where there is no CONTENT BEGIN
    bool has_unsound = false;
    bool has_unsigned = false;
    bool has_prefix = false;  ///< values that begin with "0x", which are words with a don't-care digit
    bool is_unsigned = false; ///< all values are, though the radix that is stated is signed
    std::vector<address_range> in_doubt;
};

void mif_text_reader::find_missing_settings(const image_words& all) {
    const places where = content_at.length != 0 ? places(content_at) : places();
    if (!header.has(mif_keyword::width) && !options.width) {
        list.add(diagnose::missing_width(where));
    }
    if (!header.has(mif_keyword::depth) && !options.depth) {
        list.add(diagnose::missing_depth(where, lowest_depth(all)));
    }
}

/// Statements without CONTENT BEGIN can be read where the caller gives what a header would say; without a
/// header they lack just that, which is one cause.
void mif_text_reader::judge_frame(const image_words& all) {
    if (options.width && options.depth) {
        list.add(diagnose::bare_statements(*unframed));
    } else if (!has_structure) {
        std::string missing = options.width ? "" : fmt::format("--width {}", bits_of_digits(all));
        if (!options.depth) {
            const std::uint64_t end = lowest_depth(all);
            missing +=
                fmt::format("{}--depth {}", missing.empty() ? "" : " ", end > base() ? end - base() : end);
        }
        diagnostic found = diagnose::missing_frame(*unframed, missing);
        found.option = missing;
        list.add(std::move(found));
    } else {
        find_missing_settings(all);
        return;
    }
    findings.forget(mif_syntax::missing_content);
    findings.forget(mif_syntax::missing_end);
}

/// The depth that the addresses need; 256 where there are none.
std::uint64_t mif_text_reader::lowest_depth(const image_words& all) {
    constexpr std::uint64_t usual = 256;
    std::uint64_t depth = 0;
    for_each_row_cycle_or_run(
        all,
        [&depth](const kvr::word_row& row, std::uint64_t first) {
            depth = first + row.count;
            return row.count;
        },
        [&depth](const text_cycle& cycle) {
            depth = cycle.last + 1;
            return cycle.length();
        },
        [&depth](const text_run& run) { depth = run.last + 1; });
    return depth != 0 ? depth : usual;
}

/// The width that the longest word has by its hexadecimal digits; 8 where there is none.
std::uint64_t mif_text_reader::bits_of_digits(const image_words& all) {
    std::uint64_t longest = 0;
    for_each_row_or_run(
        all,
        [&longest](const kvr::word_row& row, std::uint64_t) {
            longest = std::max<std::uint64_t>(longest, row.length);
            return row.count;
        },
        [&longest](const text_run& run) { longest = std::max<std::uint64_t>(longest, run.text.size()); });
    return longest != 0 ? longest * bits_per_hex_digit : bits_per_byte;
}

/// False when the words would take much more memory than the file does.
bool mif_text_reader::is_proportionate(const image_words& all) {
    constexpr std::uint32_t usual_width = 256; // what takes a few times the file is not looked at
    constexpr std::uint64_t always_granted = std::uint64_t{16} << 20U;
    constexpr std::uint64_t most_growth = 4;
    const std::uint32_t bits = *width();
    if (bits <= usual_width) {
        return true;
    }
    std::uint64_t count = 0;
    for_each_row_cycle_or_run(
        all,
        [&count](const kvr::word_row& row, std::uint64_t) {
            count += row.count;
            return row.count;
        },
        [&count](const text_cycle& cycle) {
            count += cycle.period;
            return cycle.length();
        },
        [&count](const text_run&) { ++count; });
    const std::uint64_t size = count * (bits / bits_per_hex_digit);
    if (size <= always_granted || size / most_growth <= text.size()) {
        return true;
    }
    list.add(diagnose::too_large({}, count, bits, size >> 20U, text.size()));
    return false;
}

/// Turns the texts into words. False when some are none, which are not set then.
bool mif_text_reader::make_words(image_words& all) {
    const std::uint32_t bits = *width();
    bool all_words = true;
    const auto convert = [&](std::string_view value, std::string& word) {
        if (value.empty()) {
            word.clear();
            return true;
        }
        has_prefix = has_prefix || (form.data == radix::hex && value.size() > 2 && value[0] == '0' &&
                                    kvr::upper_case_of(value[1]) == 'X'); // the fast path has capitals
        if (make_word_of_any_sign(value, form.data, bits, word, has_unsigned)) {
            word.clear();
            all_words = false;
        }
        return true;
    };
    const auto keeps = [&](const kvr::word_row& row) {
        return form.data == radix::hex && are_words(row, bits);
    };
    all.transform(convert, keeps);
    return all_words;
}

/// Goes over the file again to say what is wrong with its numbers.
void mif_text_reader::examine() {
    const bool knows_data = header.knows_radix(mif_keyword::data_radix);
    mif_examiner examiner(text, header, form, knows_data ? width() : std::nullopt, options.wants_repairs);
    if (header.knows_radix(mif_keyword::address_radix)) {
        parse_mif(text, examiner);
        examiner.report(list);
        is_unsigned = has_unsigned && !examiner.has_negative();
        in_doubt = std::move(examiner).in_doubt();
    }
}

void mif_text_reader::hand_out(read_result& result, std::unique_ptr<image_words> all) {
    result.image.emplace(*width(), std::move(all));
    for (const address_range& range : in_doubt) {
        result.image->words().fill(range.first, range.last, {""});
    }
    // A later statement may have set what an earlier one left in doubt; that is in doubt, too.
    result.unreadable = united(std::move(in_doubt));
}

read_result mif_text_reader::finish() {
    if (!has_structure) {
        if (auto foreign = foreign_content(text, &mif_format)) {
            return only_finding(mif_format, text, *std::move(foreign));
        }
        findings.forget(mif_syntax::header_text); // there is no header
    }
    std::unique_ptr<image_words> all = find_faults();
    read_result result;
    result.facts.as = &mif_format;
    result.facts.address_radix = form.addresses;
    result.facts.data_radix = is_unsigned ? radix::uns : form.data;
    result.facts.has_comments = has_comments;
    if (all != nullptr && (!list.has_broken() || options.keep_going)) {
        hand_out(result, std::move(all));
    }
    result.facts.diagnostics_left_out = list.left_out();
    result.diagnostics = list.finish(text);
    return result;
}

/// Completes the list. The words, those that are none unset; null where the file does not say what they are,
/// or they are too many.
std::unique_ptr<image_words> mif_text_reader::find_faults() {
    const bool has_content = words.has_value();
    if (!has_content) {
        words.emplace(text, mif_number_form{radix::hex, radix::hex, 1});
    }
    const bool has_doubts = has_unsound || words->has_bad_statement() || words->has_overlap();
    auto all = std::make_unique<image_words>(words->take());
    if (unframed) {
        judge_frame(*all);
    } else if (has_structure || has_content) {
        find_missing_settings(*all);
    }
    const bool has_numbers = depth() && width() && header.knows_radix(mif_keyword::data_radix);
    const bool can_be_words = has_numbers && is_proportionate(*all);
    const bool all_words = !can_be_words || make_words(*all);
    if (can_be_words && all->size() < *depth()) {
        all->resize(*depth()); // which the caller gave: no MIF has as many
    }
    if (has_doubts || !all_words || has_unsigned || has_prefix) {
        examine();
    }
    findings.report(list);
    return can_be_words ? std::move(all) : nullptr;
}

/// The last statement that sets an address.
class mif_word_finder : public mif_sink {
public:
    mif_word_finder(std::string_view contents, std::uint64_t wanted)
        : text(contents),
          address(wanted),
          header(contents) {}

    void setting(const mif_setting& found) override { header.take(found, ignored); }
    void statement(const mif_statement& found) override {
        const mif_number_form form{header.radix_of(mif_keyword::address_radix), radix::hex, deepest_mif};
        const mif_addresses addresses = addresses_of(found, text, form);
        if (addresses.what == mif_addresses::fault::none && addresses.first <= address &&
            address <= addresses.last) {
            last = found.whole;
        }
    }
    [[nodiscard]] std::optional<place> found() const {
        if (!last) {
            return std::nullopt;
        }
        const std::string_view before = text.substr(0, last->offset);
        return place{static_cast<std::uint64_t>(std::ranges::count(before, '\n')) + 1,
                     last->offset - (before.rfind('\n') + 1) + 1, last->offset, last->length};
    }

private:
    std::string_view text;
    std::uint64_t address;
    mif_header header;
    diagnostic_list ignored{0};
    std::optional<span> last;
};

/// Counts what only a MIF has.
class mif_trait_counter : public mif_sink {
public:
    explicit mif_trait_counter(std::string_view head) : text(head) {}

    void setting(const mif_setting& found) override { settings += found.value.length != 0 ? 1 : 0; }
    void content(const span& keyword) override { has_content = keyword.length != 0; }
    /// Skips the lines that cannot change the answer any more.
    std::size_t read_lines(std::size_t offset) override {
        const std::size_t end = text.rfind('\n') + 1;
        return how_sure() == certainty::certain && end > offset ? end - offset : 0;
    }
    [[nodiscard]] certainty how_sure() const {
        if (settings + (has_content ? 1 : 0) >= 2) {
            return certainty::certain;
        }
        return settings != 0 || has_content ? certainty::likely : certainty::no;
    }

private:
    std::string_view text;
    int settings = 0;
    bool has_content = false;
};

} // namespace

read_result read_mif(std::string_view contents, const read_options& options, mif_fast_path path) {
    if (auto found = lines_without_lf(contents, options)) {
        return only_finding(mif_format, contents, *std::move(found));
    }
    mif_text_reader reader(contents, options, path);
    parse_mif(contents, reader);
    return reader.finish();
}

std::optional<place> find_mif_word(std::string_view contents, const read_options& /*options*/,
                                   std::uint64_t address) {
    mif_word_finder finder(contents, address);
    parse_mif(contents, finder);
    return finder.found();
}

certainty sniff_mif(std::string_view head) {
    mif_trait_counter traits(head);
    parse_mif(head, traits);
    return traits.how_sure();
}

} // namespace kvrimage
