#include "tools/kvrmem/edit/edit_command.h"

#include "kvrimage/compare/fingerprint.h"
#include "kvrimage/edit/field_edit.h"
#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/command_line/command_line.h"
#include "tools/kvrmem/edit/assignment_file.h"
#include "tools/kvrmem/edit/edit_operand.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/lost_comments.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::assignment;
using kvrimage::diagnostic;
using kvrimage::memory_image;

/// Formats without ranges list words one by one, in memory.
constexpr std::uint64_t most_single_words = std::uint64_t{1} << 24U;
constexpr std::uint64_t most_single_digits = std::uint64_t{1} << 29U;

/// A broken diagnostic of the file before the edit, and its error. The edit may replace the faulty word.
struct known_fault {
    kvrimage::diagnostic_id id;
    std::string message;
    broken_file refusal;
};

std::vector<known_fault> known_faults(const arguments& given, const memory_input& input) {
    std::vector<known_fault> faults;
    for (const diagnostic& each : input.result.diagnostics) {
        if (kvrimage::about(each.id).level == kvrimage::diagnostic_class::broken) {
            faults.push_back(
                {each.id, each.message, refusal_of(given, input.path, input.file, input.result, each)});
        }
    }
    return faults;
}

/// Returns whether the file is unreadable only because it needs a base.
bool has_far_addresses(const kvrimage::read_result& result) {
    return std::ranges::all_of(result.diagnostics, [](const diagnostic& each) {
        return kvrimage::about(each.id).level != kvrimage::diagnostic_class::broken ||
               each.id == kvrimage::diagnostic_id::base_needed;
    });
}

/// Reads the file, or the readable part of a broken file.
memory_input read_for_edit(const arguments& given) {
    memory_input input = open_memory(given, given.files[0]);
    input.options.keep_going = true;
    parse(input);
    if (input.options.as != nullptr) {
        require_edits(input);
    }
    if (!input.result.image && has_far_addresses(input.result)) {
        input.options.base = 0; // operands have the addresses of the file
        parse(input);
    }
    if (!input.result.image) {
        throw refusal_of(given, input.path, input.file, input.result, *first_broken(input.result));
    }
    refuse_sizes_said_twice(given, input);
    return input;
}

/// Increases the depth of a file that does not state it, if an edit exceeds it.
void make_room(memory_input& input, std::uint64_t last) {
    memory_image& image = *input.result.image;
    const bool may_grow = !input.options.as->states_depth && !input.options.depth && last >= image.base() &&
                          last - image.base() < kvrimage::deepest_memory;
    if (may_grow && last > image.last_address()) {
        image.resize(last - image.base() + 1);
    }
}

/// The edits of all operands.
struct planned_edits {
    std::vector<assignment> assignments;
    std::vector<kvrimage::address_range> addresses; ///< for each operand
};

/// Converts operands to assignments, in order. Bit fields are set in the result of the previous operands.
class edit_planner {
public:
    edit_planner(const arguments& given, const edit_kind& what, memory_input& edited)
        : kind(what),
          input(edited),
          rules{given.round.value_or(kvrimage::rounding::nearest), given.saturate, what.accepts_ranges} {}

    void take(const std::string& text) {
        const edit_operand operand = parse_edit_operand(text, kind.example);
        if (!kind.accepts_ranges && operand.addresses.first != operand.addresses.last) {
            usage_error(fmt::format("{}: set takes single addresses; fill takes ranges", text));
        }
        edit_values values = values_of(operand, input.image().width(), rules);
        has_fraction = has_fraction || values.has_fraction;
        const kvrimage::address_range addresses = addresses_for(operand, values.words.size());
        make_room(input, addresses.last);
        const std::string fault = range_fault(addresses, input.image());
        if (!fault.empty()) {
            usage_error(fmt::format("{}: {}", text, fault));
        }
        if (operand.field) {
            add_fields(operand, {addresses, *operand.field, std::move(values.words)});
        } else {
            edits.assignments.push_back({addresses, without_repetition(std::move(values.words))});
        }
        edits.addresses.push_back(addresses);
    }

