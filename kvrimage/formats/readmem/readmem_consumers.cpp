#include "kvrimage/formats/readmem/readmem_consumers.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/readmem/readmem_triggers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// A program and its tested version.
struct measured_reader {
    std::string_view name;
    std::string_view title;
};

constexpr measured_reader icarus = {"icarus", "Icarus Verilog 11.0"};
constexpr measured_reader verilator = {"verilator", "Verilator 5.006"};
constexpr measured_reader yosys = {"yosys", "Yosys 0.23"};

/// The effect of a trigger on a reader. tests/simulators compares each rule with the programs.
struct readmem_rule {
    const measured_reader* reader;
    readmem_trigger trigger;
    std::string_view effect; ///< follows the reader's title; begins with "refuses" if it reads no words
};

constexpr auto readmem_rules = std::to_array<readmem_rule>({
    {&icarus, readmem_trigger::byte_order_mark, "refuses the byte-order mark"},
    {&icarus, readmem_trigger::hash_comment, "refuses '#'"},
    {&icarus, readmem_trigger::dash_comment, "refuses '--'"},
    {&icarus, readmem_trigger::separator, "refuses the separator"},
    {&icarus, readmem_trigger::spaced_address, "refuses '@' without an address"},
    {&icarus, readmem_trigger::prefixed_address, "reads the address as @0, and the rest of it as a word"},
    {&icarus, readmem_trigger::underscored_address,
     "reads the address up to its '_', and the rest of it as a word"},
    {&icarus, readmem_trigger::bad_address, "reads other characters as a word, or refuses the address"},
    {&icarus, readmem_trigger::byte_address, "reads the address as one of words"},
    {&icarus, readmem_trigger::bad_character, "refuses the character"},
    {&icarus, readmem_trigger::slash, "refuses '/'"},
    {&icarus, readmem_trigger::too_wide, "cuts the word to its lowest bits, with a warning"},
    {&icarus, readmem_trigger::beyond_depth, "ignores words beyond the memory, or refuses the address"},

    {&verilator, readmem_trigger::byte_order_mark, "refuses the byte-order mark"},
    {&verilator, readmem_trigger::word_at_end, "drops the last word, which no line end follows"},
    {&verilator, readmem_trigger::dash_comment, "refuses '--'"},
    {&verilator, readmem_trigger::separator, "refuses the separator"},
    {&verilator, readmem_trigger::spaced_address, "reads the address as a word"},
    {&verilator, readmem_trigger::prefixed_address, "refuses the address"},
    {&verilator, readmem_trigger::bad_address, "ignores '@', or refuses it"},
    {&verilator, readmem_trigger::byte_address, "reads the address as one of words"},
    {&verilator, readmem_trigger::high_impedance, "refuses the digit z"},
    {&verilator, readmem_trigger::dont_care, "reads 0 for a digit x"},
    {&verilator, readmem_trigger::bad_character, "refuses the character"},
    {&verilator, readmem_trigger::short_comment_begin, "refuses the comment, which ends after '/*/' there"},
    {&verilator, readmem_trigger::too_wide, "cuts the word to its lowest bits"},
    {&verilator, readmem_trigger::beyond_depth, "refuses words beyond the memory"},

    {&yosys, readmem_trigger::mark_before_text, "reads the byte-order mark, and what follows it, as a word"},
    {&yosys, readmem_trigger::hash_comment, "reads the comment as words"},
    {&yosys, readmem_trigger::dash_comment, "reads the comment as words"},
    {&yosys, readmem_trigger::separator_within, "reads the words beside the separator as one"},
    {&yosys, readmem_trigger::separator_alone, "reads the separator as a word"},
    {&yosys, readmem_trigger::spaced_address, "refuses '@' without an address"},
    {&yosys, readmem_trigger::underscored_address, "refuses the address"},
    {&yosys, readmem_trigger::bad_address, "refuses the address"},
    {&yosys, readmem_trigger::byte_address, "reads the address as one of words"},
    {&yosys, readmem_trigger::form_feed, "reads the form feed as a part of a word, or refuses the address"},
    {&yosys, readmem_trigger::bad_character, "reads another word there, or refuses it"},
    {&yosys, readmem_trigger::slash, "reads '/' as a part of a word, or as one"},
    {&yosys, readmem_trigger::joined_address,
     "reads the address as a part of the word before it, or refuses it"},
    {&yosys, readmem_trigger::joined_comment, "reads the comment as words"},
    {&yosys, readmem_trigger::comment_after_address, "refuses the comment beside the address"},
    {&yosys, readmem_trigger::comment_in_comment,
     "reads '/*' in the comment as the begin of a block comment"},
    {&yosys, readmem_trigger::short_comment_begin,
     "reads the comment, which ends after '/*/' there, as words"},
    {&yosys, readmem_trigger::too_wide, "cuts the word to its lowest bits, with a warning"},
    {&yosys, readmem_trigger::beyond_depth, "ignores words beyond the memory"},
});

