#include "tools/kvrmem/edit/edit_command.h"

#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/lost_comments.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::assignment;
using kvrimage::diagnostic;
using kvrimage::memory_image;

/// The words of a format without ranges are written one by one, in memory.
constexpr std::uint64_t most_single_words = std::uint64_t{1} << 24U;
constexpr std::uint64_t most_single_digits = std::uint64_t{1} << 29U;

/// What is broken in a file that is edited, and how it is refused: the edit may replace the very word at
/// fault.
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

/// Reads the file also where it is broken, as far as it can be read.
memory_input read_for_edit(const arguments& given) {
    memory_input input = open_memory(given, given.files[0]);
    input.options.keep_going = true;
    parse(input);
    if (!input.result.image) {
        throw refusal_of(given, input.path, input.file, input.result, *first_broken(input.result));
    }
    if (input.options.as->edit == nullptr) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}: {} cannot be edited in place; convert the file to MIF, edit that, "
                                     "and convert it back",
                                     input.name(), input.options.as->title));
    }
    return input;
}

edit_operand read_operand(const std::string& text, const char* example) {
    const std::size_t equals = text.find('=');
    const auto addresses = read_address_range(std::string_view(text).substr(0, equals));
    if (equals == std::string::npos || !addresses) {
        usage_error(fmt::format("'{}' is not of the form {}", text, example));
    }
    return {text, *addresses, text.substr(equals + 1)};
}

/// A file that does not say its depth gets deeper where an edit reaches beyond it.
void make_room(memory_input& input, std::uint64_t last) {
    memory_image& image = *input.result.image;
    const bool may_grow = !input.options.as->states_depth && !input.options.depth && last >= image.base() &&
                          last - image.base() < kvrimage::deepest_memory;
    if (may_grow && last > image.last_address()) {
        image.resize(last - image.base() + 1);
    }
}

std::vector<assignment> read_assignments(const arguments& given, const edit_kind& kind, memory_input& input) {
    std::vector<assignment> assignments;
    for (auto text = given.files.begin() + 1; text != given.files.end(); ++text) {
        const edit_operand operand = read_operand(*text, kind.example);
        make_room(input, operand.addresses.last);
        const std::string fault = range_fault(operand.addresses, input.image());
        if (!fault.empty()) {
            usage_error(fmt::format("{}: {}", operand.text, fault));
        }
        assignments.push_back(kind.make(operand, input.image().width()));
    }
    return assignments;
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

/// How the file was refused before the edit for the same reason as @p found; null when it was not.
const broken_file* known_refusal(const std::vector<known_fault>& faults, const diagnostic& found) {
    const auto known = std::ranges::find_if(faults, [&found](const known_fault& each) {
        return each.id == found.id && each.message == found.message;
    });
    return known != faults.end() ? &known->refusal : nullptr;
}

/// Makes the edits in the text of @p input and in its image.
/// @return false when the words are as they were already
bool apply(memory_input& input, const std::vector<assignment>& assignments,
           const std::vector<known_fault>& faults) {
    const kvrimage::edit_result edit =
        input.options.as->edit(input.file.contents(), input.result, assignments);
    if (!edit.diagnostics.empty()) {
        const diagnostic& first = edit.diagnostics.front();
        if (const broken_file* const refusal = known_refusal(faults, first)) {
            throw *refusal;
        }
        // What has no place in the file is wrong with the new words.
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

/// How the text of @p input is read after the edit: as every command would, but for what the file does not
/// say itself.
kvrimage::read_options options_for_verifying(const memory_input& input) {
    kvrimage::read_options options = input.options;
    options.keep_going = false;
    if (!options.as->states_width) {
        options.width = input.image().width();
    }
    if (!options.as->states_depth) {
        options.depth = input.image().depth();
    }
    return options;
}

/// @param faults that were in the file before the edit
[[noreturn]] void refuse_edit(const memory_input& input, const diagnostic& broken,
                              const std::vector<known_fault>& faults) {
    if (const broken_file* const refusal = known_refusal(faults, broken)) {
        throw *refusal;
    }
    if (!faults.empty()) { // in other words: a width that the file does not say may be another now
        throw faults.front().refusal;
    }
    throw tool_error(exit_code::internal,
                     fmt::format("{}: the edit would make the file unreadable, nothing was written: {}",
                                 input.name(), broken.message));
}

/// What says how the addresses of a file were taken.
std::string address_options(const kvrimage::file_facts& facts) {
    const bool has_bytes = facts.unit == kvrimage::address_unit::byte;
    std::string options = fmt::format("--address-unit {}", has_bytes ? "byte" : "word");
    if (has_bytes && facts.order) {
        options += facts.order == kvrimage::byte_order::little ? " --endian little" : " --endian big";
    }
    return options;
}

/// Reads the text of @p input, which was edited, and compares.
void verify(const memory_input& input, const std::vector<known_fault>& faults) {
    kvrimage::read_options options = options_for_verifying(input);
    kvrimage::read_result found = kvrimage::parse(input.file.contents(), options);
    const diagnostic* broken = first_broken(found);
    if (broken != nullptr && !options.unit && input.result.facts.unit) {
        // New words can leave open what the addresses count, which the old ones have said.
        options.unit = input.result.facts.unit;
        options.order = input.result.facts.order;
        found = kvrimage::parse(input.file.contents(), options);
        broken = first_broken(found);
        if (broken == nullptr) {
            tell(fmt::format("{}: note: from now on it has to be read with {}", input.name(),
                             address_options(input.result.facts)));
        }
    }
    if (broken != nullptr) {
        refuse_edit(input, *broken, faults);
    }
    if (found.image != input.image()) {
        if (!faults.empty()) { // words beside the new ones were in doubt
            throw faults.front().refusal;
        }
        throw tool_error(exit_code::internal,
                         input.name() + ": the edit would change other words too, nothing was written");
    }
}

} // namespace

void edit_file(const arguments& given, const edit_kind& kind) {
    memory_input input = read_for_edit(given);
    const std::vector<known_fault> faults = known_faults(given, input);
    const std::vector<assignment> assignments = read_assignments(given, kind, input);
    require_reasonable_size(input, assignments);
    const bool has_changed = apply(input, assignments, faults);
    verify(input, faults);

    const bool is_in_place = !given.output || *given.output == input.path;
    if (!is_in_place && !given.force) {
        require_no_lost_comments(*given.output, input.file.contents());
    }
    if (has_changed || !is_in_place || input.path == "-") {
        write_text(given.output.value_or(input.path), input.file.contents());
    }
    note_suspect_ones(given, input);
    note_width(input);
    const std::string target = is_in_place ? "" : " -> " + *given.output;
    tell(fmt::format("{}{}: {}{}", input.name(), target, kind.summarize(assignments),
                     has_changed ? "" : ", as they were already"));
    if (!is_in_place) {
        note_other_extension(*given.output, *input.options.as);
    }
}

} // namespace kvrmem