    [[nodiscard]] bool has_seen_fraction() const noexcept { return has_fraction; }
    [[nodiscard]] planned_edits& result() noexcept { return edits; }

private:
    /// A string sets as many words as it has bytes.
    [[nodiscard]] kvrimage::address_range addresses_for(const edit_operand& operand,
                                                        std::uint64_t values) const {
        const auto [first, last] = operand.addresses;
        if (!kind.accepts_ranges) {
            // If the range exceeds the highest address, a shortened one also exceeds the memory.
            return {first, first + std::min(values - 1, ~first)};
        }
        if (values - 1 > last - first) {
            usage_error(fmt::format("{}: {} values are too many for {}", operand.text, values,
                                    counted(last - first + 1, "word")));
        }
        return {first, last};
    }
    static std::vector<kvrimage::word> without_repetition(std::vector<kvrimage::word> words) {
        if (std::ranges::all_of(words, [&words](const auto& each) { return each == words.front(); })) {
            words.erase(words.begin() + 1, words.end());
        }
        return words;
    }
    void add_fields(const edit_operand& operand, const kvrimage::field_change& change) {
        kvrimage::field_assignments made = kvrimage::assignments_of(image_so_far(), change);
        if (made.not_set) {
            usage_error(fmt::format("{}: the word at address {} is not {}; give it a whole value first",
                                    operand.text, *made.not_set,
                                    is_unreadable(*made.not_set) ? "readable" : "set"));
        }
        if (made.are_too_many) {
            usage_error(fmt::format("{}: more than {} words that do not repeat", operand.text,
                                    kvrimage::most_words_with_fields));
        }
        std::ranges::move(made.assignments, std::back_inserter(edits.assignments));
    }
    [[nodiscard]] bool is_unreadable(std::uint64_t address) const {
        return std::ranges::any_of(input.result.unreadable, [address](const auto& each) {
            return each.first <= address && address <= each.last;
        });
    }
    /// Returns the memory after the assignments so far; without any, that of the file.
    const memory_image& image_so_far() {
        if (edits.assignments.empty()) {
            return input.image();
        }
        if (!changed) {
            changed.emplace(input.image());
        }
        changed->resize(input.image().depth());
        for (; changed_by < edits.assignments.size(); ++changed_by) {
            const assignment& each = edits.assignments[changed_by];
            changed->fill(each.addresses, each.words);
        }
        return *changed;
    }

    const edit_kind& kind;
    memory_input& input;
    edit_value_rules rules;
    planned_edits edits;
    bool has_fraction = false;
    std::optional<memory_image> changed; ///< created on demand
    std::size_t changed_by = 0;          ///< number of assignments applied
};

void take_file(edit_planner& planner, const std::string& path) {
    for (const assignment_line& line : read_assignment_file(path)) {
        try {
            planner.take(line.operand);
        } catch (const tool_error& error) {
            throw tool_error(exit_code::bad_input, fmt::format("{}: error: {}", line.place, error.message()));
        }
    }
}

void require_assignments(const arguments& given) {
    if (given.files.size() < 2 && given.assignment_files.empty()) {
        usage_error(fmt::format("too few operands: kvrmem {} {}", given.which->name, given.which->operands));
    }
    const auto streams = std::ranges::count(given.assignment_files, "-") + (given.files[0] == "-" ? 1 : 0);
    if (streams > 1) {
        usage_error("standard input cannot be read twice");
    }
}

planned_edits plan_edits(const arguments& given, const edit_kind& kind, memory_input& input) {
    edit_planner planner(given, kind, input);
    for (const std::string& path : given.assignment_files) {
        take_file(planner, path);
    }
    std::for_each(given.files.begin() + 1, given.files.end(),
                  [&planner](const std::string& text) { planner.take(text); });
    if ((given.round || given.saturate) && !planner.has_seen_fraction()) {
        usage_error(fmt::format("--{} has no effect without a fraction, such as 0=fixed:1.15:0.5",
                                given.round ? "round" : "saturate"));
    }
    return std::move(planner.result());
}

