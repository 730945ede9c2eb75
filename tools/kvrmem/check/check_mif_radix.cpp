#include "tools/kvrmem/check/check_mif_radix.h"

#include "kvr/memory/mif/mif_reader.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/scanned_number.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/memory/mif_statement_faults.h"
#include "tools/kvrmem/memory/word_text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kvrmem {

namespace {

/// One radix, and whether all numbers so far fit it.
struct candidate {
    KVR_MEMORY_RADIXES radix = RADIX_NONE;
    bool fits = true;
};

/// What a number is in a radix.
enum class reading : std::uint8_t {
    fits,
    too_large,
    no_number, ///< it has a digit that the radix does not have
};

/// Drops the candidates that a number does not fit. That it is no number in the radix declared is what tells
/// another radix; a number that is only too large may be just that.
template <std::size_t Count, class Read>
void try_number(std::array<candidate, Count>& candidates, radix_fit& result, KVR_MEMORY_RADIXES declared,
                std::string_view number, std::uint64_t line, Read&& read) {
    ++result.numbers;
    for (candidate& each : candidates) {
        const bool is_declared = each.radix == declared;
        if (!each.fits && !is_declared) {
            continue;
        }
        const reading found = read(number, each.radix);
        each.fits = each.fits && found == reading::fits;
        if (is_declared && found == reading::no_number && result.misfits++ == 0) {
            constexpr std::size_t longest_example = 80;
            result.example = number.substr(0, longest_example);
            result.example_line = line;
        }
    }
}

/// A single number that does not fit is a mistake of its own. Of the numbers 0 to 1F, three in eight have a
/// letter.
bool are_many(std::uint64_t misfits, std::uint64_t numbers) {
    return misfits * 3 >= numbers;
}

template <std::size_t Count>
void decide(const std::array<candidate, Count>& candidates, radix_fit& result) {
    const auto fits = [](const candidate& each) { return each.fits; };
    if (result.misfits != 0 && are_many(result.misfits, result.numbers) &&
        std::count_if(candidates.begin(), candidates.end(), fits) == 1) {
        result.only = std::find_if(candidates.begin(), candidates.end(), fits)->radix;
        result.is_another = true;
    }
}

class radix_trial : public kvr::mif_observer {
public:
    radix_trial(const kvr::mif_memory& header, std::uint32_t bits) : declared(header), width(bits) {}

    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        line = fault.line;
        // What a wrong address radix makes of an address is a fault; the number counts all the same.
        if (text.find(':') != std::string_view::npos) {
            take_addresses(text);
        }
        return true;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void cut_at_percent(std::string_view /*rest*/, std::uint64_t /*line*/) override {}
    void content_line(const kvr::mif_content& content) override {
        line = content.pieces.back().line;
        take_addresses(content.text);
        if (width == 0 || !find_inner_statements(content).empty()) {
            return;
        }
        for (const std::string_view value : content.values) {
            try_number(
                data, result.data, declared.memory_radix, value, line,
                [this](std::string_view text, KVR_MEMORY_RADIXES radix) { return read_value(text, radix); });
        }
    }
    mif_radix_fit finish() {
        decide(data, result.data);
        decide(addresses, result.addresses);
        return result;
    }

private:
    void take_addresses(std::string_view text) {
        const kvr::text_span first = kvr::find_token(text, 0);
        if (!first.found()) {
            return;
        }
        take_address(first.in(text));
        const std::size_t dot = text.find('.', first.end);
        if (text.find('[') != std::string_view::npos && dot != std::string_view::npos) {
            const kvr::text_span last = kvr::find_token(text, dot);
            take_address(last.found() ? last.in(text) : std::string_view("0"));
        }
    }
    void take_address(std::string_view digits) {
        const KVR_MEMORY_RADIXES radix =
            declared.address_radix == RADIX_DEC ? RADIX_UNS : declared.address_radix;
        try_number(
            addresses, result.addresses, radix, digits, line,
            [this](std::string_view text, KVR_MEMORY_RADIXES tried) { return read_address(text, tried); });
    }
    reading read_value(std::string_view text, KVR_MEMORY_RADIXES radix) {
        const auto error = make_word(text, radix, width, word);
        if (!error) {
            return reading::fits;
        }
        return error->what == kvr::exact_word_error::kind::too_wide ? reading::too_large : reading::no_number;
    }
    [[nodiscard]] reading read_address(std::string_view text, KVR_MEMORY_RADIXES radix) const {
        const unsigned base = kvr::radix_base(radix);
        if (!std::all_of(text.begin(), text.end(), [base](char c) { return kvr::digit_value(c) < base; })) {
            return reading::no_number;
        }
        const kvr::scanned_number number = kvr::scan_number(text, base);
        return number.fits && number.magnitude < declared.number_of_words ? reading::fits
                                                                          : reading::too_large;
    }

    const kvr::mif_memory& declared;
    std::uint32_t width;
    std::uint64_t line = 0;
    std::string word;
    mif_radix_fit result;
    std::array<candidate, 5> data = {{{RADIX_BIN}, {RADIX_OCT}, {RADIX_DEC}, {RADIX_UNS}, {RADIX_HEX}}};
    /// To an address the two decimal radixes are one.
    std::array<candidate, 4> addresses = {{{RADIX_BIN}, {RADIX_OCT}, {RADIX_UNS}, {RADIX_HEX}}};
};

} // namespace

mif_radix_fit find_radix_fit(const check_source& source, const kvr::mif_memory& declared,
                             const input_options& options) {
    const std::uint32_t width = options.width.value_or(declared.word_size);
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    radix_trial trial(declared, width <= widest_word ? width : 0);
    kvr::line_source lines = source.lines(kvr::mif_reader::source_limit);
    static_cast<void>(kvr::mif_reader(memory, &trial).read(lines));
    return trial.finish();
}

} // namespace kvrmem
