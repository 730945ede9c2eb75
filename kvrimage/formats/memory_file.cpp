#include "kvrimage/formats/memory_file.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/edit/edited_text.h"
#include "kvrimage/exchange/string_sink.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/choices.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/format_choice.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/formats/unset_words.h"
#include "kvrimage/formats/writable.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace kvrimage {

namespace {

read_result of_no_format(std::string_view contents) {
    diagnostic_list list;
    list.add(foreign_content(contents).value_or(diagnose::unknown_format({})));
    read_result result;
    result.diagnostics = list.finish(contents);
    return result;
}

bool is_broken(const read_result& result) {
    return std::ranges::any_of(result.diagnostics, [](const diagnostic& found) {
        return about(found.id).level == diagnostic_class::broken;
    });
}

/// Replaces the faults of a file of another format by one message.
void note_other_format(const format& as, const format& surely, read_result& result) {
    if (is_broken(result)) {
        result.diagnostics = {diagnose::other_format(places(), surely.title, as.title, surely.id)};
        result.facts.diagnostics_left_out = 0;
    } else {
        result.diagnostics.push_back(
            diagnose::read_as_other_format(places(), surely.title, as.title, surely.id));
    }
}

/// "mif or rif"
std::string joined_by_or(std::span<const format* const> all, std::string_view before,
                         std::string_view format::*what) {
    std::string text;
    for (const format* each : all) {
        text += text.empty() ? "" : " or ";
        text += before;
        text += each->*what;
    }
    return text;
}

read_result of_several_formats(const format_choice& choice) {
    const std::span<const format* const> all = choice.among;
    read_result result;
    result.diagnostics = {diagnose::ambiguous_format(places(), all.front()->title,
                                                     joined_by_or(all.subspan(1), "", &format::title))};
    result.diagnostics.front().hint = joined_by_or(all, "--from ", &format::id);
    return result;
}

/// @param choice its result is moved from
read_result read_as(format_choice& choice, std::string_view contents, const read_options& options) {
    if (!choice.among.empty()) {
        return of_several_formats(choice);
    }
    if (choice.as == nullptr) {
        return of_no_format(contents);
    }
    if (choice.as->read == nullptr) {
        throw std::invalid_argument(fmt::format("{} cannot be read", choice.as->title));
    }
    if (auto improper = improper_choice(options.choices, *choice.as, &format::read_choices)) {
        read_result refused;
        refused.facts.as = choice.as;
        refused.diagnostics = {std::move(*improper)};
        return refused;
    }
    read_result result = choice.result ? std::move(*choice.result) : choice.as->read(contents, options);
    choice.result.reset();
    result.facts.as = choice.as;
    result.facts.how_sure = choice.how_sure;
    if (choice.surely != nullptr) {
        note_other_format(*choice.as, *choice.surely, result);
    }
    return result;
}

/// Returns the requested consumers of the file's format.
std::vector<consumer> consumers_of(const read_result& result, const check_options& options) {
    std::vector<consumer> asked;
    std::ranges::copy_if(
        result.facts.as->consumers, std::back_inserter(asked), [&options](const consumer& each) {
            return std::ranges::find(options.consumers, each.name) != options.consumers.end();
        });
    return asked;
}

/// Returns how the first consumer that changes unset words treats them.
std::string consequence_of_gaps(std::span<const consumer> consumers) {
    const auto found =
        std::ranges::find_if(consumers, [](const consumer& each) { return !each.unset_words.empty(); });
    return found != consumers.end() ? fmt::format("{} {}", found->title, found->unset_words) : "";
}

void add_what_consumers_make_of_broken(read_result& result, std::string_view contents,
                                       const check_options& options) {
    const std::size_t own = result.diagnostics.size();
    for (const consumer& each : consumers_of(result, options)) {
        if (each.takes_broken) {
            std::ranges::move(each.check(contents, options.read, result),
                              std::back_inserter(result.diagnostics));
        }
    }
    if (result.diagnostics.size() != own) {
        sort_by_place(result.diagnostics);
    }
}

read_result check_as(format_choice& choice, std::string_view contents, const check_options& options) {
    read_result result = read_as(choice, contents, options.read);
    if (is_broken(result)) {
        if (result.facts.as != nullptr && choice.surely == nullptr) {
            add_what_consumers_make_of_broken(result, contents, options);
        }
        return result;
    }
    std::erase_if(result.diagnostics, [&options](const diagnostic& found) {
        return !found.consumer.empty() &&
               std::ranges::find(options.consumers, found.consumer) == options.consumers.end();
    });
    const std::vector<consumer> consumers = consumers_of(result, options);
    for (const consumer& each : consumers) {
        std::ranges::move(each.check(contents, options.read, result), std::back_inserter(result.diagnostics));
    }
    if (auto unset = find_unset_words(result, consequence_of_gaps(consumers))) {
        result.diagnostics.push_back(*std::move(unset));
    }
    sort_by_place(result.diagnostics);
    return result;
}

/// Makes all repairs that can be made at once. Returns false if there is none.
bool repair_once(format_choice& choice, const check_options& options, repaired& file) {
    read_result found = check_as(choice, file.contents, options);
    std::vector<bool> taken;
    const std::vector<text_edit> edits = fixes_at_once(found.diagnostics, taken);
    file.contents = with_edits(std::move(file.contents), edits);
    for (std::size_t i = 0; i < taken.size(); ++i) {
        if (taken[i]) {
            file.repairs.push_back(std::move(found.diagnostics[i]));
        }
    }
    return !edits.empty();
}

/// Returns @p options with the format and name of @p path, if they are missing.
write_options with_format(write_options options, const std::string& path) {
    if (options.as == nullptr) {
        options.as = format_of_path(path);
    }
    if (options.as == nullptr) {
        throw std::invalid_argument(fmt::format("the format for {} is unknown", path));
    }
    if (options.file_name.empty()) {
        options.file_name = path;
    }
    return options;
}

void require_writable(const memory_image& image, const write_options& options) {
    const std::vector<diagnostic> obstacles = can_write(image, options);
    if (!obstacles.empty()) {
        throw std::invalid_argument(obstacles.front().message);
    }
}

} // namespace