void require_reasonable_size(const memory_input& input, const std::vector<assignment>& assignments) {
    std::uint64_t words = 0;
    for (const assignment& each : assignments) {
        words += each.addresses.last - each.addresses.first + 1;
    }
    const std::uint64_t most =
        std::min(most_single_words, most_single_digits / most_characters_of_word({}, input.image().width()));
    if (!input.options.as->holds_ranges && words > most) {
        usage_error(
            fmt::format("{} words are too many for a format without ranges (at most {})", words, most));
    }
}

/// Returns the error before the edit for the same fault as @p found; null if there was none.
const broken_file* known_refusal(const std::vector<known_fault>& faults, const diagnostic& found) {
    const auto known = std::ranges::find_if(faults, [&found](const known_fault& each) {
        return each.id == found.id && each.message == found.message;
    });
    return known != faults.end() ? &known->refusal : nullptr;
}

/// Edits the text and the image of @p input.
/// @return false if the words are unchanged
bool apply(memory_input& input, const std::vector<assignment>& assignments,
           const std::vector<known_fault>& faults) {
    const kvrimage::edit_result edit =
        input.options.as->edit(input.file.contents(), input.options, input.result, assignments);
    if (!edit.diagnostics.empty()) {
        const diagnostic& first = edit.diagnostics.front();
        if (const broken_file* const refusal = known_refusal(faults, first)) {
            throw *refusal;
        }
        // A fault without a place in the file is in the new words.
        throw tool_error(first.where == kvrimage::place{} ? exit_code::wrong_usage : exit_code::bad_input,
                         fmt::format("{}: {}{}{}; nothing was written", input.name(), first.message,
                                     first.hint.empty() ? "" : "; ", first.hint));
    }
    input.file.edit(edit.edits);
    for (const assignment& each : assignments) {
        input.result.image->fill(each.addresses, each.words);
    }
    return !edit.edits.empty();
}

/// Returns the options for reading the edited text: those of @p given, completed by what the file does not
/// state.
kvrimage::read_options options_for_verifying(const arguments& given, const memory_input& input) {
    kvrimage::read_options options = input.options;
    options.keep_going = false;
    if (!options.as->states_width) {
        options.width = input.image().width();
    }
    if (!options.as->states_depth) {
        options.depth = input.image().depth();
    }
    options.as = given.from;
    return options;
}

/// @param faults faults of the file before the edit
[[noreturn]] void refuse_edit(const memory_input& input, const diagnostic& broken,
                              const std::vector<known_fault>& faults) {
    if (const broken_file* const refusal = known_refusal(faults, broken)) {
        throw *refusal;
    }
    if (!faults.empty()) { // for example, a width that the file does not state may have changed
        throw faults.front().refusal;
    }
    throw tool_error(exit_code::internal,
                     fmt::format("{}: the edit would make the file unreadable, nothing was written: {}",
                                 input.name(), broken.message));
}

/// Returns the options that state how the addresses of a file were read.
std::string address_options(const kvrimage::file_facts& facts) {
    const bool has_bytes = facts.unit == kvrimage::address_unit::byte;
    std::string options = fmt::format("--address-unit {}", has_bytes ? "byte" : "word");
    if (has_bytes && facts.order) {
        options += facts.order == kvrimage::byte_order::little ? " --endian little" : " --endian big";
    }
    return options;
}

/// The words that an edited file must contain. For a file that lists words one by one, which is hardly larger
/// than the words in memory, only their fingerprint is kept. Ranges may have billions of words, but take
/// little memory.
class expected_words {
public:
    expected_words(memory_image&& image, bool has_ranges) {
        if (has_ranges) {
            whole.emplace(std::move(image));
        } else {
            const memory_image gone = std::move(image);
            fingerprint = kvrimage::fingerprint_of(gone);
        }
    }
    [[nodiscard]] bool are_those_of(const memory_image& found) const {
        return whole ? *whole == found : kvrimage::fingerprint_of(found) == fingerprint;
    }

private:
    std::optional<memory_image> whole;
    std::uint64_t fingerprint = 0;
};

