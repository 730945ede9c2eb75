#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/united_ranges.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/compare/diff_figures.h"
#include "tools/kvrmem/compare/diff_report.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_range;

constexpr std::size_t git_operands = 7;

/// Calls @p report with the parts of @p found that are readable in both files.
template <class Report>
void keep_certain_parts(const kvrimage::difference& found, const diff_side& left, const diff_side& right,
                        Report&& report) {
    const auto take = [&](const address_range& part, bool is_unreadable) {
        if (!is_unreadable) {
            report({part, found.left, found.right});
        }
    };
    for_each_part(found.addresses, left.result.unreadable,
                  [&](const address_range& part, bool is_unreadable) {
                      if (!is_unreadable) {
                          for_each_part(part, right.result.unreadable, take);
                      }
                  });
}

/// Returns the addresses to compare, in order: those that the user gives, or all.
std::vector<address_range> compared_addresses(const arguments& given, const diff_side& left,
                                              const diff_side& right) {
    const address_range all = {std::min(left.image().base(), right.image().base()),
                               std::max(left.image().last_address(), right.image().last_address())};
    for (const address_range& range : given.compared_ranges) {
        if (range.last < all.first || range.first > all.last) {
            usage_error(fmt::format("--range {}: the memories have the addresses {}", shown_range(range),
                                    shown_range(all)));
        }
    }
    std::vector<address_range> compared = kvrimage::ranges_without(
        given.compared_ranges.empty() ? std::vector{all} : given.compared_ranges, given.ignored_ranges);
    if (compared.empty()) {
        usage_error("--ignore leaves no address to compare");
    }
    return compared;
}

/// Returns the addresses of @p compared that are unreadable in either file.
std::vector<address_range> unreadable_in(const diff_side& left, const diff_side& right,
                                         const std::vector<address_range>& compared) {
    std::vector<address_range> all = left.result.unreadable;
    all.insert(all.end(), right.result.unreadable.begin(), right.result.unreadable.end());
    return kvrimage::ranges_without(all, kvrimage::ranges_without(all, compared));
}

/// Returns whether the word widths differ, or the addresses if all are compared.
bool have_other_forms(const arguments& given, const diff_side& left, const diff_side& right) {
    const bool are_all_compared = given.compared_ranges.empty() && given.ignored_ranges.empty();
    return left.image().width() != right.image().width() ||
           (are_all_compared && !difference_in_size(left, right).empty());
}

/// Returns success if the memories are equal in words, width and number of words; bad_input if they are equal
/// except for unreadable words.
exit_code compare(const arguments& given, const diff_side& left, const diff_side& right,
                  diff_report& report) {
    const std::vector<address_range> compared = compared_addresses(given, left, right);
    const std::vector<address_range> unreadable = unreadable_in(left, right, compared);
    bool differ = have_other_forms(given, left, right);
    const auto take = [&](const kvrimage::difference& found) {
        keep_certain_parts(found, left, right, [&](const kvrimage::difference& certain) {
            differ = true;
            report.take(certain);
        });
    };
    kvrimage::for_each_difference(left.image(), right.image(), compared, take);
    report.finish(!differ && unreadable.empty(), unreadable);
    return differ ? exit_code::negative : unreadable.empty() ? exit_code::success : exit_code::bad_input;
}

std::unique_ptr<diff_report> report_as_asked(const arguments& given, const diff_side& left,
                                             const diff_side& right) {
    if (given.summary || given.stat) {
        const diff_figures what = given.stat ? diff_figures::blocks : diff_figures::summary;
        return given.json ? make_json_figures_report(left, right, what)
                          : make_figures_report(left, right, what, painter_for(stdout, given.color));
    }
    const word_radix radix = given.radix.value_or(word_radix{});
    require_fitting(radix, left.image().width());
    require_fitting(radix, right.image().width());
    return given.quiet  ? make_quiet_report()
           : given.json ? make_json_report(left, right, radix)
                        : make_text_report(left, right, radix, painter_for(stdout, given.color));
}

exit_code compare_as_asked(const arguments& given, const diff_side& left, const diff_side& right) {
    return compare(given, left, right, *report_as_asked(given, left, right));
}

/// Rejects a file that is unreadable only because --address-unit, which applies to both files, fits the other
/// one.
/// @throws tool_error (bad input) with @p refusal and a remedy; returns if the unit is not the reason
void refuse_unit_of_other_file(const arguments& given, const std::string& path, const broken_file& refusal) {
    using kvrimage::address_unit;
    if (!given.unit) {
        return;
    }
    memory_input input = open_memory(given, path);
    const bool are_bytes = *given.unit == address_unit::byte;
    input.options.unit = are_bytes ? address_unit::word : address_unit::byte;
    input.options.order = are_bytes ? std::nullopt : given.order;
    const kvrimage::read_result other = kvrimage::parse(input.file.contents(), input.options);
    if (!other.image || other.facts.as->counts != address_unit::either) {
        return;
    }
    const std::string unit = are_bytes ? "word" : "byte";
    throw tool_error(
        exit_code::bad_input,
        fmt::format("{}; its addresses count {}s, but --address-unit applies to both files; convert it "
                    "first: kvrmem convert --width {} --address-unit {} {} {}",
                    refusal.message(), unit, other.image->width(), unit, shell_word(path),
                    shell_word(path + ".mif")));
}

