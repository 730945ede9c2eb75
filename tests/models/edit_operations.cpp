#include "tests/models/edit_operations.h"

#include "kvrimage/formats/edit.h"
#include "kvrimage/formats/format_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/random_images.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace kvr_test {

namespace {

using kvrimage::address_range;
using kvrimage::assignment;
using kvrimage::diagnostic;
using kvrimage::edit_result;
using kvrimage::memory_image;
using kvrimage::read_options;
using kvrimage::read_result;

/// The largest number of words in the inverse edit.
constexpr std::uint64_t most_reversed = 400;

void expect_of_file(bool holds, std::string_view what, std::string_view contents) {
    if (!holds) {
        throw std::logic_error(fmt::format("{}:\n{}", what, contents));
    }
}

/// The same for an edit: the message contains the file before and after it.
void expect_of_edit(bool holds, std::string_view what, std::string_view contents, std::string_view edited) {
    expect_of_file(holds, what, holds ? "" : fmt::format("{}\n-- becomes --\n{}", contents, edited));
}

/// The comments without trailing blanks.
std::vector<std::string> comments_in(std::string_view contents, const kvrimage::format& as) {
    std::vector<std::string> comments;
    if (as.find_comments != nullptr) {
        as.find_comments(contents, [&](const kvrimage::span& where) {
            const std::string_view text = where.in(contents);
            comments.emplace_back(text.substr(0, text.find_last_not_of(" \t\r\f\v") + 1));
        });
    }
    return comments;
}

/// The options that read an edited file in the same way as @p before.
read_options options_as(const read_options& options, const read_result& before) {
    read_options again = options;
    again.as = before.facts.as;
    again.width = before.image->width();
    again.unit = before.facts.unit ? before.facts.unit : options.unit;
    again.order = before.facts.order ? before.facts.order : options.order;
    return again;
}

memory_image with_words(memory_image image, std::span<const assignment> assignments) {
    for (const assignment& each : assignments) {
        if (each.addresses.last > image.last_address()) {
            image.resize(each.addresses.last - image.base() + 1);
        }
        image.fill(each.addresses, each.words);
    }
    return image;
}

/// The assignments that restore the words of @p before after @p assignments.
std::vector<assignment> reverse_of(const memory_image& before, std::span<const assignment> assignments) {
    std::vector<assignment> reverse;
    for (const assignment& each : assignments) {
        const std::uint64_t last =
            std::min({each.addresses.last, before.last_address(), each.addresses.first + most_reversed});
        for (std::uint64_t address = each.addresses.first; address <= last; ++address) {
            if (const auto value = before[address]) {
                reverse.push_back({{address, address}, {*value}});
            }
        }
    }
    return reverse;
}

void expect_sound_edits(const edit_result& made, std::string_view contents) {
    std::uint64_t end = 0;
    for (const kvrimage::text_edit& each : made.edits) {
        expect_of_file(each.offset >= end && each.offset + each.length <= contents.size(),
                       "edits overlap or go beyond the end of the file", contents);
        end = each.offset + each.length;
    }
    for (const diagnostic& each : made.diagnostics) {
        expect_of_file(about(each.id).level == kvrimage::diagnostic_class::broken && made.edits.empty(),
                       "an edit that is refused has a diagnostic of another class, or edits", contents);
    }
}

/// True if the words, which are very wide, take too much memory for the size of the file: reading it again
/// fails.
bool is_too_large(const read_result& read) {
    return std::ranges::any_of(read.diagnostics, [](const diagnostic& found) {
        return found.id == kvrimage::diagnostic_id::too_large;
    });
}

} // namespace

std::optional<std::string> compare_edit(std::string_view contents, const read_options& options,
                                        std::span<const assignment> assignments) {
    const read_result before = parse(contents, options);
    const edit_result made = edit(contents, assignments, options);
    expect_sound_edits(made, contents);
    if (!made.diagnostics.empty()) {
        return std::nullopt;
    }
    expect_of_file(before.image.has_value(), "a broken file is edited", contents);
    const std::string edited = with_edits(std::string(contents), made.edits);
    const read_options again = options_as(options, before);
    const read_result after = parse(edited, again);
    if (is_too_large(after)) {
        return std::nullopt;
    }
    expect_of_edit(after.image.has_value(), "the edited file cannot be read", contents, edited);
    const memory_image expected = with_words(*before.image, assignments);
    expect_of_edit(*after.image == expected, "the edited file has other words", contents, edited);
    expect_of_edit(comments_in(edited, *again.as) == comments_in(contents, *again.as),
                   "the edited file has other comments", contents, edited);
    expect_of_edit(edit(edited, assignments, again).edits.empty(), "the same edit again changes something",
                   contents, edited);
    const std::vector<assignment> reverse = reverse_of(*before.image, assignments);
    const std::string reversed = with_edits(edited, edit(edited, reverse, again).edits);
    const read_result back = parse(reversed, again);
    expect_of_edit(back.image.has_value() && *back.image == with_words(expected, reverse),
                   "the reverse edit makes other words", edited, reversed);
    return edited;
}

