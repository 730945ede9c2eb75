#include "kvrimage/operations/statistics.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

using kvrimage::memory_image;
using kvrimage::word_statistics;

/// What the words of a file look like.
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

/// "HEX", also for a format that has no other.
std::string_view title_of(const std::optional<kvrimage::radix>& radix) {
    return kvrimage::title_of(radix.value_or(kvrimage::radix::hex));
}

std::string most_frequent(const kvrimage::read_result& result, const word_statistics& statistics) {
    const kvrimage::word& word = *statistics.most_frequent;
    const std::optional<std::string> text =
        word.to_text(result.facts.data_radix.value_or(kvrimage::radix::hex));
    return text ? *text : shown_or_gap(word, {kvrimage::radix::hex});
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

/// What the format has in addition.
std::string facts_as_text(const kvrimage::read_result& result) {
    std::string text;
    for (const kvrimage::named_fact& each : result.facts.more) {
        text += fmt::format("{:<16} {}\n", each.name, each.value);
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
                       input.name(), result.facts.as->title, width_of(result), result.image->depth(),
                       title_of(result.facts.address_radix), title_of(result.facts.data_radix),
                       facts_as_text(result), words_as_text(result, facts_of(result)));
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
    for (const kvrimage::named_fact& each : result.facts.more) {
        document["facts"].push_back({{"name", each.name}, {"value", each.value}});
    }
    document["words"] = words_as_json(result);
    return document;
}

exit_code info(const arguments& given) {
    const memory_input input = read_memory(given, given.files[0]);
    if (given.json) {
        print_json(as_json(input));
    } else {
        print(as_text(input));
    }
    return exit_code::fine;
}

constexpr std::array info_options = {
    option_id::from, option_id::width, option_id::depth,       option_id::unit, option_id::order,
    option_id::base, option_id::pad,   option_id::read_choice, option_id::json, option_id::keep_going};

} // namespace

const command info_command = {"info",
                              "FILE",
                              "Tell what a memory file holds: sizes, radixes, addresses, distinct words.",
                              "  $ kvrmem info sine.mif\n"
                              "  $ kvrmem info --width 16 boot.hex\n"
                              "  $ kvrmem info --json sine.mif | jq .words.set\n",
                              "Words that were never set do not count. A run is a stretch of neighbouring\n"
                              "addresses with the same word.\n",
                              1,
                              1,
                              info_options,
                              info};

} // namespace kvrmem