diff_side read_side(const arguments& given, const std::string& path) {
    try {
        memory_input input = read_compared_memory(given, path);
        return {input.name(), path, std::move(input.result)};
    } catch (const broken_file& refusal) {
        refuse_unit_of_other_file(for_compared_file(given, path), path, refusal);
        throw;
    }
}

/// Returns a memory without words and with the size of @p other, for a file that git reports as missing.
kvrimage::read_result empty_like(const kvrimage::read_result& other) {
    const kvrimage::memory_image& image = *other.image;
    return {kvrimage::memory_image(image.width(), image.depth(), image.base()), other.facts, {}, {}};
}

void name_side(diff_side& side, const std::string& path) {
    side.name = kvrimage::title_of_input(path);
    side.path = path;
}

/// Arguments of a git diff driver: path old-file old-hex old-mode new-file new-hex new-mode, and two more for
/// a renamed file.
void compare_for_git(const arguments& given) {
    const std::vector<std::string>& files = given.files;
    const bool is_new = files[1] == "/dev/null";
    const bool is_gone = files[4] == "/dev/null";
    diff_side left;
    diff_side right;
    if (!is_new) {
        left = read_side(given, files[1]);
    }
    if (!is_gone) {
        right = read_side(given, files[4]);
    }
    name_side(left, is_new ? files[1] : "a/" + files[0]);
    name_side(right, is_gone ? files[4] : "b/" + (files.size() > git_operands ? files[7] : files[0]));
    if (is_new) {
        left.result = empty_like(right.result);
    }
    if (is_gone) {
        right.result = empty_like(left.result);
    }
    static_cast<void>(compare_as_asked(given, left, right));
}

/// git treats a nonzero exit code as a crash and skips the following files.
exit_code be_a_diff_driver(const arguments& given) {
    const std::size_t count = given.files.size();
    if (count == 1) {
        print(fmt::format("* unmerged path {}\n", kvrimage::title_of_input(given.files[0])));
        return exit_code::success;
    }
    if (count != git_operands && count != git_operands + 2) {
        throw tool_error(exit_code::wrong_usage,
                         "diff --git is for git, which gives a diff driver seven operands");
    }
    try {
        compare_for_git(given);
    } catch (const tool_error& error) {
        if (error.code() != exit_code::bad_input && error.code() != exit_code::wrong_usage) {
            throw;
        }
        print(fmt::format("* {} cannot be compared: {}\n", kvrimage::title_of_input(given.files[0]),
                          error.message()));
    }
    return exit_code::success;
}

exit_code diff(const arguments& given) {
    if (given.git) {
        return be_a_diff_driver(given);
    }
    if (given.files.size() != 2) {
        throw tool_error(exit_code::wrong_usage, "diff needs two files: kvrmem diff A B");
    }
    const diff_side left = read_side(given, given.files[0]);
    const diff_side right = read_side(given, given.files[1]);
    return compare_as_asked(given, left, right);
}

constexpr auto diff_options = united_options(
    reading_options,
    std::array{option_id::keep_going, option_id::radix, option_id::compared_ranges, option_id::ignored_ranges,
               option_id::summary, option_id::stat, option_id::json, option_id::quiet, option_id::git});

} // namespace

const command diff_command = {
    "diff",
    "A B",
    "Compare two memories word by word, whatever their formats and radixes.",
    "  $ kvrmem diff sine.mif sine.hex\n"
    "  $ kvrmem diff --quiet old.mif new.mif && echo same\n"
    "  $ kvrmem diff --json old.mif new.mif\n"
    "  $ kvrmem diff --ignore 0xFC..0xFF,0x200 --stat old.mif new.mif\n"
    "  $ git config diff.memory.command 'kvrmem diff --git'\n",
    "Each line is a range of addresses with the word of A and the word of B. A word that\n"
    "is not set is shown as 'unset', and is not equal to 0. --from applies to a file\n"
    "whose name does not determine its format. The exit code is 0 if the memories have\n"
    "the same words, width and depth, 1 if they differ, and 2 if there is no difference,\n"
    "but words are in doubt (--keep-going). With --range or --ignore, depths are not\n"
    "compared, but widths are.\n"
    "\n"
    "--summary prints one line, for scripts and logs. --stat counts the words and bits\n"
    "that differ, in up to 16 blocks of addresses and at each bit; only words that both\n"
    "memories have set count for bits.\n",
    1,
    9,
    diff_options,
    diff};

} // namespace kvrmem
