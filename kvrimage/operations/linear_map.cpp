#include "kvrimage/operations/linear_map.h"

namespace kvrimage {

linear_map::linear_map(std::span<const wide_number> columns)
    : tables((columns.size() + bits_per_byte - 1) / bits_per_byte) {
    for (std::size_t bit = 0; bit < columns.size(); ++bit) {
        auto& table = tables[bit / bits_per_byte];
        const std::size_t place = std::size_t{1} << bit % bits_per_byte;
        // The entries below the new bit are complete; those with the bit differ by its column.
        for (std::size_t value = 0; value < place; ++value) {
            table[place + value] = {table[value].low ^ columns[bit].low,
                                    table[value].high ^ columns[bit].high};
        }
    }
}

} // namespace kvrimage
