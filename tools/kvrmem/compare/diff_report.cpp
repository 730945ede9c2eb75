#include "tools/kvrmem/compare/diff_report.h"

#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <string>

namespace kvrmem {

namespace {

using kvrimage::address_range;
using kvrimage::difference;
using kvrimage::word;

std::string text_of(const address_range& range) {
    return range.first == range.last ? fmt::format("0x{:X}", range.first)
                                     : fmt::format("0x{:X}..0x{:X}", range.first, range.last);
}

/// The first of @p ranges.
std::string listed(const std::vector<address_range>& ranges) {
    constexpr std::size_t most = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(ranges.size(), most); ++i) {
        text += (i == 0 ? "" : ", ") + text_of(ranges[i]);
    }
    return ranges.size() > most ? text + ", ..." : text;
}

std::uint64_t count_words(const std::vector<address_range>& ranges) {
    return std::accumulate(
        ranges.begin(), ranges.end(), std::uint64_t{0},
        [](std::uint64_t sum, const address_range& range) { return sum + (range.last - range.first + 1); });
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
        output.write(fmt::format("{:<{}} {} -> {}\n", text_of(found.addresses), place_size,
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
            return fmt::format("the {}words are the same\n", is_partial ? "other " : "");
        }
        return fmt::format("{} {} in {}\n", counted(words, "word"), words == 1 ? "differs" : "differ",
                           counted(ranges, "range"));
    }
    void print_head() {
        if (!head_printed) {
            head_printed = true;
            output.write(paint.paint(style::bold, head("---", left)) + "\n");
            output.write(paint.paint(style::bold, head("+++", right)) + "\n");
        }
    }
    static std::string head(std::string_view mark, const diff_side& side) {
        return fmt::format("{} {} ({}, {} x {})", mark, side.name, side.result.facts.as->title,
                           side.image().depth(), counted(side.image().width(), "bit"));
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
        output.write(fmt::format("{{\n  \"schema\": \"kvrmem-diff-1\",\n  \"left\": {},\n  \"right\": {},\n"
                                 "  \"differences\": [",
                                 json_text(described(left)), json_text(described(right))));
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
    static json_value described(const diff_side& side) {
        json_value document;
        document["file"] = json_name(side.path);
        document["format"] = side.result.facts.as->title;
        document["width"] = side.image().width();
        document["depth"] = side.image().depth();
        return document;
    }
    [[nodiscard]] json_value shown(const std::optional<word>& value) const {
        return value ? json_value(shown_or_gap(value, radix)) : json_value(nullptr);
    }

    word_radix radix;
    output_stream output;
    bool is_first = true;
};

} // namespace

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
