#include "tools/kvrmem/compare/diff_report.h"

#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <string>

namespace kvrmem {

namespace {

using kvrimage::address_range;
using kvrimage::difference;
using kvrimage::word;

/// Returns the first of @p ranges.
std::string listed(const std::vector<address_range>& ranges) {
    constexpr std::size_t most = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(ranges.size(), most); ++i) {
        text += (i == 0 ? "" : ", ") + shown_range(ranges[i]);
    }
    return ranges.size() > most ? text + ", ..." : text;
}

class quiet_report : public diff_report {
public:
    void take(const difference& /*found*/) override {}
    void finish(bool /*equal*/, const std::vector<address_range>& /*unreadable*/) override {}
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
        words += found.addresses.last - found.addresses.first + 1;
        output.write(fmt::format("{:<{}} {} -> {}\n", shown_range(found.addresses), place_size,
                                 paint.paint(style::red, shown_or_gap(found.left, radix)),
                                 paint.paint(style::green, shown_or_gap(found.right, radix))));
    }
    void finish(bool equal, const std::vector<address_range>& unreadable) override {
        if (!equal) {
            print_head();
            output.write(summary(!unreadable.empty()));
        }
        if (!unreadable.empty()) {
            output.write(fmt::format("{} in doubt, not compared: {}\n",
                                     counted(count_words(unreadable), "word"), listed(unreadable)));
        }
        output.finish();
    }

private:
    [[nodiscard]] std::string summary(bool is_partial) const {
        if (words == 0) {
            const std::string sizes = difference_in_size(left, right);
            return fmt::format("the {}words are the same{}{}\n", is_partial ? "other " : "",
                               sizes.empty() ? "" : "; the memories differ in ", sizes);
        }
        return fmt::format("{} {} in {}\n", counted(words, "word"), words == 1 ? "differs" : "differ",
                           counted(ranges, "range"));
    }
    void print_head() {
        if (!head_printed) {
            head_printed = true;
            output.write(diff_heads(left, right, paint));
        }
    }
    static constexpr int place_size = 16;
    const diff_side& left;
    const diff_side& right;
    word_radix radix;
    painter paint;
    output_stream output;
    bool head_printed = false;
    std::uint64_t ranges = 0;
    std::uint64_t words = 0;
};

class json_report : public diff_report {
public:
    json_report(const diff_side& left, const diff_side& right, const word_radix& shown_radix)
        : radix(shown_radix) {
        output.write(fmt::format("{{\n  \"schema\": \"{}\",\n  \"left\": {},\n  \"right\": {},\n"
                                 "  \"differences\": [",
                                 diff_schema, json_text(side_as_json(left)), json_text(side_as_json(right))));
    }

    void take(const difference& found) override {
        json_value entry;
        entry["first"] = found.addresses.first;
        entry["last"] = found.addresses.last;
        entry["left"] = shown(found.left);
        entry["right"] = shown(found.right);
        output.write(fmt::format("{}\n    {}", is_first ? "" : ",", json_text(entry)));
        is_first = false;
    }
    void finish(bool equal, const std::vector<address_range>& unreadable) override {
        const std::string left_out =
            unreadable.empty() ? "" : fmt::format("  \"unreadable\": {},\n", count_words(unreadable));
        output.write(fmt::format("{}],\n{}  \"equal\": {}\n}}\n", is_first ? "" : "\n  ", left_out, equal));
        output.finish();
    }

private:
    [[nodiscard]] json_value shown(const std::optional<word>& value) const {
        return value ? json_value(shown_or_gap(value, radix)) : json_value(nullptr);
    }

    word_radix radix;
    output_stream output;
    bool is_first = true;
};

/// Returns "--- a.mif (MIF, 256 x 16 bits)".
std::string head(std::string_view mark, const diff_side& side) {
    return fmt::format("{} {} ({}, {})", mark, side.name, side.result.facts.as->title, form_of(side));
}

} // namespace

std::string difference_in_size(const diff_side& left, const diff_side& right) {
    const kvrimage::memory_image& one = left.image();
    const kvrimage::memory_image& other = right.image();
    if (one.width() != other.width()) {
        return fmt::format("width: {} and {} bits", one.width(), other.width());
    }
    if (one.base() != other.base()) {
        return fmt::format("their first address: 0x{:X} and 0x{:X}", one.base(), other.base());
    }
    if (one.depth() != other.depth() && left.result.facts.as->states_depth &&
        right.result.facts.as->states_depth) {
        return fmt::format("depth: {} and {} words", one.depth(), other.depth());
    }
    return "";
}

std::string form_of(const diff_side& side) {
    return fmt::format("{} x {}", side.image().depth(), counted(side.image().width(), "bit"));
}

std::string diff_heads(const diff_side& left, const diff_side& right, const painter& paint) {
    return paint.paint(style::bold, head("---", left)) + "\n" + paint.paint(style::bold, head("+++", right)) +
           "\n";
}

json_value side_as_json(const diff_side& side) {
    return {{"file", json_name(side.path)},
            {"format", side.result.facts.as->title},
            {"width", side.image().width()},
            {"depth", side.image().depth()}};
}

std::uint64_t count_words(const std::vector<address_range>& ranges) {
    return std::accumulate(
        ranges.begin(), ranges.end(), std::uint64_t{0},
        [](std::uint64_t sum, const address_range& range) { return sum + (range.last - range.first + 1); });
}

std::unique_ptr<diff_report> make_quiet_report() {
    return std::make_unique<quiet_report>();
}

std::unique_ptr<diff_report> make_text_report(const diff_side& left, const diff_side& right,
                                              const word_radix& radix, const painter& paint) {
    return std::make_unique<text_report>(left, right, radix, paint);
}

std::unique_ptr<diff_report> make_json_report(const diff_side& left, const diff_side& right,
                                              const word_radix& radix) {
    return std::make_unique<json_report>(left, right, radix);
}

} // namespace kvrmem