std::optional<std::string> compare_layout(std::string_view contents, const read_options& options) {
    const read_result before = parse(contents, options);
    if (!before.image || before.facts.as->lay_out == nullptr) {
        return std::nullopt;
    }
    const kvrimage::format& as = *before.facts.as;
    const std::string layout = format_text(contents, options, before);
    const read_result after = parse(layout, options);
    expect_of_edit(after.image.has_value(), "the layout cannot be read", contents, layout);
    expect_of_edit(*after.image == *before.image, "the layout has other words", contents, layout);
    expect_of_edit(comments_in(layout, as) == comments_in(contents, as), "the layout has other comments",
                   contents, layout);
    const std::string twice = format_text(layout, options, after);
    expect_of_edit(twice == layout, "the layout changes again", layout, twice);
    return layout;
}

std::vector<assignment> any_assignments(choices& chosen, const memory_image& image) {
    constexpr std::uint64_t most_bits = 1U << 22U; // of a range
    const std::uint64_t near_addresses = std::clamp<std::uint64_t>(most_bits / image.width(), 8, 5000);
    memory_maker maker(chosen);
    std::vector<assignment> made;
    for (std::uint32_t count = chosen.between(1, 6); count > 0; --count) {
        const std::uint64_t reach = std::min(image.depth() + chosen.below(4), near_addresses);
        const std::uint64_t first = image.base() + maker.below(reach);
        const std::uint64_t last =
            first + (chosen.once_in(3) ? maker.below(image.base() + reach - first) : 0);
        assignment each = {{first, last}, {}};
        for (std::uint32_t words = chosen.once_in(3) ? 3 : 1; words > 0; --words) {
            const auto old = chosen.once_in(4) && first <= image.last_address() ? image[first] : std::nullopt;
            each.words.push_back(old ? *old
                                     : word_of_digits(maker.bits(image.width(), chosen.once_in(8) ? 9 : 0)));
        }
        made.push_back(std::move(each));
    }
    return made;
}

edit_operations::edit_operations(choices& source) : chosen(source), random(source.below(1U << 16U)) {
    static const std::vector<const kvrimage::format*> editable = [] {
        std::vector<const kvrimage::format*> found;
        std::ranges::copy_if(
            kvrimage::formats(), std::back_inserter(found),
            [](const kvrimage::format* each) { return each->edit != nullptr && each->write != nullptr; });
        return found;
    }();
    constexpr std::array<std::uint32_t, 7> widths = {1, 7, 8, 12, 16, 32, 65};
    const kvrimage::format& as = *chosen.one_of(editable);
    kvrimage_tests::file_form form;
    do {
        const memory_image image =
            kvrimage_tests::random_image(random, chosen.one_of(widths), chosen.once_in(5) ? 1500 : 40,
                                         {.gaps = as.holds_unset && chosen.once_in(2),
                                          .dont_care = as.holds_dont_care && chosen.once_in(3)});
        form = kvrimage_tests::random_form(random, as, image);
        contents = can_write(image, form.to).empty() ? to_text(image, form.to) : "";
    } while (contents.empty() || !parse(contents, form.back).image);
    options = form.back;
    if (chosen.once_in(2)) {
        read_from_base();
    }
}

/// Reads the file from a base if it has addresses and the words below a low address are not set.
void edit_operations::read_from_base() {
    read_options from_base = options;
    from_base.base = chosen.between(1, 5);
    if (parse(contents, from_base).image) {
        options = from_base;
    }
}

/// Inserts a comment after a line, if the format supports one of these forms.
void edit_operations::add_comment() {
    constexpr std::array<std::string_view, 6> ways = {"-- {}\n", "% {} %\n", "// {}\n",
                                                      "# {}\n",  "; {}\n",   "/* {} */\n"};
    const std::size_t line_end =
        contents.find('\n', chosen.below(static_cast<std::uint32_t>(contents.size())));
    std::string with_comment = contents;
    with_comment.insert(line_end == std::string::npos ? 0 : line_end + 1,
                        fmt::format(fmt::runtime(chosen.one_of(ways)), chosen.below(100)));
    const read_result before = parse(contents, options);
    const read_result after = parse(with_comment, options);
    const bool is_comment =
        after.image && *after.image == *before.image &&
        comments_in(with_comment, *options.as).size() == comments_in(contents, *options.as).size() + 1;
    if (is_comment) {
        contents = with_comment;
    }
}

void edit_operations::step() {
    if (chosen.once_in(4)) {
        add_comment();
    }
    if (chosen.once_in(6)) {
        contents = compare_layout(contents, options).value_or(contents);
        return;
    }
    const read_result read = parse(contents, options);
    const auto edited = compare_edit(contents, options, any_assignments(chosen, *read.image));
    if (edited && parse(*edited, options).image) { // the file can be read without more options
        contents = *edited;
    }
}

} // namespace kvr_test
