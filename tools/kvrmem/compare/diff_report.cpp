#include "tools/kvrmem/compare/diff_report.h"

#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <string>

namespace kvrmem {

namespace {

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
            output.write(summary());
        }
        output.finish();
    }

private:
    [[nodiscard]] std::string summary() const {
        if (words == 0) {
            return "the words are the same\n";
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
        return fmt::format("{} {} ({}, {} x {})", mark, side.name, format_title(side.image.format),
                           side.image.depth, counted(side.image.width, "bit"));
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
    painter paint;
    output_stream output;
    bool head_printed = false;
    std::uint64_t ranges = 0;
    std::uint64_t words = 0;
};

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
        json_value entry;
        entry["first"] = found.first;
        entry["last"] = found.last;
        entry["left"] = shown(left, found.left);
        entry["right"] = shown(right, found.right);
        output.write(fmt::format("{}\n    {}", is_first ? "" : ",", json_text(entry)));
        is_first = false;
    }
    void finish(bool equal) override {
        output.write(fmt::format("{}],\n  \"equal\": {}\n}}\n", is_first ? "" : "\n  ", equal));
        output.finish();
    }

private:
    static json_value described(const diff_side& side) {
        json_value document;
        document["file"] = json_name(side.path);
        document["format"] = format_title(side.image.format);
        document["width"] = side.image.width;
        document["depth"] = side.image.depth;
        return document;
    }
    [[nodiscard]] json_value shown(const diff_side& side, std::string_view word) const {
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