/// What to write instead.
struct readmem_advice {
    readmem_trigger trigger;
    std::string_view advice;
    std::string_view repair = {}; ///< describes the edits of the trigger
};

// Broken contents get their hint in the diagnostic of the reader.
constexpr auto readmem_advices = std::to_array<readmem_advice>({
    {readmem_trigger::word_at_end, "end the file with a line end", "the file ends with a line end now"},
    {readmem_trigger::form_feed, "separate words by blanks or line ends", "form feeds are blanks now"},
    {readmem_trigger::high_impedance, "write x, or 0 or 1"},
    {readmem_trigger::dont_care, "write 0 or 1"},
    {readmem_trigger::byte_address, "write addresses that count words"},
    {readmem_trigger::joined_address, "write a blank before '@'", "a blank is before '@' now"},
    {readmem_trigger::joined_comment, "write a blank before '//'", "a blank is before '//' now"},
    {readmem_trigger::comment_after_address, "write a blank before '//'", "a blank is before '//' now"},
    {readmem_trigger::comment_in_comment, "write no '/*' in the comment"},
    {readmem_trigger::short_comment_begin, "write a blank after '/*'"},
});

diagnostic diagnostic_of(const readmem_rule& rule, const readmem_trigger_places& found) {
    const auto advice = std::ranges::find(readmem_advices, rule.trigger, &readmem_advice::trigger);
    const bool has_advice = advice != readmem_advices.end();
    diagnostic made = diagnose::readmem_other_reading(found.where, rule.reader->title, rule.effect,
                                                      has_advice ? advice->advice : "");
    made.consumer = rule.reader->name;
    if (has_advice && !found.edits.empty() && found.edits.size() == found.where.count()) {
        made.repair = advice->repair;
        made.fix = found.edits;
    }
    return made;
}

std::vector<diagnostic> check_readmem_for(const measured_reader& reader, std::string_view contents,
                                          const read_options& options, const read_result& ours) {
    const readmem_triggers found = find_readmem_triggers(contents, options, ours);
    diagnostic_list list(options.most_diagnostics, options.wants_repairs);
    for (const readmem_rule& rule : readmem_rules) {
        const readmem_trigger_places& places = found[static_cast<std::size_t>(rule.trigger)];
        if (rule.reader == &reader && !places.where.empty()) {
            list.add(diagnostic_of(rule, places));
        }
    }
    return list.finish(contents);
}

} // namespace

std::vector<diagnostic> check_readmem_for_icarus(std::string_view contents, const read_options& options,
                                                 const read_result& ours) {
    return check_readmem_for(icarus, contents, options, ours);
}

std::vector<diagnostic> check_readmem_for_verilator(std::string_view contents, const read_options& options,
                                                    const read_result& ours) {
    return check_readmem_for(verilator, contents, options, ours);
}

std::vector<diagnostic> check_readmem_for_yosys(std::string_view contents, const read_options& options,
                                                const read_result& ours) {
    return check_readmem_for(yosys, contents, options, ours);
}

} // namespace kvrimage
