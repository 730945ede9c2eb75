#include "kvrimage/image/memory_image.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

/// Part of the addresses of a memory, where the operations are; outside of it no word is set.
struct memory_part {
    const char* name;
    std::uint32_t width;
    std::uint64_t depth;
    std::uint64_t base;
    std::uint64_t first; ///< offset of the part
    std::uint64_t size;  ///< of the part
};

constexpr std::uint64_t half_of_deepest = std::uint64_t{1} << 31U;
constexpr std::uint64_t top_address = std::numeric_limits<std::uint64_t>::max();

constexpr memory_part memory_parts[] = {
    {"one word", 4, 1, 0, 0, 1},
    {"nearly a page", 8, 1023, 0, 0, 1023},
    {"a page", 32, 1024, 7, 0, 1024},
    {"more than a page", 64, 1025, top_address - 1024, 0, 1025},
    {"some pages", 12, 5000, top_address - 4999, 0, 5000},
    {"wide words", 130, 3000, 0, 0, 3000},
    {"the border of the halves", 16, deepest_memory, 0, half_of_deepest - 1500, 3000},
    {"the end of a deep memory", 5, deepest_memory, top_address - deepest_memory + 1, deepest_memory - 2500,
     2500},
    {"one word above half", 32, half_of_deepest + 1, 3, half_of_deepest - 1025, 1026},
};

using model_words = std::vector<std::optional<word>>;

/// A memory and what it should be.
class modelled_image {
public:
    modelled_image(const memory_part& where, std::uint32_t seed)
        : part(where),
          engine(seed),
          image(where.width, where.depth, where.base),
          model(where.size) {
        for (int i = 0; i < 6; ++i) {
            values.push_back(random_word());
        }
    }

    void operate() {
        switch (engine() % 12) {
        case 0:
            fill();
            break;
        case 1:
            unset();
            break;
        case 2:
            copy();
            break;
        case 3:
            check_runs();
            break;
        case 4:
            check_sums();
            break;
        case 5:
            check_copy_to();
            break;
        case 6:
            check_equality();
            break;
        case 7:
            set_many();
            break;
        default:
            set();
        }
    }

    void check_all() {
        for (std::uint64_t index = 0; index < part.size; ++index) {
            ASSERT_EQ(image[address(index)], model[index]) << part.name << ' ' << index;
        }
        check_runs();
        check_sums();
    }

private:
    std::uint64_t below(std::uint64_t count) { return engine() % count; }
    std::uint64_t address(std::uint64_t index) const { return part.base + part.first + index; }

    word random_word() {
        std::string bits(part.width, '0');
        const std::string_view of = engine() % 8 == 0 ? "01X" : "01";
        for (char& bit : bits) {
            bit = of[below(of.size())];
        }
        return word::parse(bits, radix::bin, part.width).value.value();
    }
    word some_word() { return engine() % 2 == 0 ? values[below(values.size())] : random_word(); }

    /// Indexes of the part: short ranges, long ones, and those to the end.
    std::pair<std::uint64_t, std::uint64_t> range() {
        const std::uint64_t first = below(part.size);
        const std::uint64_t longest = engine() % 2 == 0 ? 10 : part.size;
        return {first, std::min(first + below(longest), part.size - 1)};
    }

    void set() {
        const std::uint64_t index = below(part.size);
        const word value = some_word();
        image.set(address(index), value);
        model[index] = value;
    }
    void set_many() {
        const auto [first, last] = range();
        for (std::uint64_t index = first; index <= last; ++index) {
            model[index] = some_word();
            image.set(address(index), *model[index]);
        }
    }
    void fill() {
        const auto [first, last] = range();
        std::vector<word> pattern;
        for (std::uint64_t count = 1 + below(5); count > 0; --count) {
            pattern.push_back(some_word());
        }
        image.fill({address(first), address(last)}, pattern);
        for (std::uint64_t index = first; index <= last; ++index) {
            model[index] = pattern[(index - first) % pattern.size()];
        }
    }
    void unset() {
        const auto [first, last] = range();
        image.unset({address(first), address(last)});
        std::fill(model.begin() + static_cast<std::ptrdiff_t>(first),
                  model.begin() + static_cast<std::ptrdiff_t>(last) + 1, std::nullopt);
    }

    void copy() {
        memory_image other = image;
        ASSERT_EQ(other, image) << part.name;
        other.fill({address(0), address(part.size - 1)}, std::vector<word>{random_word()});
        other = image;
        image = std::move(other);
    }

    void check_equality() {
        memory_image other = image;
        const std::uint64_t index = below(part.size);
        const word value = some_word();
        other.set(address(index), value);
        ASSERT_EQ(other == image, model[index] == value) << part.name;
        if (model[index]) {
            other.set(address(index), *model[index]);
        } else {
            other.unset({address(index), address(index)});
        }
        ASSERT_TRUE(other == image) << part.name;
    }

    void check_runs() {
        const auto [first, last] = range();
        std::uint64_t next = first;
        for (const run& one : image.runs({address(first), address(last)})) {
            ASSERT_EQ(one.addresses.first, address(next)) << part.name;
            ASSERT_LE(one.addresses.last, address(last)) << part.name;
            const std::uint64_t end = one.addresses.last - address(0);
            for (; next <= end; ++next) {
                ASSERT_EQ(one.value, model[next]) << part.name << ' ' << next;
            }
            ASSERT_TRUE(end == last || model[end + 1] != model[end]) << part.name << ' ' << end;
        }
        ASSERT_EQ(next, last + 1) << part.name;
    }

    void check_sums() {
        std::uint64_t count = 0;
        std::optional<address_range> bounds;
        for (std::uint64_t index = 0; index < part.size; ++index) {
            if (model[index]) {
                ++count;
                bounds = address_range{bounds ? bounds->first : address(index), address(index)};
            }
        }
        ASSERT_EQ(image.count_set(), count) << part.name;
        ASSERT_EQ(image.bounds(), bounds) << part.name;
    }

    void check_copy_to() {
        const auto [first, last] = range();
        std::vector<std::uint64_t> out(last - first + 1);
        const auto begin = model.begin() + static_cast<std::ptrdiff_t>(first);
        const auto end = begin + static_cast<std::ptrdiff_t>(out.size());
        const bool has_dont_care =
            std::any_of(begin, end, [](const auto& one) { return one && one->has_dont_care(); });
        if (part.width > 64 || has_dont_care) {
            ASSERT_THROW(image.copy_to(address(first), out), std::domain_error);
            return;
        }
        image.copy_to(address(first), out, 77);
        for (std::size_t index = 0; index < out.size(); ++index) {
            const auto& value = model[first + index];
            ASSERT_EQ(out[index], value ? value->to_unsigned() : 77) << part.name;
        }
    }

    memory_part part;
    std::mt19937_64 engine;
    memory_image image;
    model_words model;
    std::vector<word> values;
};

TEST(MemoryImageModel, RandomOperationsDoWhatTheyDoToAVector) {
    std::uint32_t seed = 0;
    for (const memory_part& where : memory_parts) {
        for (int round = 0; round < rounds(4) && !testing::Test::HasFatalFailure(); ++round) {
            modelled_image modelled(where, ++seed);
            for (int operation = 0; operation < 60 && !testing::Test::HasFatalFailure(); ++operation) {
                modelled.operate();
            }
            modelled.check_all();
        }
    }
}

} // namespace
