#include "kvrimage/formats/memheader/memheader_reader.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/memheader/memheader_parser.h"
#include "kvrimage/formats/memheader/memheader_settings.h"
#include "kvrimage/formats/word_digits.h"
#include "kvrimage/formats/word_list.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace kvrimage {

namespace {

/// No memory has more.
constexpr std::uint64_t highest_memheader_address = ~std::uint64_t{0} >> 1U;

constexpr std::array memheader_radixes = {radix::bin, radix::oct, radix::uns, radix::hex};

/// The decimal number @p text, if it is one that @p setting may have.
std::optional<std::uint64_t> number_of(std::string_view text, const memheader_setting& setting) {
    if (text.empty() || find_bad_digit(text, radix::uns) != std::string_view::npos) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (const char digit : text) {
        value = value > setting.highest ? value : value * 10 + kvr::digit_value(digit);
    }
    if (value >= setting.lowest && value <= setting.highest) {
        return value;
    }
    return std::nullopt;
}

class memheader_reading final : public memheader_sink {
public:
    memheader_reading(std::string_view contents, const read_options& given)
        : text(contents),
          options(given),
          list(given.most_diagnostics, given.wants_repairs) {}

    read_result read() {
        memheader_parser(text, *this).parse();
        report();
        if (words) {
            words->finish(list, result);
        }
        result.diagnostics = list.finish(text);
        result.facts.diagnostics_left_out = list.left_out();
        return std::move(result);
    }

    void take(const memheader_piece& piece) override {
        switch (piece.what) {
        case memheader_piece::kind::setting:
            read_setting(piece);
            break;
        case memheader_piece::kind::data:
            begin_data();
            break;
        case memheader_piece::kind::address:
            break;
        case memheader_piece::kind::word:
            read_word(piece);
            break;
        case memheader_piece::kind::bad_address:
            bad_addresses.add(piece.where);
            break;
        case memheader_piece::kind::stray_word:
            stray_words.add(piece.where);
            break;
        default: // memheader_piece::kind::late_setting
            late_settings.add(piece.where);
            break;
        }
    }

private:
    struct seen_setting {
        bool is_there = false;
        span value;
        std::optional<std::uint64_t> number;
    };

    [[nodiscard]] const seen_setting& seen(memheader_setting_name of) const {
        return settings[static_cast<std::size_t>(of)];
    }

    void read_setting(const memheader_piece& piece) {
        const std::string_view name = piece.name.in(text);
        if (const memheader_setting* const setting = memheader_setting_of(name)) {
            set(*setting, piece);
        } else {
            list.add(diagnose::memheader_unknown(piece.where, name));
        }
    }
    void set(const memheader_setting& setting, const memheader_piece& piece) {
        const std::string_view value = piece.value.in(text);
        const bool is_layout = setting.is == memheader_setting_name::format;
        seen_setting& into = settings[static_cast<std::size_t>(setting.is)];
        if (into.is_there) {
            list.add(diagnose::memheader_again(piece.where, setting.name));
            return;
        }
        into = {true, piece.value, number_of(value, setting)};
        layout = is_layout ? memheader_layout_of(value) : layout;
        if (is_layout ? layout == nullptr : !into.number) {
            list.add(diagnose::memheader_setting(piece.where, setting.name, value, setting.values));
        }
    }

    void begin_data() {
        has_data = true;
        if (layout == nullptr) {
            return;
        }
        stated_sizes stated;
        stated.width_setting = "#Width";
        stated.depth = seen(memheader_setting_name::depth).number;
        if (const auto& width = seen(memheader_setting_name::width).number) {
            stated.width = static_cast<std::uint32_t>(*width);
        }
        words.emplace(text, options, layout->digits, stated);
        result.facts.data_radix = layout->digits;
        result.facts.address_radix = radix::hex;
    }

    void read_word(const memheader_piece& piece) {
        if (!words || !piece.address) {
            return;
        }
        if (*piece.address > highest_memheader_address) {
            beyond_all.add(piece.where);
        } else {
            words->add_unchecked({*piece.address, *piece.address}, piece.where, piece.where);
        }
    }

    void report() {
        report_missing();
        report_radix(memheader_setting_name::data_radix);
        if (layout != nullptr && layout->is_addressed) {
            report_radix(memheader_setting_name::address_radix);
        }
        if (!stray_words.empty()) {
            list.add(diagnose::memheader_stray(stray_words, stray_words.front().in(text), "before"));
        }
        if (!late_settings.empty()) {
            list.add(diagnose::memheader_stray(late_settings, late_settings.front().in(text), "after"));
        }
        if (!bad_addresses.empty()) {
            list.add(diagnose::memheader_address(bad_addresses, bad_addresses.front().in(text)));
        }
        if (!beyond_all.empty()) {
            list.add(diagnose::address_outside(beyond_all, "of this word",
                                               fmt::format("{:X}", highest_memheader_address)));
        }
    }
    void report_missing() {
        if (!seen(memheader_setting_name::format).is_there) {
            list.add(
                diagnose::memheader_missing({}, "Format", "write #Format=Hex if the words are hexadecimal"));
        }
        if (!seen(memheader_setting_name::depth).is_there && !options.depth) {
            list.add(diagnose::memheader_missing({}, "Depth", "write #Depth= and the number of words"));
        }
        if (!seen(memheader_setting_name::width).is_there && !options.width) {
            list.add(diagnose::memheader_missing({}, "Width", "write #Width= and the bits of a word"));
        }
        if (!has_data) {
            list.add(diagnose::memheader_missing({}, "Data", "write it before the words"));
        }
    }
    /// A radix that the digits do not have.
    void report_radix(memheader_setting_name of) {
        const seen_setting& setting = seen(of);
        if (layout == nullptr || !setting.number) {
            return;
        }
        const radix said = memheader_radixes[*setting.number];
        if (said != layout->digits) {
            list.add(diagnose::memheader_radix(setting.value, memheader_setting_of(of).name,
                                               setting.value.in(text), adjective_of(said), layout->name,
                                               adjective_of(layout->digits)));
        }
    }

    std::string_view text;
    const read_options& options;
    diagnostic_list list;
    read_result result;
    std::optional<word_list> words;
    std::array<seen_setting, memheader_setting_count> settings;
    const memheader_layout* layout = nullptr;
    bool has_data = false;
    places stray_words;
    places late_settings;
    places bad_addresses;
    places beyond_all;
};

} // namespace

read_result read_memheader(std::string_view contents, const read_options& options) {
    return memheader_reading(contents, options).read();
}

} // namespace kvrimage
