#include "tests/kvrimage/formats/list_format.h"

#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/contract/contract.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

std::string line_of(const diagnostic& found) {
    return fmt::format("{} {}:{}+{}: {}{}{}", about(found.id).code, found.where.line, found.where.column,
                       found.where.length, found.message, found.hint.empty() ? "" : " / ", found.hint);
}

word random_list_word(std::mt19937& random, std::uint32_t width) {
    std::string bits(width, '0');
    std::ranges::generate(bits, [&random] { return "01"[random() % 2]; });
    return word::parse(bits, radix::bin, width).value.value();
}

} // namespace

read_result read_as(const format& as, std::string_view contents, read_options options) {
    options.as = &as;
    return parse(contents, options);
}

std::string words_of(const memory_image& image) {
    std::string text;
    for (const run& each : image.runs()) {
        for (std::uint64_t address = each.addresses.first; address <= each.addresses.last; ++address) {
            text += text.empty() ? "" : " ";
            text += each.value ? each.value->to_text(radix::hex).value_or("?") : "-";
        }
    }
    return text;
}

std::string words_read(const format& as, std::string_view contents, const read_options& options) {
    const read_result result = read_as(as, contents, options);
    if (result.image) {
        return words_of(*result.image);
    }
    const auto broken = std::ranges::find_if(result.diagnostics, [](const diagnostic& found) {
        return about(found.id).level == diagnostic_class::broken;
    });
    return broken != result.diagnostics.end() ? line_of(*broken) : "no image";
}

std::vector<std::string> found_in(const format& as, std::string_view contents, const read_options& options) {
    std::vector<std::string> lines;
    std::ranges::transform(read_as(as, contents, options).diagnostics, std::back_inserter(lines), line_of);
    return lines;
}

std::string repaired_as(const format& as, const std::string& contents) {
    check_options options;
    options.read.as = &as;
    return repair(contents, options).contents;
}

memory_image random_words(std::mt19937& random, std::uint32_t width, bool with_gaps) {
    memory_image image(width, 20 + random() % 60);
    if (!with_gaps) {
        image.fill_unset(random_list_word(random, width));
    }
    for (int change = 0; change < 20; ++change) {
        const std::uint64_t first = random() % image.depth();
        const std::uint64_t last = std::min(first + (change % 5 == 0 ? random() % 9 : 0), image.depth() - 1);
        image.fill({first, last}, std::vector{random_list_word(random, width)});
    }
    return image;
}

void expect_round_trips(const write_options& to, bool with_gaps, const read_options& from) {
    std::mt19937 random(5);
    for (std::uint32_t width = 1; width <= 300; width += 1 + width / 20) {
        const memory_image image = random_words(random, width, with_gaps);
        ASSERT_TRUE(can_write(image, to).empty()) << can_write(image, to).front().message;
        read_options options = from;
        options.width = to.as->states_width ? std::nullopt : std::optional(width);
        options.depth = to.as->states_depth ? std::nullopt : std::optional(image.depth());
        const std::string text = to_text(image, to);
        const read_result again = read_as(*to.as, text, options);
        ASSERT_TRUE(again.image) << again.diagnostics.front().message << "\n" << text;
        ASSERT_EQ(words_of(*again.image), words_of(image)) << text;
        ASSERT_EQ(again.image->width(), width);
    }
}

void expect_promises_kept(const format& as, const std::string& contents, const read_options& options) {
    static constexpr std::string_view likely = "0Fx;:,=#-*.\"\n \xFF";
    read_options with = options;
    with.as = &as;
    for (std::size_t at = 0; at <= contents.size(); ++at) {
        for (const std::string& broken : broken_promises(contents.substr(0, at), with)) {
            ADD_FAILURE() << broken << "\nin the first " << at << " bytes of\n" << contents;
        }
        for (const char character : likely) {
            std::string changed = contents;
            changed.replace(at, at < contents.size() ? 1 : 0, 1, character);
            for (const std::string& broken : broken_promises(changed, with)) {
                ADD_FAILURE() << broken << "\nin\n" << changed;
            }
        }
    }
}

void expect_close_size(const write_options& to, bool with_gaps) {
    std::mt19937 random(6);
    for (const std::uint32_t width : {1U, 8U, 33U, 64U}) {
        const memory_image image = random_words(random, width, with_gaps);
        const auto written = static_cast<double>(to_text(image, to).size());
        const auto estimated = static_cast<double>(to.as->written_size(image, to));
        EXPECT_GE(estimated, written);
        EXPECT_LE(estimated, written * 1.2 + 8) << width;
    }
}

} // namespace kvrimage_tests
