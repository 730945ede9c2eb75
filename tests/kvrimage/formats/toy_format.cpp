#include "tests/kvrimage/formats/toy_format.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/kvr_reading.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/image_words.h"

#include <memory>

namespace {

using namespace kvrimage;

constexpr std::string_view toy_extensions[] = {"toy"};
constexpr std::string_view toy_digits = "0123456789ABCDEF";
constexpr std::string_view toy_head = "toy 8\n";

certainty sniff_toy(std::string_view head) {
    return head.starts_with(toy_head) ? certainty::certain : certainty::no;
}

/// Calls @p take with the offset and the text of each line after the head.
template <class Take>
void for_each_toy_line(std::string_view contents, Take&& take) {
    for (std::size_t begin = contents.find('\n') + 1; begin != 0 && begin < contents.size();) {
        const std::size_t end = std::min(contents.find('\n', begin), contents.size());
        take(begin, contents.substr(begin, end - begin));
        begin = end + 1;
    }
}

bool is_toy_word(std::string_view line) {
    return line.size() >= 4 && toy_digits.find(line[0]) != std::string_view::npos && line[1] == ' ';
}

read_result read_toy(std::string_view contents, const read_options& options) {
    diagnostic_list list(options.most_diagnostics, options.wants_repairs);
    auto words = std::make_unique<image_words>(16);
    if (!contents.starts_with(toy_head)) {
        list.add(diagnose::bad_digit(span{0, 1}, "?", "head", "toy"));
    }
    for_each_toy_line(contents, [&](std::size_t begin, std::string_view line) {
        if (!is_toy_word(line)) {
            list.add(diagnose::bad_digit(span{begin, line.size()}, "?", line, "toy"));
            return;
        }
        words->set(toy_digits.find(line[0]), line.substr(2, 2));
        for (std::size_t mark = 4; mark < line.size(); ++mark) {
            diagnostic found = diagnose::kvr_refuses(span{begin + mark, 1}, "a mark");
            found.repair = "mark removed";
            found.fix = {{begin + mark, 1, ""}};
            list.add(std::move(found));
            break; // one at a time: the next one is reported when this one is repaired
        }
    });
    read_result result;
    if (!list.has_broken() || options.keep_going) {
        result.image.emplace(8, std::move(words));
    }
    result.facts.data_radix = radix::hex;
    result.diagnostics = list.finish(contents);
    return result;
}

/// Reads all values as 00 if the file contains "zero".
std::vector<diagnostic> check_toy(std::string_view contents, const read_options& options,
                                  const read_result& ours) {
    kvr_reading theirs;
    theirs.words.resize(16, "");
    for (std::uint32_t address = 0; address < 16; ++address) {
        const bool is_zero = contents.find(" 66") != std::string_view::npos;
        theirs.words.set(address, is_zero ? "00" : ours.image->words()[address]);
    }
    return compare_with_kvr(toy_format(), contents, options, ours, theirs);
}

std::optional<place> find_toy_word(std::string_view contents, const read_options& /*options*/,
                                   std::uint64_t address) {
    std::optional<place> found;
    for_each_toy_line(contents, [&](std::size_t begin, std::string_view line) {
        if (is_toy_word(line) && toy_digits.find(line[0]) == address) {
            found = place{0, 0, begin, line.size()};
        }
    });
    return found;
}

std::vector<diagnostic> can_write_toy(const memory_image& image, const write_options& /*options*/) {
    return image.width() == 8
               ? std::vector<diagnostic>()
               : std::vector{diagnose::too_wide(places(), "0", image.width(), 8, "--width", image.width())};
}

void write_toy(const memory_image& image, const write_options& /*options*/, text_sink& output) {
    output.write(toy_head);
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        if (const std::string_view word = image.words()[address]; !word.empty()) {
            output.write(std::string{toy_digits[address], ' '} + std::string(word) + "\n");
        }
    }
}

std::uint64_t written_size_of_toy(const memory_image& image, const write_options& /*options*/) {
    return toy_head.size() + image.depth() * 5;
}

} // namespace

const format& toy_format() {
    static const consumer consumers[] = {{"kvr", "the library kvr", check_toy, "holds 0 there"}};
    static const format made = {.id = "toy",
                                .title = "Toy",
                                .extensions = toy_extensions,
                                .states_width = true,
                                .sniff = sniff_toy,
                                .read = read_toy,
                                .find_word = find_toy_word,
                                .can_write = can_write_toy,
                                .write = write_toy,
                                .written_size = written_size_of_toy,
                                .consumers = consumers};
    static const bool is_added = [] {
        add_format(made);
        return true;
    }();
    static_cast<void>(is_added);
    return made;
}
