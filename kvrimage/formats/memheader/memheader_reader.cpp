#include "kvrimage/formats/memheader/memheader_reader.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/memheader/memheader_parser.h"
#include "kvrimage/formats/word_digits.h"
#include "kvrimage/formats/word_list.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace kvrimage {

namespace {

/// No memory has more.
constexpr std::uint64_t highest_memheader_address = ~std::uint64_t{0} >> 1U;

enum class setting_name : std::uint8_t { format, depth, width, address_radix, data_radix };

/// A setting of the header, and the numbers that its value may be; none for a name.
struct memheader_setting {
    std::string_view name;
    std::uint64_t lowest;
    std::uint64_t highest;
    std::string_view values; ///< for a message
};

constexpr auto memheader_settings = std::to_array<memheader_setting>({
    {"Format", 0, 0, "Bin, Hex or AddrHex"},
    {"Depth", 1, deepest_memory, "a decimal number from 1 to 4294967296"},
    {"Width", 1, widest_word, "a decimal number from 1 to 1048576"},
    {"AddrRadix", 0, 3, "0 (binary), 1 (octal), 2 (decimal) or 3 (hexadecimal)"},
    {"DataRadix", 0, 3, "0 (binary), 1 (octal), 2 (decimal) or 3 (hexadecimal)"},
});

constexpr std::array memheader_radixes = {radix::bin, radix::oct, radix::uns, radix::hex};

struct memheader_layout {
    std::string_view name;
    radix digits;
    bool is_addressed;
};

constexpr auto memheader_layouts = std::to_array<memheader_layout>({
    {"Bin", radix::bin, false},
    {"Hex", radix::hex, false},
    {"AddrHex", radix::hex, true},
});

/// The decimal number @p text, if it is one that @p setting may have.
std::optional<std::uint64_t> number_of(std::string_view text, const memheader_setting& setting) {
    if (text.empty() || find_bad_digit(text, radix::uns) != std::string_view::npos) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (const char digit : text) {
        value = value > setting.highest ? value : value * 10 + kvr::digit_value(digit);
    }
    return value >= setting.lowest && value <= setting.highest ? std::optional(value) : std::nullopt;
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
            take_setting(piece);
            break;
        case memheader_piece::kind::data:
            begin_data();
            break;
        case memheader_piece::kind::address:
            break;
        case memheader_piece::kind::word:
            take_word(piece);
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

    [[nodiscard]] const seen_setting& seen(setting_name of) const {
        return settings[static_cast<std::size_t>(of)];
    }

    void take_setting(const memheader_piece& piece) {
        const std::string_view name = piece.name.in(text);
        for (std::size_t index = 0; index < memheader_settings.size(); ++index) {
            if (kvr::equal_ignoring_case(name, memheader_settings[index].name)) {
                set(index, piece);
                return;
            }
        }
        list.add(diagnose::memheader_unknown(piece.where, name));
    }
    void set(std::size_t index, const memheader_piece& piece) {
        const memheader_setting& setting = memheader_settings[index];
        const std::string_view value = piece.value.in(text);
        seen_setting& into = settings[index];
        if (into.is_there) {
            list.add(diagnose::memheader_again(piece.where, setting.name));
            return;
        }
        into = {true, piece.value, number_of(value, setting)};
        if (static_cast<setting_name>(index) == setting_name::format) {
            set_layout(value);
        }
        if (static_cast<setting_name>(index) == setting_name::format ? layout == nullptr : !into.number) {
            list.add(diagnose::memheader_setting(piece.where, setting.name, value, setting.values));
        }
    }
    void set_layout(std::string_view value) {
        for (const memheader_layout& each : memheader_layouts) {
            if (kvr::equal_ignoring_case(value, each.name)) {
                layout = &each;
            }
        }
    }

    void begin_data() {
        has_data = true;
        if (layout == nullptr) {
            return;
        }
        stated_sizes stated;
        stated.width_setting = "#Width";
        stated.depth = seen(setting_name::depth).number;
        if (const auto& width = seen(setting_name::width).number) {
            stated.width = static_cast<std::uint32_t>(*width);
        }
        words.emplace(text, options, layout->digits, stated);
        result.facts.data_radix = layout->digits;
        result.facts.address_radix = radix::hex;
    }

    void take_word(const memheader_piece& piece) {
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
        report_radix(setting_name::data_radix);
        if (layout != nullptr && layout->is_addressed) {
            report_radix(setting_name::address_radix);
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
        if (!seen(setting_name::format).is_there) {
            list.add(
                diagnose::memheader_missing({}, "Format", "write #Format=Hex if the words are hexadecimal"));
        }
        if (!seen(setting_name::depth).is_there && !options.depth) {
            list.add(diagnose::memheader_missing({}, "Depth", "write #Depth= and the number of words"));
        }
        if (!seen(setting_name::width).is_there && !options.width) {
            list.add(diagnose::memheader_missing({}, "Width", "write #Width= and the bits of a word"));
        }
        if (!has_data) {
            list.add(diagnose::memheader_missing({}, "Data", "write it before the words"));
        }
    }
    /// A radix that the digits do not have.
    void report_radix(setting_name of) {
        const seen_setting& setting = seen(of);
        if (layout == nullptr || !setting.number) {
            return;
        }
        const radix said = memheader_radixes[*setting.number];
        if (said != layout->digits) {
            list.add(diagnose::memheader_radix(
                setting.value, memheader_settings[static_cast<std::size_t>(of)].name, setting.value.in(text),
                adjective_of(said), layout->name, adjective_of(layout->digits)));
        }
    }

    std::string_view text;
    const read_options& options;
    diagnostic_list list;
    read_result result;
    std::optional<word_list> words;
    std::array<seen_setting, memheader_settings.size()> settings;
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
