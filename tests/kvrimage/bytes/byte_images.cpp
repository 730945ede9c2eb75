#include "tests/kvrimage/bytes/byte_images.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/rounds.h"

#include <algorithm>
#include <vector>

namespace kvrimage_tests {

using namespace kvrimage;

word random_plain_word(std::mt19937& random, std::uint32_t width) {
    std::string bits(width, '0');
    for (char& bit : bits) {
        bit = random() % 2 == 0 ? '0' : '1';
    }
    return *word::parse(bits, radix::bin, width).value;
}

memory_image random_byte_image(std::mt19937& random, std::uint32_t width, std::uint64_t depth) {
    memory_image image(width, depth);
    for (auto parts = 1 + random() % 6; parts > 0; --parts) {
        const std::uint64_t first = random() % depth;
        const std::uint64_t last = std::min<std::uint64_t>(depth - 1, first + random() % 40);
        if (random() % 2 == 0) {
            std::vector<word> words;
            for (auto count = 1 + random() % 3; count > 0; --count) {
                words.push_back(random_plain_word(random, width));
            }
            image.fill({first, last}, words);
        } else {
            for (std::uint64_t address = first; address <= last; ++address) {
                image.set(address, random_plain_word(random, width));
            }
        }
    }
    return image;
}

std::string set_words_of(const read_result& result) {
    if (!result.image) {
        return "none";
    }
    std::string text;
    for (const run& each : result.image->runs()) {
        for (std::uint64_t at = each.addresses.first; each.value && at <= each.addresses.last; ++at) {
            text += (text.empty() ? "" : " ") + std::to_string(at) + "=" +
                    each.value->to_text(radix::hex).value_or("?");
        }
    }
    return text;
}

std::string shown_report(const read_result& result) {
    std::string text;
    for (const diagnostic& found : result.diagnostics) {
        const diagnostic_class level = about(found.id).level;
        text += level == diagnostic_class::broken ? "broken " : "suspect ";
        text += std::string(about(found.id).code) + " " + std::to_string(found.where.line) + ":" +
                std::to_string(found.where.column) + "+" + std::to_string(found.where.length) + " x" +
                std::to_string(found.count) + "\n";
    }
    return text;
}

read_options bytes_as(std::uint32_t width, byte_order order) {
    read_options options;
    options.width = width;
    options.order = order;
    return options;
}

std::string fault_of_round_trips(const format& as, bool with_gaps) {
    std::mt19937 random(5);
    for (std::uint32_t width = 1; width <= 300; ++width) {
        memory_image image = random_byte_image(random, width, 300);
        if (!with_gaps) {
            image.fill_unset(random_plain_word(random, width));
        }
        write_options to;
        to.as = &as;
        to.order = width % 2 == 0 ? byte_order::little : byte_order::big;
        const std::vector<diagnostic> obstacles = can_write(image, to);
        if (!obstacles.empty()) {
            return "width " + std::to_string(width) + " cannot be written: " + obstacles.front().message;
        }
        const std::string text = to_text(image, to);
        read_options back = bytes_as(width, *to.order);
        back.as = &as;
        back.depth = image.depth();
        const read_result again = as.read(text, back);
        if (!again.image || !(*again.image == image)) {
            return "width " + std::to_string(width) + " reads as other words: " + shown_report(again);
        }
        const std::uint64_t predicted = as.written_size(image, to);
        if (predicted < text.size() || predicted > text.size() + 64) {
            return "width " + std::to_string(width) + " takes " + std::to_string(text.size()) +
                   " bytes instead of " + std::to_string(predicted);
        }
    }
    return "";
}

std::string fault_of_damaged(const format& as, const std::string& contents) {
    const auto fault = [&as](const std::string& text, bool keep_going) -> std::string {
        read_options options;
        options.as = &as;
        options.keep_going = keep_going;
        const read_result result = as.read(text, options);
        const bool is_broken = std::ranges::any_of(result.diagnostics, [](const diagnostic& found) {
            return about(found.id).level == diagnostic_class::broken;
        });
        const bool is_kept = keep_going || result.image.has_value() != is_broken;
        return is_kept ? "" : shown_report(result) + "for " + text.substr(0, 200);
    };
    std::string found;
    for (std::size_t size = 0; size <= contents.size(); ++size) {
        found += fault(contents.substr(0, size), false);
    }
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::string text = contents;
        for (auto left = 1 + random() % 3; left > 0; --left) {
            text[random() % text.size()] =
                random() % 2 == 0 ? static_cast<char>(random()) : contents[random() % contents.size()];
        }
        found += fault(text, random() % 2 == 0);
    }
    return found;
}

namespace {

/// Mostly contiguous records, some of them damaged.
std::string
random_records(std::mt19937& random,
               const std::function<std::string(std::uint64_t address, const std::string& data)>& record) {
    std::string text;
    std::uint64_t address = random() % 3 == 0 ? 0xFFB0 : random() % 0x300;
    std::size_t length = 1 + random() % 40;
    for (auto left = 1 + random() % 12; left > 0; --left) {
        length = random() % 5 == 0 ? random() % 40 : length;
        address = (random() % 7 == 0 ? random() % 0x10000 : address) % 0x10000;
        std::string data(length, '\0');
        std::ranges::generate(data, [&random] { return static_cast<char>(random()); });
        std::string line = record(address, data);
        if (random() % 12 == 0) {
            line[random() % line.size()] = "0Gs:S \r"[random() % 7];
        }
        text += line + (random() % 9 == 0 ? "\r\n" : "\n");
        address += length;
    }
    return text;
}

} // namespace

std::string fault_of_fast_records(
    const format& as,
    const std::function<std::string(std::uint64_t address, const std::string& data)>& record,
    const std::string& end) {
    std::mt19937 random(11);
    for (int round = 0; round < rounds(400); ++round) {
        const std::string text = random_records(random, record) + end;
        std::string with_blanks;
        for (const char character : text) {
            with_blanks += character == '\n' ? " \n" : std::string(1, character);
        }
        read_options options;
        options.as = &as;
        options.keep_going = random() % 2 == 0;
        const read_result fast = as.read(text, options);
        const read_result parsed = as.read(with_blanks, options);
        const bool is_same = shown_report(fast) == shown_report(parsed) &&
                             set_words_of(fast) == set_words_of(parsed) &&
                             fast.unreadable == parsed.unreadable;
        if (!is_same) {
            return text + shown_report(fast) + set_words_of(fast) + "\n" + shown_report(parsed) +
                   set_words_of(parsed);
        }
    }
    return "";
}

} // namespace kvrimage_tests
