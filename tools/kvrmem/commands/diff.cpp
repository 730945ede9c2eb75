#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace kvrmem {

namespace {

constexpr std::size_t git_operands = 7;

/// One of the two memories.
struct diff_side {
    std::string name;
    memory_image image;
};

/// Neighbouring addresses that all hold @p left in one memory and @p right, another value, in the other. ""
/// is a word that was never set.
struct difference {
    std::uint64_t first;
    std::uint64_t last;
    std::string_view left;
    std::string_view right;
};

kvr::word_run run_in(const memory_image& image, std::uint64_t address) {
    if (address < image.words.size()) {
        return image.words.run_at(static_cast<std::uint32_t>(address));
    }
    return {static_cast<std::uint32_t>(address), std::numeric_limits<std::uint32_t>::max(), ""};
}

std::string value_of(std::string_view word, std::uint32_t width) {
    std::string bits;
    show_word(word, RADIX_BIN, width, bits);
    return bits.erase(0, std::min(bits.find_first_not_of('0'), bits.size() - 1));
}

/// Words of different widths are the same when their values are; nothing is the same as a word never set
/// but another one.
bool same_word(const diff_side& left, std::string_view left_word, const diff_side& right,
               std::string_view right_word) {
    if (left.image.width == right.image.width || left_word.empty() || right_word.empty()) {
        return left_word == right_word;
    }
    return value_of(left_word, left.image.width) == value_of(right_word, right.image.width);
}

/// Calls @p take with every difference, in the order of addresses.
template <class Take>
void for_each_difference(const diff_side& left, const diff_side& right, Take&& take) {
    const std::uint64_t end = std::max(left.image.words.size(), right.image.words.size());
    for (std::uint64_t address = 0; address < end;) {
        const kvr::word_run left_run = run_in(left.image, address);
        const kvr::word_run right_run = run_in(right.image, address);
        const std::uint64_t last =
            std::min({std::uint64_t{left_run.last}, std::uint64_t{right_run.last}, end - 1});
        if (!same_word(left, left_run.text, right, right_run.text)) {
            take(difference{address, last, left_run.text, right_run.text});
        }
        address = last + 1;
    }
}

/// What a run of the command prints.
class diff_report {
public:
    virtual ~diff_report() = default;
    diff_report() = default;
    diff_report(const diff_report&) = delete;
    diff_report& operator=(const diff_report&) = delete;
    virtual void take(const difference& found) = 0;
    virtual void finish(bool equal) = 0;
};

class quiet_report : public diff_report {
public:
    void take(const difference& /*found*/) override {}
    void finish(bool /*equal*/) override {}
};

class text_report : public diff_report {
public:
    text_report(const diff_side& left_side, const diff_side& right_side, const word_radix& shown_radix,
                const painter& colors)
        : left(left_side),
          right(right_side),
          radix(shown_radix),
          paint(colors) {}

    void take(const difference& found) override {
        print_head();
        ++ranges;
        words += found.last - found.first + 1;
        const std::string place = found.first == found.last
                                      ? fmt::format("0x{:X}", found.first)
                                      : fmt::format("0x{:X}..0x{:X}", found.first, found.last);
        output.write(fmt::format("{:<{}} {} -> {}\n", place, place_size,
                                 paint.paint(style::red, shown(left, found.left)),
                                 paint.paint(style::green, shown(right, found.right))));
    }
    void finish(bool equal) override {
        if (!equal) {
            print_head();
            output.write(words == 0 ? "the words are the same\n"
                                    : fmt::format("{} {} in {} {}\n", words,
                                                  words == 1 ? "word differs" : "words differ", ranges,
                                                  ranges == 1 ? "range" : "ranges"));
        }
        output.finish();
    }

private:
    void print_head() {
        if (!head_printed) {
            head_printed = true;
            output.write(paint.paint(style::bold, head("---", left)) + "\n");
            output.write(paint.paint(style::bold, head("+++", right)) + "\n");
        }
    }
    static std::string head(std::string_view mark, const diff_side& side) {
        return fmt::format("{} {} ({}, {} x {} bits)", mark, side.name, format_title(side.image.format),
                           side.image.depth, side.image.width);
    }
    [[nodiscard]] std::string shown(const diff_side& side, std::string_view word) const {
        std::string text;
        show_word_or_gap(word, radix, side.image.width, text);
        return text;
    }

    static constexpr int place_size = 16;
    const diff_side& left;
    const diff_side& right;
    word_radix radix;
    const painter& paint;
    output_stream output;
    bool head_printed = false;
    std::uint64_t ranges = 0;
    std::uint64_t words = 0;
};

/// Differences are written as they are found: there may be more of them than memory.
class json_report : public diff_report {
public:
    json_report(const diff_side& left_side, const diff_side& right_side, const word_radix& shown_radix)
        : left(left_side),
          right(right_side),
          radix(shown_radix) {
        output.write(fmt::format("{{\n  \"schema\": \"kvrmem-diff-1\",\n  \"left\": {},\n  \"right\": {},\n"
                                 "  \"differences\": [",
                                 json_text(described(left)), json_text(described(right))));
    }

