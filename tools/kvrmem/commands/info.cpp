#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <unordered_map>

namespace kvrmem {

namespace {

/// What the words of a memory look like. Words that were never set do not count.
struct word_statistics {
    std::uint64_t set = 0;
    std::uint64_t runs = 0;
    std::uint64_t distinct = 0;
    std::string most_frequent;
    std::uint64_t most_frequent_count = 0;
};

class word_counter {
public:
    /// Counts @p length equal words that follow those counted before, all of that @p times.
    void take(std::string_view word, std::uint64_t length, std::uint64_t times = 1) {
        const bool begins_run = word != text;
        text.assign(word);
        if (text.empty()) {
            return;
        }
        statistics.runs += begins_run ? times : 0;
        statistics.set += length * times;
        const std::uint64_t count = counts[text] += length * times;
        if (count > statistics.most_frequent_count) {
            statistics.most_frequent_count = count;
            statistics.most_frequent = text;
        }
    }

    [[nodiscard]] word_statistics result() {
        statistics.distinct = counts.size();
        return statistics;
    }

private:
    word_statistics statistics;
    std::unordered_map<std::string, std::uint64_t> counts;
    std::string text; ///< of the word before
};

word_statistics count_words(const kvr::word_store& words) {
    word_counter counter;
    const auto take_cycle = [&](const kvr::word_cycle& cycle) {
        // The first turn follows other words; all others follow one like themselves.
        const std::uint64_t turns = length_of(cycle) / cycle.period;
        for (const std::uint64_t times : {std::uint64_t{1}, turns - 1}) {
            for (std::uint32_t index = 0; index < cycle.period; ++index) {
                counter.take(words[cycle.first + index], 1, times);
            }
        }
        return turns * cycle.period;
    };
    for_each_cycle_or_run(words, take_cycle,
                          [&](const kvr::word_run& run) { counter.take(run.text, length_of(run)); });
    return counter.result();
}

std::string shown(const memory_image& image, const std::string& word) {
    std::string text;
    return show_word(word, image.data_radix, image.width, text) ? text : word;
}

std::string width_of(const memory_image& image) {
    if (image.note.empty()) {
        return std::to_string(image.width);
    }
    return fmt::format("{} ({})", image.width, image.note);
}

std::string words_as_text(const memory_image& image) {
    const auto bounds = bounds_of(image.words);
    if (!bounds) {
        return "words set        none\n";
    }
    const word_statistics statistics = count_words(image.words);
    return fmt::format("words set        {} of {}\n"
                       "lowest address   {} (0x{:X})\n"
                       "highest address  {} (0x{:X})\n"
                       "runs             {}\n"
                       "distinct words   {}\n"
                       "most frequent    {} ({})\n",
                       statistics.set, image.depth, bounds->lowest, bounds->lowest, bounds->highest,
                       bounds->highest, statistics.runs, statistics.distinct,
                       shown(image, statistics.most_frequent),
                       counted(statistics.most_frequent_count, "time"));
}

std::string as_text(const memory_image& image, const std::string& name) {
    return fmt::format("file             {}\n"
                       "format           {}\n"
                       "width            {}\n"
                       "depth            {}\n"
                       "address radix    {}\n"
                       "data radix       {}\n{}",
                       name, format_title(image.format), width_of(image), image.depth,
                       radix_title(image.address_radix), radix_title(image.data_radix), words_as_text(image));
}

json_value words_as_json(const memory_image& image) {
    const word_statistics statistics = count_words(image.words);
    json_value words;
    words["set"] = statistics.set;
    const auto bounds = bounds_of(image.words);
    if (bounds) {
        words["lowest_address"] = bounds->lowest;
        words["highest_address"] = bounds->highest;
        words["runs"] = statistics.runs;
        words["distinct"] = statistics.distinct;
        words["most_frequent"]["word"] = shown(image, statistics.most_frequent);
        words["most_frequent"]["count"] = statistics.most_frequent_count;
    }
    return words;
}

json_value as_json(const memory_image& image, const std::string& path) {
    json_value document;
    document["schema"] = "kvrmem-info-1";
    document["file"] = json_name(path);
    document["format"] = format_title(image.format);
    document["width"] = image.width;
    document["width_is_guessed"] = !image.note.empty();
    document["depth"] = image.depth;
    document["address_radix"] = radix_title(image.address_radix);
    document["data_radix"] = radix_title(image.data_radix);
    document["words"] = words_as_json(image);
    return document;
}

exit_code info(const arguments& given) {
    const input_file input(given.files[0]);
    const memory_image image = read_memory(input, options_for(given, given.files[0]));
    if (given.json) {
        print_json(as_json(image, given.files[0]));
    } else {
        print(as_text(image, input.name()));
    }
    return exit_code::fine;
}

constexpr std::array info_options = {option_id::from, option_id::width, option_id::depth, option_id::json};

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