read_result read(const std::filesystem::path& file, const read_options& options) {
    const std::string path = platform::text_of(file);
    read_options of_file = options;
    of_file.file_name = of_file.file_name.empty() ? path : of_file.file_name;
    const input_file input(path, {},
                           [&of_file](std::string_view bytes) { return may_have_any_lines(bytes, of_file); });
    of_file.keeper = input.keeper();
    return parse(input.contents(), of_file);
}

read_result parse(std::string_view contents, const read_options& options) {
    format_choice choice = choose_format(contents, options);
    return read_as(choice, contents, options);
}

read_result check(std::string_view contents, const check_options& options) {
    format_choice choice = choose_format(contents, options.read);
    return check_as(choice, contents, options);
}

repaired repair(std::string contents, const check_options& options) {
    // A repair can reveal the next one. The limit only guards against a bug of ours.
    constexpr int most_rounds = 1000;
    format_choice choice = choose_format(contents, options.read);
    choice.result.reset(); // it does not have all repairs
    if (choice.as == nullptr || choice.as->read == nullptr) {
        throw std::invalid_argument(choice.as == nullptr
                                        ? "no format was given, and the contents fit none"
                                        : fmt::format("{} cannot be read", choice.as->title));
    }
    check_options last = options;
    last.read.keeper.reset(); // the contents change
    check_options with_repairs = last;
    with_repairs.read.wants_repairs = true;
    repaired file{std::move(contents), {}, {}};
    for (int round = 0; round < most_rounds && repair_once(choice, with_repairs, file); ++round) {
    }
    file.left = check_as(choice, file.contents, last);
    return file;
}

std::vector<diagnostic> can_write(const memory_image& image, const write_options& options) {
    if (options.as == nullptr) {
        throw std::invalid_argument("no format was given");
    }
    if (options.as->write == nullptr) {
        throw std::invalid_argument(fmt::format("{} cannot be written", options.as->title));
    }
    if (auto improper = improper_choice(options.choices, *options.as, &format::write_choices)) {
        return {std::move(*improper)};
    }
    std::vector<diagnostic> found = general_obstacles(image, options);
    if (options.as->can_write != nullptr) {
        std::ranges::move(options.as->can_write(image, options), std::back_inserter(found));
    }
    return found;
}

void write(const memory_image& image, const std::filesystem::path& file, const write_options& options) {
    const write_options chosen = with_format(options, platform::text_of(file));
    require_writable(image, chosen);
    replacement_file output(platform::text_of(file));
    chosen.as->write(image, chosen, output);
    output.commit();
}

void write_contents(std::string_view contents, const std::filesystem::path& file) {
    replacement_file output(platform::text_of(file));
    output.write(contents);
    output.commit();
}

std::string to_text(const memory_image& image, const write_options& options) {
    require_writable(image, options);
    string_sink output;
    if (options.as->written_size != nullptr) {
        output.text.reserve(options.as->written_size(image, options));
    }
    options.as->write(image, options, output);
    return std::move(output.text);
}

} // namespace kvrimage
