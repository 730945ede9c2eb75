#include "kvrimage/picture/address_axis.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

/// Labels without overlaps.
class label_lines {
public:
    explicit label_lines(const axis_scale& drawn) : scale(drawn) {}

    /// Adds a label for the word at @p offset between @p left and @p right. Returns false if it would overlap
    /// another one.
    bool add(std::uint64_t offset, std::uint32_t line, double left, double right) {
        const double middle = scale.middle_of(offset);
        const double begin =
            std::max(std::min(middle - scale.text_width / 2, right - scale.text_width), left);
        const double distance = scale.text_width + scale.gap;
        if (std::ranges::any_of(labels, [&](const address_label& other) {
                return other.line == line && other.begin < begin + distance && begin < other.begin + distance;
            })) {
            return false;
        }
        labels.push_back({offset, "", middle, begin, line});
        return true;
    }
    [[nodiscard]] std::vector<address_label> take() {
        std::ranges::sort(labels, {}, &address_label::offset);
        return std::move(labels);
    }

private:
    const axis_scale& scale;
    std::vector<address_label> labels;
};

/// Returns the smallest power of two of words whose room fits a label and its gap.
std::uint64_t step_of_labels(const column_grid::part& part, const axis_scale& scale) {
    const double words_a_unit = (static_cast<double>(part.last - part.first) + 1) / (part.room * scale.unit);
    const double least = (scale.text_width + scale.gap) * words_a_unit;
    constexpr std::uint64_t largest = std::uint64_t{1} << 63U;
    std::uint64_t step = 1;
    while (step < largest && static_cast<double>(step) < least) {
        step *= 2;
    }
    return step;
}

} // namespace

std::size_t address_axis::label_size() const {
    return fmt::format("0x{:X}", base + grid.last()).size();
}

std::vector<address_label> address_axis::labels(const axis_scale& scale) const {
    label_lines lines(scale);
    const bool is_alone = grid.parts().size() == 1;
    for (const column_grid::part& part : grid.parts()) {
        const double left = is_alone ? scale.left : scale.origin + part.begin * scale.unit;
        const double right = is_alone ? scale.right : left + part.room * scale.unit;
        lines.add(part.first, 0, left, right);
        if (part.last != part.first && (!is_alone || !lines.add(part.last, 0, left, right))) {
            lines.add(part.last, 1, left, right);
        }
    }
    for (const column_grid::part& part : grid.parts()) {
        const double left = is_alone ? scale.left : scale.origin + part.begin * scale.unit;
        const double right = is_alone ? scale.right : left + part.room * scale.unit;
        const std::uint64_t step = step_of_labels(part, scale);
        const std::uint64_t end = part.last - part.first;
        for (std::uint64_t ahead = (step - (base + part.first) % step) % step;
             ahead<end; ahead = end - ahead> step ? ahead + step : end) { // no overflow of 64 bits
            lines.add(part.first + ahead, 0, left, right);
        }
    }
    std::vector<address_label> labels = lines.take();
    for (address_label& label : labels) {
        label.text = fmt::format("0x{:0{}X}", base + label.offset, label_size() - 2);
    }
    return labels;
}

} // namespace kvrimage
