#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

std::vector<std::string> read_values(std::string_view values, std::uint32_t width,
                                     const std::string& operand) {
    std::vector<std::string> words;
    for (std::size_t begin = 0; begin <= values.size();) {
        const std::size_t end = std::min(values.find(',', begin), values.size());
        words.push_back(word_of_person(values.substr(begin, end - begin), width, operand));
        begin = end + 1;
    }
    return words;
}

word_edit read_range(const std::string& operand, const memory_image& image) {
    const assignment read = read_assignment(operand, image, "FIRST..LAST=VALUE[,VALUE...]");
    word_edit edit = {read.range.first, read.range.last, read_values(read.values, image.width, operand)};
    const std::uint64_t size = std::uint64_t{edit.last} - edit.first + 1;
    if (edit.words.size() > size) {
        throw tool_error(exit_code::wrong_usage, fmt::format("{}: {} values are too many for {}", operand,
                                                             edit.words.size(), counted(size, "word")));
    }
    if (std::all_of(edit.words.begin(), edit.words.end(),
                    [&edit](const std::string& word) { return word == edit.words.front(); })) {
        edit.words.resize(1);
    }
    return edit;
}

std::vector<word_edit> read_ranges(const std::vector<std::string>& operands, const memory_image& image) {
    std::vector<word_edit> edits;
    edits.reserve(operands.size());
    for (const std::string& operand : operands) {
        edits.push_back(read_range(operand, image));
    }
    return edits;
}

std::string summary_of_ranges(const std::vector<word_edit>& edits) {
    std::string ranges;
    for (const word_edit& edit : edits) {
        ranges += fmt::format("{}0x{:X}", ranges.empty() ? "" : ", ", edit.first);
        if (edit.first != edit.last) {
            ranges += fmt::format(" to 0x{:X}", edit.last);
        }
    }
    const bool is_one = edits.size() == 1 && edits[0].first == edits[0].last;
    return fmt::format("{} {} filled", is_one ? "word" : "words", ranges);
}

exit_code fill(const arguments& given) {
    edit_file(given, read_ranges, summary_of_ranges);
    return exit_code::fine;
}

} // namespace

const command fill_command = {
    "fill",
    "FILE FIRST..LAST=VALUE[,VALUE...]...",
    "Give ranges of addresses new words and change nothing else in the file.",
    "  $ kvrmem fill boot.mif 0x100..0x1FF=0\n"
    "  $ kvrmem fill boot.mif 0..7=1,2\n"
    "  $ kvrmem fill --width 16 --output - boot.hex 0..15=0xFFFF\n",
    "Several values are repeated in order over the range: 0..7=1,2 gives 1 2 1 2 1 2\n"
    "1 2. What the file holds otherwise stays as it is, as with set: a range line of\n"
    "a MIF is split where it has to be, and words that are never set get range lines\n"
    "before 'END;'. When ranges overlap, the last value counts.\n",
    2,
    any_number,
    edit_options,
    fill};

} // namespace kvrmem
