#include "kvrimage/formats/logisim/logisim_reader.h"

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/logisim/logisim_parser.h"
#include "kvrimage/formats/logisim/logisim_search.h"
#include "kvrimage/formats/word_digits.h"
#include "kvrimage/formats/word_list.h"

#include <fmt/format.h>

#include <utility>

namespace kvrimage {

namespace {

/// No memory has more.
constexpr std::uint64_t highest_logisim_address = ~std::uint64_t{0} >> 1U;

class logisim_reading final : public logisim_sink {
public:
    logisim_reading(std::string_view contents, const read_options& given)
        : text(contents),
          options(given),
          list(given.most_diagnostics, given.wants_repairs),
          words(contents, given, radix::hex),
          bytes(contents.size() / 2 + 1) {}

    read_result read() {
        logisim_parser(text, *this).parse();
        report();
        if (variant != nullptr && variant->bytes) {
            finish_bytes();
        } else if (variant != nullptr) {
            words.finish(list, result);
        }
        result.diagnostics = list.finish(text);
        result.facts.diagnostics_left_out = list.left_out();
        return std::move(result);
    }

    void take(const logisim_piece& piece) override {
        switch (piece.what) {
        case logisim_piece::kind::header:
            read_header(piece.where);
            break;
        case logisim_piece::kind::comment:
            result.facts.has_comments = true;
            break;
        case logisim_piece::kind::address:
            break;
        case logisim_piece::kind::word:
            read_word(piece);
            break;
        case logisim_piece::kind::bad_run:
            bad_runs.add(piece.where);
            note_unreadable(piece);
            break;
        default: // logisim_piece::kind::bad_address
            bad_addresses.add(piece.where);
            break;
        }
    }

private:
    void read_header(const span& line) {
        variant = logisim_variant_of(line.in(text));
        if (variant == nullptr) {
            list.add(diagnose::logisim_header(line, line.in(text)));
        } else {
            result.facts.more.push_back({"variant", std::string(variant->line)});
        }
    }

    void read_word(const logisim_piece& piece) {
        if (piece.address && piece.last_address() > highest_logisim_address) {
            beyond_all.add(piece.where);
        } else if (variant->bytes) {
            read_byte(piece);
        } else if (piece.address) {
            words.add_unchecked({*piece.address, piece.last_address()}, piece.digits, piece.where);
        }
    }
    void read_byte(const logisim_piece& piece) {
        const std::string_view digits = piece.digits.in(text);
        if (find_bad_digit(digits, radix::hex) != std::string_view::npos) {
            bad_bytes.add(piece.digits);
        } else if (piece.digits.length != piece.where.length) {
            bad_runs.add(piece.where);
        } else if (digits.size() > 2) {
            long_bytes.add(piece.where);
        } else if (piece.address) {
            unsigned value = 0;
            for (const char digit : digits) {
                value = value * 16 + kvr::digit_value(digit);
            }
            *bytes.room_for(*piece.address, 1) = static_cast<char>(value);
        }
    }
    void note_unreadable(const logisim_piece& piece) {
        if (!variant->bytes && piece.address) {
            words.add_unreadable(*piece.address, piece.where);
        }
    }

    void finish_bytes() {
        if (bytes.empty() && !options.depth) {
            if (!list.has_broken()) {
                list.add(diagnose::size_unknown({}));
            }
            return;
        }
        read_options of_bytes = options;
        of_bytes.order = options.order ? options.order : variant->bytes;
        make_words_of_bytes(
            bytes, of_bytes,
            [this](std::uint64_t address) { return find_in_logisim(text, address).value_or(span()); }, list,
            result);
        result.facts.unit = address_unit::byte;
        if (list.has_broken() && !options.keep_going) {
            result.image.reset();
        }
    }

    void report() {
        if (!bad_addresses.empty()) {
            list.add(diagnose::logisim_address(bad_addresses, bad_addresses.front().in(text)));
        }
        if (!bad_runs.empty()) {
            list.add(diagnose::logisim_run(
                bad_runs, bad_runs.front().in(text),
                variant->bytes ? "bytes have no runs: write each of them"
                               : "write a decimal count of at least 1, '*' and the word: 16*00"));
        }
        if (!long_bytes.empty()) {
            list.add(diagnose::logisim_byte(long_bytes, long_bytes.front().in(text),
                                            variant->is_addressed ? "addressed" : "plain"));
        }
        if (!beyond_all.empty()) {
            list.add(diagnose::address_outside(beyond_all, "of this word",
                                               fmt::format("{:X}", highest_logisim_address)));
        }
        if (!bad_bytes.empty()) {
            list.add(describe_bad_digits(text, bad_bytes, radix::hex));
        }
    }

    std::string_view text;
    const read_options& options;
    diagnostic_list list;
    word_list words;
    byte_blocks bytes;
    read_result result;
    const logisim_variant* variant = nullptr;
    places bad_addresses;
    places bad_runs;
    places bad_bytes;
    places long_bytes;
    places beyond_all;
};

} // namespace

read_result read_logisim(std::string_view contents, const read_options& options) {
    return logisim_reading(contents, options).read();
}

} // namespace kvrimage
