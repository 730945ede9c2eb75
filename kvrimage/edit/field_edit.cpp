#include "kvrimage/edit/field_edit.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace kvrimage {

namespace {

/// Makes the assignments, one for each stretch of repeating words.
class field_editor {
public:
    field_editor(const memory_image& of, const field_change& made) : image(of), change(made) {}

    field_assignments edit() {
        for (std::uint64_t address = change.addresses.first;;) {
            const repetition stretch = image.repetition_at(address);
            const std::uint64_t last = std::min(stretch.last, change.addresses.last);
            const std::uint64_t words = words_before_repeat(last - address, stretch.period);
            word_count += words;
            if (word_count > most_words_with_fields) {
                return {{}, std::nullopt, true};
            }
            if (const auto gap = add({address, last}, words)) {
                return {{}, gap, false};
            }
            if (last == change.addresses.last) {
                return std::move(result);
            }
            address = last + 1;
        }
    }

private:
    /// Returns the number of words after which old and new bits repeat together, if that is within the
    /// stretch. Otherwise it returns the length of the stretch, which is @p more + 1.
    [[nodiscard]] std::uint64_t words_before_repeat(std::uint64_t more, std::uint64_t period) const {
        const std::uint64_t values = change.values.size();
        const std::uint64_t turns = values / std::gcd(values, period);
        return period <= more / turns ? period * turns : more + 1;
    }
    /// @return the first unset address, if there is one
    std::optional<std::uint64_t> add(const address_range& stretch, std::uint64_t words) {
        // Adjacent words without repetition share an assignment.
        const bool repeat = words - 1 < stretch.last - stretch.first;
        if (repeat || !open) {
            result.assignments.push_back({stretch, {}});
        }
        open = !repeat;
        assignment& made = result.assignments.back();
        made.addresses.last = stretch.last;
        for (std::uint64_t offset = 0; offset < words; ++offset) {
            const std::uint64_t address = stretch.first + offset;
            const std::optional<word> old = image[address];
            if (!old) {
                return address;
            }
            made.words.push_back(with_field(*old, change.field, value_at(address)));
        }
        return std::nullopt;
    }
    [[nodiscard]] const word& value_at(std::uint64_t address) const {
        return change.values[(address - change.addresses.first) % change.values.size()];
    }

    const memory_image& image;
    const field_change& change;
    field_assignments result;
    std::uint64_t word_count = 0;
    bool open = false; ///< the last assignment can be continued
};

} // namespace

field_assignments assignments_of(const memory_image& image, const field_change& change) {
    if (change.values.empty()) {
        throw std::invalid_argument("a field without a value");
    }
    return field_editor(image, change).edit();
}

} // namespace kvrimage
