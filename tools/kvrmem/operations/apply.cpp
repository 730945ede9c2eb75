#include "tools/kvrmem/operations/apply.h"

#include "kvrimage/operations/bit_operations.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "kvrimage/operations/selection.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/operations/named_scheme.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::memory_image;

/// Returns "16 words of 8 bits".
std::string size_of(const memory_image& image) {
    return fmt::format("{} of {}", counted(image.depth(), "word"), counted(image.width(), "bit"));
}

/// Returns the remedy for a word that does not fit @p what.
std::string_view remedy_of(const operation& what) {
    return std::holds_alternative<reshape_words>(what.what) ? "; add --pad VALUE after it for these bits"
                                                            : "";
}

/// Applies operations in order. Each returns a message.
class operator_on_memory {
public:
    explicit operator_on_memory(memory_image& operated) : image(operated) {}

    std::string apply(const operation& each) {
        title = each.title;
        return std::visit([this](const auto& what) { return run(what); }, each.what);
    }

private:
    std::string run(const only_words& what) {
        const std::uint64_t before = image.count_set();
        image = kvrimage::only(image, what.ranges);
        first_kept = what.ranges.front().first;
        return fmt::format("{} of {} kept", image.count_set(), counted(before, "word"));
    }
    std::string run(const except_words& what) {
        const std::uint64_t before = image.count_set();
        image = kvrimage::except(image, what.ranges);
        return fmt::format("{} of {} omitted", before - image.count_set(), counted(before, "word"));
    }
    std::string run(const move_words& what) {
        const auto words = image.bounds();
        if (!words) {
            return "no word is set";
        }
        const std::uint64_t from = first_kept.value_or(words->first);
        image = kvrimage::moved(image, from, what.to);
        first_kept = first_kept ? std::optional(what.to) : std::nullopt;
        return fmt::format("{} moved from 0x{:X} to 0x{:X}", counted(image.count_set(), "word"), from,
                           what.to);
    }
    std::string run(const fill_rest& what) {
        const std::uint64_t before = image.count_set();
        image.fill_unset(word_of_user(what.value, image.width(), title));
        return fmt::format("{} filled", counted(image.count_set() - before, "word"));
    }
    std::string run(const change_depth& what) {
        const std::uint64_t before = image.depth();
        image = kvrimage::with_depth(image, what.depth);
        return fmt::format("{} -> {}", counted(before, "word"), what.depth);
    }
    std::string run(const mask_words& what) {
        image = kvrimage::masked(image, word_of_user(what.bits, image.width(), title));
        return fmt::format("{} masked", counted(image.count_set(), "word"));
    }
    std::string run(const reverse_bits& /*what*/) {
        image = kvrimage::with_reversed_bits(image);
        return fmt::format("bits of {} reversed", counted(image.count_set(), "word"));
    }
    std::string run(const swap_bytes& /*what*/) {
        image = kvrimage::with_swapped_bytes(image);
        return fmt::format("bytes of {} swapped", counted(image.count_set(), "word"));
    }
    std::string run(const invert_words& /*what*/) {
        image = kvrimage::inverted(image);
        return fmt::format("{} inverted", counted(image.count_set(), "word"));
    }
    std::string run(const reshape_words& what) {
        const std::string before = size_of(image);
        std::optional<kvrimage::word> pad;
        if (what.pad) {
            pad = word_of_user(*what.pad, what.width, "--pad " + *what.pad);
        }
        image =
            kvrimage::reshaped(image, what.width, what.order.value_or(kvrimage::bit_order::low_first), pad);
        first_kept.reset();
        return fmt::format("{} -> {}", before, size_of(image));
    }
    std::string run(const protect_words& what) {
        const std::string before = size_of(image);
        const kvrimage::ecc_scheme scheme = scheme_for_data(what.scheme, image.width());
        image = kvrimage::protected_by(image, scheme);
        return fmt::format("{} -> {}{}", before, size_of(image), weakness_of(what.scheme, scheme));
    }
    std::string run(const strip_protection& what) {
        const std::string before = size_of(image);
        const kvrimage::ecc_scheme scheme = scheme_of_protected(what.scheme, image.width());
        const kvrimage::ecc_report checked = kvrimage::check_protection(image, scheme);
        image = kvrimage::unprotected(image, scheme, checked);
        return fmt::format("{} -> {}, {} corrected{}", before, size_of(image),
                           counted(checked.corrected, "word"), weakness_of(what.scheme, scheme));
    }

    memory_image& image;
    std::string title;
    std::optional<std::uint64_t> first_kept; ///< current place of the first address of the last --only
};

} // namespace

std::vector<std::string> apply(std::span<const operation> operations, memory_image& image,
                               const std::string& name) {
    std::vector<std::string> lines;
    operator_on_memory memory(image);
    for (const operation& each : operations) {
        show_operation(each.title, name);
        try {
            lines.push_back(fmt::format("{}: {}", each.title, memory.apply(each)));
        } catch (const std::invalid_argument& error) {
            usage_error(fmt::format("{}: {}", each.title, error.what()));
        } catch (const std::out_of_range& error) {
            usage_error(fmt::format("{}: {}", each.title, error.what()));
        } catch (const std::domain_error& error) {
            throw tool_error(exit_code::bad_input,
                             fmt::format("{}: {}: {}{}", each.title, name, error.what(), remedy_of(each)));
        }
    }
    return lines;
}

} // namespace kvrmem
