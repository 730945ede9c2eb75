#include "tools/kvrmem/compare/diff_figures.h"

#include "kvrimage/compare/difference_figures.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_range;
using kvrimage::difference_figures;

/// Neighboring bits, lowest first, that differ in the same number of words.
struct bit_figures {
    address_range bits;
    std::uint64_t words;
};

/// Returns the bits that differ in at least one word.
std::vector<bit_figures> differing_bits(const std::vector<std::uint64_t>& words_by_bit) {
    std::vector<bit_figures> all;
    for (std::size_t bit = 0; bit < words_by_bit.size(); ++bit) {
        const bool goes_on =
            !all.empty() && all.back().bits.last + 1 == bit && all.back().words == words_by_bit[bit];
        if (goes_on) {
            all.back().bits.last = bit;
        } else if (words_by_bit[bit] != 0) {
            all.push_back({{bit, bit}, words_by_bit[bit]});
        }
    }
    return all;
}

class figures_report : public diff_report {
public:
    figures_report(const diff_side& left_side, const diff_side& right_side)
        : one(left_side),
          other(right_side),
          counter(left_side.image(), right_side.image()) {}

    void take(const kvrimage::difference& found) override { counter.take(found); }

protected:
    [[nodiscard]] const difference_figures& figures() const noexcept { return counter.figures(); }
    [[nodiscard]] const diff_side& left() const noexcept { return one; }
    [[nodiscard]] const diff_side& right() const noexcept { return other; }

private:
    const diff_side& one;
    const diff_side& other;
    kvrimage::difference_counter counter;
};

class text_figures : public figures_report {
public:
    text_figures(const diff_side& left_side, const diff_side& right_side, diff_figures shown,
                 const painter& colors)
        : figures_report(left_side, right_side),
          what(shown),
          paint(colors) {}

    void finish(bool equal, const std::vector<address_range>& unreadable) override {
        if (what == diff_figures::summary) {
            print(fmt::format("{}, {}: {}\n", left().name, right().name, summary(equal, unreadable)));
        } else if (!equal || !unreadable.empty()) {
            print(diff_heads(left(), right(), paint) + blocks() + bits() + summary(equal, unreadable) + "\n");
        }
    }

private:
    /// Returns "7 words differ in 3 ranges, 91 bits; 2 only in a.mif".
    [[nodiscard]] std::string summary(bool equal, const std::vector<address_range>& unreadable) const {
        const difference_figures& found = figures();
        std::string text = found.words == 0
                               ? std::string(equal ? "the same" : "the words are the same")
                               : fmt::format("{} {} in {}, {}", counted(found.words, "word"),
                                             found.words == 1 ? "differs" : "differ",
                                             counted(found.ranges, "range"), counted(found.bits, "bit"));
        const auto add_only = [&text](std::uint64_t words, const diff_side& side) {
            text += words == 0 ? "" : fmt::format("; {} only in {}", counted(words, "word"), side.name);
        };
        add_only(found.left_only, left());
        add_only(found.right_only, right());
        if (form_of(left()) != form_of(right())) {
            text += fmt::format("; {} and {}", form_of(left()), form_of(right()));
        }
        return unreadable.empty() ? text
                                  : fmt::format("{}; {} in doubt, not compared", text,
                                                counted(count_words(unreadable), "word"));
    }
    [[nodiscard]] std::string blocks() const {
        std::uint64_t most = 0;
        for (const kvrimage::block_figures& block : figures().blocks) {
            most = std::max(most, block.words);
        }
        std::string text = most == 0 ? "" : line("addresses", "words", "bits", "");
        for (const kvrimage::block_figures& block : figures().blocks) {
            text += line(shown_range(block.addresses), fmt::format("{}", block.words),
                         fmt::format("{}", block.bits), bar(block.words, most));
        }
        return text;
    }
    [[nodiscard]] std::string bits() const {
        const std::vector<bit_figures> all = differing_bits(figures().words_by_bit);
        std::string text = all.empty() ? "" : line("bits", "words", "", "");
        for (const bit_figures& each : all) {
            const std::string place = each.bits.first == each.bits.last
                                          ? fmt::format("{}", each.bits.first)
                                          : fmt::format("{}..{}", each.bits.first, each.bits.last);
            text += line(place, fmt::format("{}", each.words), "", "");
        }
        return text;
    }
    static std::string line(std::string_view place, std::string_view words, std::string_view bits,
                            std::string_view bar) {
        std::string text = fmt::format("{:<24} {:>12} {:>12} {}", place, words, bits, bar);
        text.erase(text.find_last_not_of(' ') + 1);
        return text + "\n";
    }
    static std::string bar(std::uint64_t words, std::uint64_t most) {
        constexpr std::uint64_t longest_bar = 24;
        const std::uint64_t length = std::max(words * longest_bar / most, std::uint64_t{1});
        return fmt::format("{:+<{}}", "", length);
    }

    diff_figures what;
    painter paint;
};

class json_figures : public figures_report {
public:
    json_figures(const diff_side& left_side, const diff_side& right_side, diff_figures shown)
        : figures_report(left_side, right_side),
          what(shown) {}

    void finish(bool equal, const std::vector<address_range>& unreadable) override {
        const difference_figures& found = figures();
        json_value document = {{"schema", diff_schema},
                               {"left", side_as_json(left())},
                               {"right", side_as_json(right())},
                               {"summary",
                                {{"words", found.words},
                                 {"ranges", found.ranges},
                                 {"bits", found.bits},
                                 {"left_only", found.left_only},
                                 {"right_only", found.right_only}}}};
        if (what == diff_figures::blocks) {
            document["stat"] = {{"blocks", blocks()}, {"bits", bits()}};
        }
        if (!unreadable.empty()) {
            document["unreadable"] = count_words(unreadable);
        }
        document["equal"] = equal;
        print_json(document);
    }

private:
    [[nodiscard]] json_value blocks() const {
        json_value all = json_value::array();
        for (const kvrimage::block_figures& block : figures().blocks) {
            all.push_back({{"first", block.addresses.first},
                           {"last", block.addresses.last},
                           {"words", block.words},
                           {"bits", block.bits}});
        }
        return all;
    }
    [[nodiscard]] json_value bits() const {
        json_value all = json_value::array();
        for (const bit_figures& each : differing_bits(figures().words_by_bit)) {
            all.push_back({{"first", each.bits.first}, {"last", each.bits.last}, {"words", each.words}});
        }
        return all;
    }

    diff_figures what;
};

} // namespace

std::unique_ptr<diff_report> make_figures_report(const diff_side& left, const diff_side& right,
                                                 diff_figures what, const painter& paint) {
    return std::make_unique<text_figures>(left, right, what, paint);
}

std::unique_ptr<diff_report> make_json_figures_report(const diff_side& left, const diff_side& right,
                                                      diff_figures what) {
    return std::make_unique<json_figures>(left, right, what);
}

} // namespace kvrmem
