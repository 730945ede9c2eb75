#include "tests/kvrimage/contract/contract.h"

#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/contract/library_reading.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

constexpr std::uint64_t most_bits_written = std::uint64_t{1} << 20U;

std::string shown(const diagnostic& found) {
    return std::string(about(found.id).code) + " at " + std::to_string(found.where.line) + ":" +
           std::to_string(found.where.column) + ": " + found.message;
}

/// The diagnostics in @p all that parse() reports, too.
std::vector<std::string> shown_of(const std::vector<diagnostic>& all, diagnostic_class level) {
    std::vector<std::string> texts;
    for (const diagnostic& found : all) {
        // Only check() looks for missing words; reading does not report them.
        if (about(found.id).level == level && found.id != diagnostic_id::gap &&
            found.id != diagnostic_id::no_words) {
            texts.push_back(shown(found) + " / " + found.hint);
        }
    }
    return texts;
}

[[maybe_unused]] const bool asked_before_any_test = !formats_of_the_library().empty();

bool has(const std::vector<diagnostic>& all, diagnostic_class level) {
    return std::ranges::any_of(all,
                               [level](const diagnostic& found) { return about(found.id).level == level; });
}

/// True if the library reads the text differently, but possibly with the same words: an ignored statement can
/// repeat the present words, and the digits can be the same in a wrong radix.
bool may_make_no_difference(diagnostic_id id) {
    constexpr std::array harmless = {diagnostic_id::shared_line,        diagnostic_id::lone_semicolon,
                                     diagnostic_id::after_semicolon,    diagnostic_id::set_again,
                                     diagnostic_id::before_end,         diagnostic_id::after_comment,
                                     diagnostic_id::comment_of_lines,   diagnostic_id::lone_carriage_return,
                                     diagnostic_id::rif_byte_order_mark};
    return std::ranges::find(harmless, id) != harmless.end();
}

/// The comments without trailing blanks.
std::vector<std::string> comments_of(std::string_view contents, const read_options& options) {
    std::vector<std::string> comments;
    if (options.as->find_comments != nullptr) {
        options.as->find_comments(contents, [&](const span& where) {
            const std::string_view text = where.in(contents);
            comments.emplace_back(text.substr(0, text.find_last_not_of(" \t\r\f\v") + 1));
        });
    }
    return comments;
}

class promise_keeper {
public:
    promise_keeper(std::string_view file, const read_options& read_with)
        : contents(file),
          options(read_with),
          read_one(parse(contents, options)),
          checked(check(contents, {options, {"kvr"}})) {}

    std::vector<std::string> look() {
        compare_read_and_check();
        look_at_places();
        compare_with_library();
        look_at_repairs();
        look_at_layout();
        write_and_read();
        return broken;
    }

private:
    void say(std::string what) { broken.push_back(std::move(what)); }

    void compare_read_and_check() {
        for (const diagnostic_class level : {diagnostic_class::broken, diagnostic_class::suspect}) {
            const std::vector<std::string> in_read = shown_of(read_one.diagnostics, level);
            const std::vector<std::string> in_check = shown_of(checked.diagnostics, level);
            if (in_read != in_check) {
                say("parse() reports " + std::to_string(in_read.size()) + ", check() " +
                    std::to_string(in_check.size()) + (in_read.empty() ? "" : "; read: " + in_read.front()) +
                    (in_check.empty() ? "" : "; check: " + in_check.front()));
            }
        }
        const bool is_broken = has(read_one.diagnostics, diagnostic_class::broken);
        if (read_one.image.has_value() == is_broken) {
            say(is_broken ? "a broken file has an image" : "a file that is not broken has no image");
        }
    }

    void look_at_places() {
        for (const diagnostic& found : checked.diagnostics) {
            look_at_place(found, found.where);
            std::ranges::for_each(found.more, [&](const place& where) { look_at_place(found, where); });
            if (found.message.empty()) {
                say("a diagnostic has no message: " + shown(found));
            }
            look_at_fix(found);
        }
    }

    void look_at_place(const diagnostic& found, const place& where) {
        if (where == place{}) {
            return;
        }
        // The place of text that is missing at the end of the file is the end.
        if (where.offset > contents.size() || where.length > contents.size() + 1 - where.offset) {
            say("a place lies beyond the end: " + shown(found));
            return;
        }
        const std::string_view before = contents.substr(0, where.offset);
        const auto line = static_cast<std::uint64_t>(std::ranges::count(before, '\n')) + 1;
        const std::uint64_t column = before.size() - (before.rfind('\n') + 1) + 1;
        if (where.line != line || where.column != column) {
            say("line and column are not those of the offset: " + shown(found));
        }
    }