/// Reads the edited text of @p input and compares it with the expected words. Sets the image of @p input to
/// the result.
void verify(const arguments& given, memory_input& input, const std::vector<known_fault>& faults) {
    kvrimage::read_options options = options_for_verifying(given, input);
    const expected_words expected(*std::move(input.result.image), input.options.as->holds_ranges);
    input.result.image.reset();
    kvrimage::read_result found = kvrimage::parse(input.file.contents(), options);
    const diagnostic* broken = first_broken(found);
    const bool is_new = broken != nullptr && known_refusal(faults, *broken) == nullptr;
    if (is_new && !options.unit && input.result.facts.unit) {
        // The new words may make the address unit ambiguous, which the old ones determined.
        options.unit = input.result.facts.unit;
        options.order = input.result.facts.order;
        found = kvrimage::parse(input.file.contents(), options);
        broken = first_broken(found);
        if (broken == nullptr) {
            print_message(fmt::format("{}: note: read it with {} from now on", input.name(),
                                      address_options(input.result.facts)));
        }
    }
    if (broken != nullptr) {
        refuse_edit(input, *broken, faults);
    }
    if (!expected.are_those_of(*found.image)) {
        if (!faults.empty()) { // other words were ambiguous
            throw faults.front().refusal;
        }
        throw tool_error(exit_code::internal,
                         input.name() + ": the edit would change other words too, nothing was written");
    }
    input.result.image = std::move(found.image);
}

bool is_in_place(const arguments& given, const memory_input& input) {
    return !given.output || *given.output == input.path;
}

/// Edits the text of @p input and writes it.
/// @return false if the words are unchanged
bool write_edits(const arguments& given, memory_input& input, const std::vector<assignment>& assignments,
                 const std::vector<known_fault>& faults) {
    require_reasonable_size(input, assignments);
    const bool has_changed = apply(input, assignments, faults);
    verify(given, input, faults);
    const bool in_place = is_in_place(given, input);
    if (!in_place && !given.force) {
        require_no_lost_comments(*given.output, input.file.contents());
    }
    if (has_changed || !in_place || input.path == "-") {
        write_text(given.output.value_or(input.path), input.file.contents());
    }
    return has_changed;
}

/// @param summary "2 words set"
void report_edits(const arguments& given, const memory_input& input, const std::string& summary,
                  bool has_changed) {
    note_width(input);
    const bool in_place = is_in_place(given, input);
    const std::string target = in_place ? "" : " -> " + *given.output;
    print_message(fmt::format("{}{}: {}{}", input.name(), target, summary, has_changed ? "" : ", no change"));
    if (!in_place) {
        note_other_extension(*given.output, *input.options.as);
    }
}

} // namespace

void require_edits(const memory_input& input) {
    if (input.options.as->edit == nullptr) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}: {} cannot be edited in place; convert the file to MIF, edit that, "
                                     "and convert it back",
                                     input.name(), input.options.as->title));
    }
}

void refuse_sizes_said_twice(const arguments& given, const memory_input& input) {
    const kvrimage::format& as = *input.options.as;
    if ((!given.width && !given.depth) || !as.states_width || !as.states_depth) {
        return;
    }
    kvrimage::read_options alone = input.options;
    alone.width.reset();
    alone.depth.reset();
    if (kvrimage::parse(input.file.contents(), alone).image) {
        usage_error(fmt::format("{} has no effect on {}, which states its own width and depth",
                                given.width ? "--width" : "--depth", as.title));
    }
}

void edit_file(const arguments& given, const edit_kind& kind) {
    require_assignments(given);
    require_replaceable(given, given.files[0]);
    memory_input input = read_for_edit(given);
    const std::vector<known_fault> faults = known_faults(given, input);
    const planned_edits edits = plan_edits(given, kind, input);
    const bool has_changed = write_edits(given, input, edits.assignments, faults);
    note_suspect_ones(given, input);
    report_edits(given, input, kind.summarize(edits.addresses), has_changed);
}

void store_words(const arguments& given, memory_input& input, std::uint64_t first,
                 const std::vector<kvrimage::word>& words) {
    const bool has_changed = write_edits(given, input, {{{first, first + words.size() - 1}, words}}, {});
    report_edits(given, input, counted(words.size(), "word") + " set", has_changed);
}

} // namespace kvrmem
