#include "kvrimage/diagnostics/visible_text.h"
#include "kvrimage/operations/statistics.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/unit_title.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/standard_output.h"
#include "tools/kvrmem/statistics/statistics_report.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

using kvrimage::memory_image;
using kvrimage::word_statistics;

/// Properties of the words of a file.
struct word_facts {
    std::optional<kvrimage::address_range> bounds;
    word_statistics statistics;
    std::uint64_t unreadable = 0;
};

word_facts facts_of(const kvrimage::read_result& result) {
    word_facts facts{result.image->bounds(), kvrimage::count_words(*result.image)};
    for (const kvrimage::address_range& range : result.unreadable) {
        facts.unreadable += range.last - range.first + 1;
    }
    return facts;
}

/// Returns "HEX", also for a format with one radix only.
std::string_view title_of(const std::optional<kvrimage::radix>& radix) {
    return kvrimage::title_of(radix.value_or(kvrimage::radix::hex));
}

std::string most_frequent(const kvrimage::read_result& result, const word_statistics& statistics) {
    const kvrimage::word& word = *statistics.most_frequent;
    return shown_or_gap(word, {result.facts.data_radix.value_or(kvrimage::radix::hex)});
}

std::string width_of(const kvrimage::read_result& result) {
    const std::string& source = result.facts.width_source;
    return fmt::format("{}{}", result.image->width(),
                       source.empty() ? "" : fmt::format(" (taken from {})", source));
}

std::string unreadable_as_text(const word_facts& facts) {
    return facts.unreadable == 0 ? "" : fmt::format("words unreadable {}\n", facts.unreadable);
}

std::string words_as_text(const kvrimage::read_result& result, const word_facts& facts) {
    if (!facts.bounds) {
        return "words set        none\n" + unreadable_as_text(facts);
    }
    const word_statistics& statistics = facts.statistics;
    return fmt::format("words set        {} of {}\n{}"
                       "lowest address   {} (0x{:X})\n"
                       "highest address  {} (0x{:X})\n"
                       "runs             {}\n"
                       "distinct words   {}\n"
                       "most frequent    {} ({})\n",
                       statistics.set, result.image->depth(), unreadable_as_text(facts), facts.bounds->first,
                       facts.bounds->first, facts.bounds->last, facts.bounds->last, statistics.runs,
                       statistics.distinct, most_frequent(result, statistics),
                       counted(statistics.most_frequent_count, "time"));
}

/// Returns "MIF", or "readmemh (likely, by the contents)" if only the contents suggest the format.
std::string format_of(const kvrimage::file_facts& facts) {
    return fmt::format("{}{}", facts.as->title,
                       facts.how_sure == kvrimage::certainty::likely     ? " (likely, by the contents)"
                       : facts.how_sure == kvrimage::certainty::possible ? " (possible, by the contents)"
                                                                         : "");
}

/// Returns the options and extra information of the format: the address unit, start addresses.
std::string more_as_text(const kvrimage::read_result& result) {
    std::string text;
    const auto add = [&text](std::string_view name, std::string_view value) {
        text += fmt::format("{:<17}{}\n", name, value);
    };
    if (result.facts.unit) {
        add("address unit", unit_title(*result.facts.unit, result.image->width(), result.facts.order));
    }
    for (const kvrimage::named_fact& each : result.facts.more) {
        add(each.name, kvrimage::make_visible(each.value).text);
    }
    return text;
}

std::string as_text(const memory_input& input) {
    const kvrimage::read_result& result = input.result;
    return fmt::format("file             {}\n"
                       "format           {}\n"
                       "width            {}\n"
                       "depth            {}\n"
                       "address radix    {}\n"
                       "data radix       {}\n{}{}",
                       input.name(), format_of(result.facts), width_of(result), result.image->depth(),
                       title_of(result.facts.address_radix), title_of(result.facts.data_radix),
                       more_as_text(result), words_as_text(result, facts_of(result)));
}

json_value words_as_json(const kvrimage::read_result& result) {
    const word_facts facts = facts_of(result);
    json_value words;
    words["set"] = facts.statistics.set;
    if (facts.unreadable != 0) {
        words["unreadable"] = facts.unreadable;
    }
    if (facts.bounds) {
        words["lowest_address"] = facts.bounds->first;
        words["highest_address"] = facts.bounds->last;
        words["runs"] = facts.statistics.runs;
        words["distinct"] = facts.statistics.distinct;
        words["most_frequent"]["word"] = most_frequent(result, facts.statistics);
        words["most_frequent"]["count"] = facts.statistics.most_frequent_count;
    }
    return words;
}

json_value as_json(const memory_input& input) {
    const kvrimage::read_result& result = input.result;
    json_value document;
    document["schema"] = "kvrmem-info-1";
    document["file"] = json_name(input.path);
    document["format"] = result.facts.as->title;
    document["width"] = result.image->width();
    document["width_is_guessed"] = !result.facts.width_source.empty();
    document["depth"] = result.image->depth();
    document["address_radix"] = title_of(result.facts.address_radix);
    document["data_radix"] = title_of(result.facts.data_radix);
    if (result.facts.unit) {
        document["address_unit"] = *result.facts.unit == kvrimage::address_unit::byte ? "byte" : "word";
    }
    for (const kvrimage::named_fact& each : result.facts.more) {
        document["more"].push_back({{"name", each.name}, {"value", kvrimage::make_visible(each.value).text}});
    }
    document["words"] = words_as_json(result);
    return document;
}

exit_code info(const arguments& given) {
    const memory_input input = read_memory(given, given.files[0]);
    const word_radix radix = {input.result.facts.data_radix.value_or(kvrimage::radix::hex)};
    if (given.json) {
        json_value document = as_json(input);
        if (given.statistics) {
            document["statistics"] = statistics_as_json(input.image(), radix);
        }
        print_json(document);
    } else {
        print(as_text(input) + (given.statistics ? statistics_as_text(input.image(), radix) : ""));
    }
    return exit_code::success;
}

constexpr auto info_options = united_options(
    reading_options, std::array{option_id::statistics, option_id::json, option_id::keep_going});

} // namespace

const command info_command = {
    "info",
    "FILE",
    "Show what a memory file holds: sizes, radixes, addresses, distinct words.",
    "  $ kvrmem info sine.mif\n"
    "  $ kvrmem info --width 16 boot.hex\n"
    "  $ kvrmem info --json sine.mif | jq .words.set\n"
    "  $ kvrmem info --statistics sine.mif\n",
    "Words that are not set do not count. A run is a range of consecutive addresses with\n"
    "the same word.\n"
    "\n"
    "--statistics adds the ten most frequent values with their shares; the entropy; the\n"
    "toggle rate, which is the share of bits that change from one address to the next;\n"
    "the smallest widths that hold all values; and the number of words after which the\n"
    "contents repeat. The toggle rate excludes don't-care bits, and the widths hold both\n"
    "of their values; otherwise a word with don't-care bits is a separate value.\n",
    1,
    1,
    info_options,
    info};

} // namespace kvrmem
