#include "tools/kvrmem/commands.h"
#include "tools/kvrmem/file_format.h"
#include "tools/kvrmem/memory_input.h"
#include "tools/kvrmem/standard_output.h"
#include "tools/kvrmem/word_text.h"

#include <fmt/format.h>

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

word_statistics count_words(const kvr::word_store& words) {
    word_statistics statistics;
    std::unordered_map<std::string, std::uint64_t> counts;
    std::string text;
    for (std::uint64_t address = 0; address < words.size();) {
        const kvr::word_run run = words.run_at(static_cast<std::uint32_t>(address));
        const std::uint64_t length = std::uint64_t{run.last} - run.first + 1;
        address += length;
        if (run.text.empty()) {
            continue;
        }
        ++statistics.runs;
        statistics.set += length;
        text.assign(run.text);
        const std::uint64_t count = counts[text] += length;
        if (count > statistics.most_frequent_count) {
            statistics.most_frequent_count = count;
            statistics.most_frequent = text;
        }
    }
    statistics.distinct = counts.size();
    return statistics;
}

std::string shown(const memory_image& image, const std::string& word) {
    std::string text;
    return show_word(word, image.data_radix, image.width, text) ? text : word;
}

std::string describe_words(const memory_image& image) {
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
                       "most frequent    {} ({} times)\n",
                       statistics.set, image.depth, bounds->lowest, bounds->lowest, bounds->highest,
                       bounds->highest, statistics.runs, statistics.distinct,
                       shown(image, statistics.most_frequent), statistics.most_frequent_count);
}

void info(const arguments& given) {
    const input_file input(given.files[0]);
    const input_options options{format_for(given.from, given.files[0], "--from"), given.width, given.depth};
    const memory_image image = read_memory(input, options);
    print(fmt::format("file             {}\n"
                      "format           {}\n"
                      "width            {}{}\n"
                      "depth            {}\n"
                      "address radix    {}\n"
                      "data radix       {}\n{}",
                      input.name(), format_title(image.format), image.width,
                      image.note.empty() ? "" : " (" + image.note + ")", image.depth,
                      radix_title(image.address_radix), radix_title(image.data_radix),
                      describe_words(image)));
}

} // namespace

const command info_command = {"info",
                              "FILE",
                              "Tell what a memory file holds: sizes, radixes, addresses, distinct words.",
                              "  $ kvrmem info sine.mif\n"
                              "  $ kvrmem info --width 16 boot.hex\n",
                              1,
                              1,
                              "fwdh",
                              info};

} // namespace kvrmem
