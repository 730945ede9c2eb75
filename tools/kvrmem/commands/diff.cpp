#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/united_ranges.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/compare/diff_report.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_range;

constexpr std::size_t git_operands = 7;

/// Calls @p report with the parts of @p found that both files say for certain.
template <class Report>
void take_certain_parts(const kvrimage::difference& found, const diff_side& left, const diff_side& right,
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

/// Addresses that one of the two does not say for certain.
std::vector<address_range> unreadable_in(const diff_side& left, const diff_side& right) {
    std::vector<address_range> all = left.result.unreadable;
    all.insert(all.end(), right.result.unreadable.begin(), right.result.unreadable.end());
    return kvrimage::united(std::move(all));
}

/// fine: the two memories are the same, in their words, and how many there are of which width. bad_input:
/// they are as far as they can be compared.
exit_code compare(const diff_side& left, const diff_side& right, diff_report& report) {
    const std::vector<address_range> unreadable = unreadable_in(left, right);
    bool differ = left.image().width() != right.image().width() ||
                  left.image().depth() != right.image().depth() ||
                  left.image().base() != right.image().base();
    kvrimage::for_each_difference(left.image(), right.image(), [&](const kvrimage::difference& found) {
        take_certain_parts(found, left, right, [&](const kvrimage::difference& certain) {
            differ = true;
            report.take(certain);
        });
    });
    report.finish(!differ && unreadable.empty(), unreadable);
    return differ ? exit_code::negative : unreadable.empty() ? exit_code::fine : exit_code::bad_input;
}

std::unique_ptr<diff_report> report_as_asked(const arguments& given, const diff_side& left,
                                             const diff_side& right) {
    const word_radix radix = given.radix.value_or(word_radix{});
    require_fitting(radix, left.image().width());
    require_fitting(radix, right.image().width());
    return given.quiet  ? make_quiet_report()
           : given.json ? make_json_report(left, right, radix)
                        : make_text_report(left, right, radix, painter_for(stdout, given.color));
}

exit_code compare_as_asked(const arguments& given, const diff_side& left, const diff_side& right) {
    return compare(left, right, *report_as_asked(given, left, right));
}

/// --from is for a name that does not tell its format.
diff_side read_side(const arguments& given, const std::string& path) {
    arguments of_side = given;
    of_side.from = kvrimage::format_of_path(path) != nullptr ? nullptr : given.from;
    memory_input input = read_memory(of_side, path);
    return {input.name(), path, std::move(input.result)};
}

/// What git calls a file that is not there is a memory of the other one's form without a word.
kvrimage::read_result empty_like(const kvrimage::read_result& other) {
    const kvrimage::memory_image& image = *other.image;
    return {kvrimage::memory_image(image.width(), image.depth(), image.base()), other.facts, {}, {}};
}

void name_side(diff_side& side, const std::string& path) {
    side.name = kvrimage::title_of_input(path);
    side.path = path;
}

/// What git gives a diff driver: path old-file old-hex old-mode new-file new-hex new-mode, and two more for a
/// file that was renamed.
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

/// git takes an exit code other than 0 for a crash and shows nothing of the files after this one.
exit_code be_a_diff_driver(const arguments& given) {
    const std::size_t count = given.files.size();
    if (count == 1) {
        print(fmt::format("* unmerged path {}\n", kvrimage::title_of_input(given.files[0])));
        return exit_code::fine;
    }
    if (count != git_operands && count != git_operands + 2) {
        throw tool_error(exit_code::wrong_usage,
                         "diff --git is for git, which gives a diff driver seven operands");
    }
    try {
        compare_for_git(given);
    } catch (const tool_error& error) {
        if (error.code() != exit_code::bad_input) {
            throw;
        }
        print(fmt::format("* {} cannot be compared: {}\n", kvrimage::title_of_input(given.files[0]),
                          error.message()));
    }
    return exit_code::fine;
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

constexpr std::array diff_options = {
    option_id::from, option_id::width, option_id::depth,       option_id::unit,       option_id::order,
    option_id::base, option_id::pad,   option_id::read_choice, option_id::keep_going, option_id::radix,
    option_id::json, option_id::quiet, option_id::git};

} // namespace

const command diff_command = {
    "diff",
    "A B",
    "Compare two memories word by word, whatever their formats and radixes.",
    "  $ kvrmem diff sine.mif sine.hex\n"
    "  $ kvrmem diff --quiet old.mif new.mif && echo same\n"
    "  $ kvrmem diff --json old.mif new.mif\n"
    "  $ git config diff.memory.command 'kvrmem diff --git'\n",
    "Each line is a range of addresses with the word of A and the word of B; a\n"
    "word that is not set is 'unset', which is not equal to 0. --from is for a\n"
    "name that does not tell its format. The exit code is\n"
    "0 when the memories are the same in words, width and depth, 1 when they differ,\n"
    "and 2 when no difference was found, but words are in doubt (--keep-going).\n",
    1,
    9,
    diff_options,
    diff};

} // namespace kvrmem
