#include "tests/kvrimage/contract/library_reading.h"

#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/memory/rif/rif_memory.h"
#include "kvr/memory/rif/rif_reader.h"

#include <algorithm>
#include <optional>
#include <random>
#include <set>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

/// The words of the library after a read; no value if it refused the file.
struct library_words {
    kvr::word_store words;
    std::optional<radix> digits;
    std::uint64_t depth; ///< the number of words, if the file states it; otherwise 0
};

std::optional<radix> radix_of(KVR_MEMORY_RADIXES of) {
    switch (of) {
    case RADIX_BIN:
        return radix::bin;
    case RADIX_OCT:
        return radix::oct;
    case RADIX_DEC:
        return radix::dec;
    case RADIX_UNS:
        return radix::uns;
    case RADIX_HEX:
        return radix::hex;
    default:
        return std::nullopt;
    }
}

std::optional<library_words> read_mif(std::string_view contents, const memory_image& /*ours*/) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    kvr::line_source lines(contents, kvr::mif_reader::source_limit);
    if (!kvr::mif_reader(memory).read(lines) || memory.error_state != ERROR_STATE_NONE) {
        return std::nullopt;
    }
    return library_words{std::move(memory.data_words), radix_of(memory.memory_radix), memory.number_of_words};
}

std::optional<library_words> read_hex(std::string_view contents, const memory_image& ours) {
    kvr::hex_memory memory(nullptr);
    memory.word_size = ours.width();
    memory.memory_initialize_value.clear();
    kvr::line_source lines(contents, kvr::hex_record_walk::longest_line);
    if (!kvr::read_hex_lines(memory, lines)) {
        return std::nullopt;
    }
    return library_words{std::move(memory.data_words), radix::hex, 0};
}

std::optional<library_words> read_rif(std::string_view contents, const memory_image& ours) {
    kvr::rif_memory memory(nullptr);
    memory.word_size = ours.width();
    memory.memory_initialize_value.clear();
    memory.resize_words(static_cast<std::uint32_t>(std::min<std::uint64_t>(ours.depth(), 0xFFFFFFFFU)));
    kvr::line_source lines(contents, kvr::line_source::unlimited);
    kvr::rif_reader(memory).read(lines);
    if (memory.error_state != ERROR_STATE_NONE) {
        return std::nullopt;
    }
    return library_words{std::move(memory.data_words), radix::hex, 0};
}

/// The addresses at which runs of either result begin and end, and some between them.
std::set<std::uint64_t> addresses_to_compare(const memory_image& ours, const kvr::word_store& theirs) {
    // A wide word takes as long as many narrow ones.
    const std::size_t most = 64 + (std::size_t{1} << 18U) / ours.width();
    std::mt19937_64 random(7);
    std::set<std::uint64_t> addresses;
    const auto add = [&](std::uint64_t first, std::uint64_t last) {
        addresses.insert({first, last, first + random() % (last - first + 1)});
    };
    for (const run& each : ours.runs()) {
        add(each.addresses.first, each.addresses.last);
        if (addresses.size() > most) {
            break;
        }
    }
    for (std::uint64_t at = 0; at < theirs.size() && addresses.size() < 2 * most;) {
        const kvr::word_run each = theirs.run_at(static_cast<std::uint32_t>(at));
        add(each.first, each.last);
        at = std::uint64_t{each.last} + 1;
    }
    return addresses;
}

std::string difference_at(std::uint64_t address, const memory_image& ours, const library_words& theirs) {
    const std::optional<word> our_word =
        address <= ours.last_address() ? ours[address] : std::optional<word>();
    const std::string_view text = address < theirs.words.size()
                                      ? theirs.words[static_cast<std::uint32_t>(address)]
                                      : std::string_view();
    word_result their_word =
        text.empty() || !theirs.digits ? word_result{} : word::parse(text, *theirs.digits, ours.width());
    if (!text.empty() && !their_word.value && theirs.digits == radix::dec) {
        their_word = word::parse(text, radix::uns, ours.width()); // too large for a signed number
    }
    // In the library, words that nothing sets are 0.
    const bool is_zero_by_default =
        text.empty() && address < theirs.words.size() && our_word == word(ours.width());
    if ((our_word == their_word.value && text.empty() == !our_word) || is_zero_by_default) {
        return "";
    }
    return "address " + std::to_string(address) + ": '" + std::string(text) + "' instead of " +
           (our_word ? our_word->to_text(radix::bin).value_or("?") : "nothing");
}

} // namespace

std::string how_the_library_differs(std::string_view contents, const format& as, const memory_image& ours,
                                    const read_options& options, std::optional<radix> our_radix) {
    std::optional<library_words> theirs;
    if (as.id == "mif") {
        theirs = read_mif(contents, ours);
    } else if (as.id == "hex") {
        theirs = read_hex(contents, ours);
    } else if (as.id == "rif") {
        theirs = read_rif(contents, ours);
    } else {
        return "";
    }
    if (!theirs) {
        return "the library refuses the file";
    }
    if (theirs->depth != 0 && !options.depth && theirs->depth != ours.depth()) {
        return "the library reads a depth of " + std::to_string(theirs->depth);
    }
    // The texts are the same, but the radix has different names.
    if (our_radix == radix::uns && theirs->digits == radix::dec) {
        theirs->digits = our_radix;
    }
    for (const std::uint64_t address : addresses_to_compare(ours, theirs->words)) {
        std::string difference = difference_at(address, ours, *theirs);
        if (!difference.empty()) {
            return difference;
        }
    }
    return "";
}

} // namespace kvrimage_tests