    void take(const difference& found) override {
        const json entry = {{"first", found.first},
                            {"last", found.last},
                            {"left", shown(left, found.left)},
                            {"right", shown(right, found.right)}};
        output.write(fmt::format("{}\n    {}", is_first ? "" : ",", json_text(entry)));
        is_first = false;
    }
    void finish(bool equal) override {
        output.write(fmt::format("{}],\n  \"equal\": {}\n}}\n", is_first ? "" : "\n  ", equal));
        output.finish();
    }

private:
    static json described(const diff_side& side) {
        return {{"file", side.name},
                {"format", format_title(side.image.format)},
                {"width", side.image.width},
                {"depth", side.image.depth}};
    }
    [[nodiscard]] json shown(const diff_side& side, std::string_view word) const {
        if (word.empty()) {
            return nullptr;
        }
        std::string text;
        show_word_or_gap(word, radix, side.image.width, text);
        return text;
    }

    const diff_side& left;
    const diff_side& right;
    word_radix radix;
    output_stream output;
    bool is_first = true;
};

/// True when the two memories are the same: their words, and how many there are of which width.
bool compare(const diff_side& left, const diff_side& right, diff_report& report) {
    bool equal = left.image.width == right.image.width && left.image.depth == right.image.depth;
    for_each_difference(left, right, [&equal, &report](const difference& found) {
        equal = false;
        report.take(found);
    });
    report.finish(equal);
    return equal;
}

bool compare_as_asked(const arguments& given, const diff_side& left, const diff_side& right) {
    const word_radix radix = given.radix.value_or(word_radix{RADIX_HEX});
    require_fitting(radix, left.image.width);
    require_fitting(radix, right.image.width);
    if (given.quiet) {
        quiet_report report;
        return compare(left, right, report);
    }
    if (given.json) {
        json_report report(left, right, radix);
        return compare(left, right, report);
    }
    const painter paint = painter_for(stdout, given.color);
    text_report report(left, right, radix, paint);
    return compare(left, right, report);
}

diff_side read_side(const arguments& given, const std::string& path) {
    const input_file file(path);
    const KVR_FILE_TYPES format =
        format_of_path(path) ? *format_of_path(path) : format_for(given.from, path, "--from");
    return {file.name(), read_memory(file, {format, given.width, given.depth})};
}

/// What git calls a file that is not there is a memory of the other one's form without a word.
memory_image empty_like(const memory_image& other) {
    memory_image image;
    image.format = other.format;
    image.width = other.width;
    image.depth = other.depth;
    image.words.resize(image.depth, "");
    return image;
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
    right.image = is_gone ? empty_like(left.image) : read_side(given, files[4]).image;
    if (is_new) {
        left.image = empty_like(right.image);
    }
    left.name = is_new ? files[1] : "a/" + title_of_file(files[0]);
    right.name = is_gone ? files[4] : "b/" + title_of_file(files.size() > git_operands ? files[7] : files[0]);
    compare_as_asked(given, left, right);
}

/// git takes an exit code other than 0 for a crash and shows nothing of the files behind this one.
exit_code be_a_diff_driver(const arguments& given) {
    const std::size_t count = given.files.size();
    if (count == 1) {
        print(fmt::format("* unmerged path {}\n", title_of_file(given.files[0])));
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
        print(fmt::format("* {} cannot be compared: {}\n", title_of_file(given.files[0]), error.what()));
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
    return compare_as_asked(given, left, right) ? exit_code::fine : exit_code::negative;
}

constexpr std::array options = {option_id::from, option_id::width, option_id::depth, option_id::radix,
                                option_id::json, option_id::quiet, option_id::git};

} // namespace

const command diff_command = {"diff",
                              "A B",
                              "Compare two memories word by word, whatever their formats and radixes.",
                              "  $ kvrmem diff sine.mif sine.hex\n"
                              "  $ kvrmem diff --quiet old.mif new.mif && echo same\n"
                              "  $ kvrmem diff --json old.mif new.mif\n"
                              "  $ git config diff.memory.command 'kvrmem diff --git'\n",
                              "Each line is a range of addresses with the word of A and the word of B; a\n"
                              "word that was never set is 'unset', which is not equal to 0. --from is for a\n"
                              "name that does not tell its format. The exit code is\n"
                              "0 when the memories are the same in words, width and depth, else 1.\n",
                              1,
                              9,
                              options,
                              diff};

} // namespace kvrmem
