#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"

#include <fmt/format.h>

#include <string>
#include <vector>

namespace kvrmem {

namespace {

std::string summary_of_ranges(const std::vector<kvrimage::address_range>& addresses) {
    std::string ranges;
    for (const auto& [first, last] : addresses) {
        ranges += fmt::format("{}0x{:X}", ranges.empty() ? "" : ", ", first);
        ranges += first != last ? fmt::format(" to 0x{:X}", last) : "";
    }
    if (addresses.empty()) {
        return "no word filled";
    }
    const bool is_one = addresses.size() == 1 && addresses[0].first == addresses[0].last;
    return fmt::format("{} {} filled", is_one ? "word" : "words", ranges);
}

exit_code fill(const arguments& given) {
    edit_file(given, {"FIRST..LAST=VALUE[,VALUE...]", true, summary_of_ranges});
    return exit_code::success;
}

} // namespace

const command fill_command = {
    "fill",
    "FILE FIRST..LAST=VALUE[,VALUE...]...",
    "Give ranges of addresses new words and change nothing else in the file.",
    "  $ kvrmem fill boot.mif 0x100..0x1FF=0\n"
    "  $ kvrmem fill boot.mif 0..7=1,2\n"
    "  $ kvrmem fill --width 16 --output - boot.hex 0..15=0xFFFF\n"
    "  $ kvrmem fill boot.mif '0x80..0xFF[7]=0' '0x40..0x7F=\"-+\"'\n",
    "Several values are repeated in order over the range: 0..7=1,2 gives 1 2 1 2 1 2 1 2.\n"
    "The rest of the file is unchanged, as with set; a range is split if necessary. If\n"
    "ranges overlap, the last value is used. Texts, bits, fractions and --from-file are\n"
    "written as with set; a text has one value per byte.\n",
    1,
    any_number,
    edit_options,
    fill};

} // namespace kvrmem
