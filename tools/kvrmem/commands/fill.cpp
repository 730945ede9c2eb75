#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::assignment;
using kvrimage::word;

std::vector<word> read_values(const edit_operand& operand, std::uint32_t width) {
    const std::string_view values = operand.values;
    std::vector<word> words;
    for (std::size_t begin = 0; begin <= values.size();) {
        const std::size_t end = std::min(values.find(',', begin), values.size());
        words.push_back(word_of_user(values.substr(begin, end - begin), width, operand.text));
        begin = end + 1;
    }
    return words;
}

assignment read_range(const edit_operand& operand, std::uint32_t width) {
    assignment read{operand.addresses, read_values(operand, width)};
    const std::uint64_t size = read.addresses.last - read.addresses.first + 1;
    if (read.words.size() > size) {
        usage_error(fmt::format("{}: {} values are too many for {}", operand.text, read.words.size(),
                                counted(size, "word")));
    }
    if (std::ranges::all_of(read.words, [&read](const word& each) { return each == read.words.front(); })) {
        read.words.erase(read.words.begin() + 1, read.words.end());
    }
    return read;
}

std::string summary_of_ranges(const std::vector<assignment>& assignments) {
    std::string ranges;
    for (const assignment& each : assignments) {
        const auto [first, last] = each.addresses;
        ranges += fmt::format("{}0x{:X}", ranges.empty() ? "" : ", ", first);
        ranges += first != last ? fmt::format(" to 0x{:X}", last) : "";
    }
    const bool is_one =
        assignments.size() == 1 && assignments[0].addresses.first == assignments[0].addresses.last;
    return fmt::format("{} {} filled", is_one ? "word" : "words", ranges);
}

exit_code fill(const arguments& given) {
    edit_file(given, {"FIRST..LAST=VALUE[,VALUE...]", read_range, summary_of_ranges});
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
    "1 2. What the file holds otherwise stays as it is, as with set: a range is split\n"
    "where it has to be. When ranges overlap, the last value counts.\n",
    2,
    any_number,
    edit_options,
    fill};

} // namespace kvrmem