    void look_at_fix(const diagnostic& found) {
        std::uint64_t end = 0;
        for (const text_edit& each : found.fix) {
            if (each.offset < end || each.offset + each.length > contents.size()) {
                say("edits overlap or lie beyond the end: " + shown(found));
            }
            end = each.offset + each.length;
        }
        if (!found.fix.empty() && found.repair.empty()) {
            say("a repair has no description: " + shown(found));
        }
    }

    void compare_with_library() {
        if (!checked.image || options.base.value_or(0) != 0) { // the library has no base
            return;
        }
        const std::string other =
            how_the_library_differs(contents, *options.as, *checked.image, options, checked.facts.data_radix);
        const auto found = std::ranges::find_if(checked.diagnostics, [](const diagnostic& each) {
            return about(each.id).level == diagnostic_class::consumer && !may_make_no_difference(each.id);
        });
        if (found != checked.diagnostics.end() && other.empty()) {
            say("the library reads the file alike, against " + shown(*found));
        } else if (!has(checked.diagnostics, diagnostic_class::consumer) && !other.empty()) {
            say("no diagnostic says that the library differs: " + other);
        }
    }

    void look_at_repairs() {
        if (std::ranges::none_of(checked.diagnostics,
                                 [](const diagnostic& each) { return !each.fix.empty(); })) {
            return;
        }
        const repaired done = repair(std::string(contents), {options, {"kvr"}});
        if (done.repairs.empty()) {
            say("there are fixes and no repairs");
        }
        for (const diagnostic& left : done.left.diagnostics) {
            if (!left.fix.empty()) {
                say("a repair was left out: " + shown(left));
            }
        }
        if (checked.image && !done.left.image) {
            say("a file that could be read cannot be read after its repair");
        } else if (checked.image && !(*checked.image == *done.left.image)) {
            say("a repair changed the words of a file that could be read");
        }
    }

    void look_at_layout() {
        if (!read_one.image || options.as->lay_out == nullptr) {
            return;
        }
        const std::string text = options.as->lay_out(contents, options, read_one);
        const read_result again = check(text, {options, {"kvr"}});
        if (!again.image) {
            say("the layout cannot be read: " + shown(again.diagnostics.front()) + "\n" + text);
            return;
        }
        if (!(*again.image == *read_one.image)) {
            say("the layout has other words:\n" + text);
        }
        if (comments_of(text, options) != comments_of(contents, options)) {
            say("the layout has other comments:\n" + text);
        }
        if (options.as->lay_out(text, options, again) != text) {
            say("the layout changes again:\n" + text + "\nto\n" + options.as->lay_out(text, options, again));
        }
        for (const diagnostic& found : again.diagnostics) {
            const auto is_known = [&found](const diagnostic& old) { return old.id == found.id; };
            if (about(found.id).level != diagnostic_class::suspect &&
                std::ranges::none_of(checked.diagnostics, is_known)) {
                say("the layout has a new fault: " + shown(found));
            }
        }
    }

    void write_and_read() {
        if (!read_one.image || read_one.image->count_set() * read_one.image->width() > most_bits_written) {
            return;
        }
        for (const format* target : formats_of_the_library()) {
            write_options to;
            to.as = target;
            if (target->counts == address_unit::byte) {
                to.order = options.order.value_or(byte_order::big);
            }
            if (target->read == nullptr || target->write == nullptr ||
                !can_write(*read_one.image, to).empty()) {
                continue;
            }
            read_options back;
            back.as = target;
            back.width = read_one.image->width();
            back.depth = read_one.image->depth();
            back.order = to.order;
            if (target->counts == address_unit::either) {
                back.unit = address_unit::word;
            }
            const read_result again = parse(to_text(*read_one.image, to), back);
            if (!again.image) {
                say("what was written as " + std::string(target->title) + " cannot be read: " +
                    (again.diagnostics.empty() ? "" : shown(again.diagnostics.front())));
            } else if (!(*again.image == *read_one.image)) {
                say("what was written as " + std::string(target->title) + " reads as other words");
            }
        }
    }

    std::string_view contents;
    const read_options& options;
    read_result read_one;
    read_result checked;
    std::vector<std::string> broken;
};

} // namespace

const std::vector<const kvrimage::format*>& formats_of_the_library() {
    static const std::vector<const format*> all(formats().begin(), formats().end());
    return all;
}

std::vector<std::string> broken_promises(std::string_view contents, const read_options& options) {
    return promise_keeper(contents, options).look();
}

} // namespace kvrimage_tests
