// Operations on memories whose words are stored as bytes, compared with the same operations on texts.

#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/bit_operations.h"
#include "kvrimage/operations/checksum/checksum.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "kvrimage/operations/reshape.h"
#include "kvrimage/operations/selection.h"
#include "kvrimage/operations/split.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::array tried_widths = {1U, 5U, 8U, 12U, 16U, 24U, 32U, 39U, 64U, 72U, 100U, 128U, 136U, 256U};

/// Generates memories whose words are stored as bytes, in blocks with and without gaps.
class held_maker {
public:
    explicit held_maker(std::uint32_t seed) : random(seed) {}

    memory_image memory(std::uint32_t width, byte_order order, std::uint64_t base = 0) {
        const std::uint32_t size = (width + 7) / 8;
        const auto bytes = std::make_shared<std::string>();
        std::vector<address_range> places;
        std::uint64_t next = random.below(3);
        for (std::uint64_t blocks = 1 + random.below(4); blocks != 0; --blocks) {
            const std::uint64_t count = 1 + random.below(random.below(8) == 0 ? 3000 : 20);
            places.push_back({next, next + count - 1});
            add_words(*bytes, width, order, count);
            next += count + random.below(3) * random.below(12);
        }
        std::vector<byte_words::block> blocks;
        std::size_t begin = 0;
        for (const address_range& place : places) {
            const std::size_t length = (place.last - place.first + 1) * size;
            blocks.push_back({place.first, std::string_view(*bytes).substr(begin, length)});
            begin += length;
        }
        const std::uint64_t depth = next + random.below(5);
        return {width,
                std::make_unique<image_words>(depth, byte_words(std::move(blocks), width, order, bytes)),
                base};
    }
    memory_maker random;

private:
    void add_words(std::string& bytes, std::uint32_t width, byte_order order, std::uint64_t count) {
        const std::uint32_t size = (width + 7) / 8;
        for (; count != 0; --count) {
            std::string one;
            for (std::uint32_t index = 0; index < size; ++index) {
                one += static_cast<char>(random.below(256));
            }
            char& top = order == byte_order::big ? one.front() : one.back();
            top = static_cast<char>(static_cast<unsigned char>(top) & 0xFFU >> (size * 8 - width));
            bytes += one;
        }
    }
};

memory_image in_texts(const memory_image& image) {
    memory_image copy = image;
    static_cast<void>(copy.words().run_at(0));
    return copy;
}

using operation = std::function<std::vector<memory_image>(const memory_image&)>;

/// The memories that an operation has made, or its refusal.
struct outcome {
    std::vector<memory_image> made;
    std::string refusal;
};

outcome outcome_of(const operation& operate, const memory_image& image) {
    try {
        return {operate(image), ""};
    } catch (const std::exception& error) {
        return {{}, error.what()};
    }
}

enum class held_as { bytes, either };

void expect_same(const memory_image& held, const operation& operate, held_as result = held_as::bytes) {
    const outcome of_texts = outcome_of(operate, in_texts(held));
    ASSERT_NE(held.words().bytes(), nullptr);
    // Uses a copy, because an operation may convert the bytes that it reads to texts.
    const outcome of_bytes = outcome_of(operate, memory_image(held));
    ASSERT_EQ(of_bytes.refusal, of_texts.refusal);
    ASSERT_EQ(of_bytes.made.size(), of_texts.made.size());
    for (std::size_t index = 0; index < of_bytes.made.size(); ++index) {
        if (result == held_as::bytes) {
            ASSERT_NE(of_bytes.made[index].words().bytes(), nullptr) << "width " << held.width();
        }
        ASSERT_EQ(of_bytes.made[index], of_texts.made[index]) << "width " << held.width();
    }
}

/// Calls @p check with memories of all tried_widths and both orders.
template <class Check>
void for_each_memory(std::uint32_t seed, Check&& check) {
    held_maker maker(seed);
    for (int round = 0; round < rounds(4); ++round) {
        for (const std::uint32_t width : tried_widths) {
            for (const byte_order order : {byte_order::little, byte_order::big}) {
                check(maker, maker.memory(width, order, maker.random.below(2) * 0x1000));
            }
        }
    }
}

std::vector<memory_image> one(memory_image image) {
    std::vector<memory_image> all;
    all.push_back(std::move(image));
    return all;
}

address_range random_range(memory_maker& random, const memory_image& image) {
    const std::uint64_t first = random.below(image.depth());
    return {image.base() + first, image.base() + first + random.below(image.depth() - first)};
}

TEST(ByteOperations, OnBitsAreThoseOfTexts) {
    for_each_memory(1, [](held_maker& maker, const memory_image& held) {
        const std::uint32_t width = held.width();
        // Wide words that are not whole bytes are stored neither as bytes nor as numbers.
        const held_as result = width % 8 == 0 || width <= 128 ? held_as::bytes : held_as::either;
        const word mask = word_of_digits(maker.random.bits(width));
        expect_same(
            held, [&mask](const memory_image& of) { return one(masked(of, mask)); }, result);
        expect_same(
            held, [](const memory_image& of) { return one(inverted(of)); }, result);
        expect_same(
            held, [](const memory_image& of) { return one(with_reversed_bits(of)); }, result);
        expect_same(
            held, [](const memory_image& of) { return one(with_swapped_bytes(of)); }, result);
    });
}

TEST(ByteOperations, OfWideWordsThatAreNoWholeBytesGoByTexts) {
    held_maker maker(9);
    const memory_image held = maker.memory(131, byte_order::little);
    expect_same(
        held, [](const memory_image& of) { return one(inverted(of)); }, held_as::either);
}

TEST(ByteOperations, OnAddressesAreThoseOfTexts) {
    for_each_memory(2, [](held_maker& maker, const memory_image& held) {
        memory_maker& random = maker.random;
        const std::vector<address_range> ranges = {
            random_range(random, held), {0, random.below(0x1010)}, random_range(random, held)};
        expect_same(held, [&](const memory_image& of) { return one(only(of, ranges)); });
        expect_same(held, [&](const memory_image& of) { return one(except(of, ranges)); });
        const std::uint64_t from = random.below(0x1020);
        const std::uint64_t to = random.below(0x1020);
        expect_same(held, [&](const memory_image& of) { return one(moved(of, from, to)); });
        const std::uint64_t depth = 1 + random.below(2 * held.depth());
        expect_same(held, [&](const memory_image& of) { return one(with_depth(of, depth)); });
        const address_range counted = random_range(random, held);
        ASSERT_EQ(held.count_set(counted), in_texts(held).count_set(counted));
    });
}

TEST(ByteOperations, ResizeIsThatOfTexts) {
    for_each_memory(3, [](held_maker& maker, const memory_image& held) {
        const std::uint64_t depth = 1 + maker.random.below(2 * held.depth());
        expect_same(held, [&](memory_image of) {
            of.resize(depth);
            return one(std::move(of));
        });
    });
}

TEST(ByteOperations, FillsAreThoseOfTexts) {
    for_each_memory(4, [](held_maker& maker, const memory_image& held) {
        const word value =
            word_of_digits(maker.random.bits(held.width(), maker.random.below(3) == 0 ? 3U : 0U));
        const auto fill = [&](memory_image of) {
            of.fill_unset(value);
            return one(std::move(of));
        };
        expect_same(held, fill, value.has_dont_care() ? held_as::either : held_as::bytes);
    });
}

TEST(ByteOperations, AFillOfAGapOfSeveralBlocksStaysBytes) {
    constexpr std::uint64_t mebi = std::uint64_t{1} << 20U;
    memory_image image = image_of_bytes(std::string(2 * mebi, 'a'), {.width = 16});
    image.resize(4 * mebi);
    image.fill_unset(word::of(0x1234, 16));
    ASSERT_NE(image.words().bytes(), nullptr);
    EXPECT_EQ(image.count_set(), 4 * mebi);
    EXPECT_EQ(image.words().bytes()->blocks().size(), 7U);
    const auto bytes = bytes_of_image(image, byte_order::big);
    EXPECT_EQ(bytes.substr(2 * mebi - 1, 3), "a\x12\x34");
    EXPECT_EQ(bytes.find_first_not_of("\x12\x34", 2 * mebi), std::string::npos);
}

TEST(ByteOperations, AFillOfALongGapCostsItsPattern) {
    memory_image image = image_of_bytes("bytes");
    image.resize(deepest_memory);
    ASSERT_NE(image.words().bytes(), nullptr);
    image.fill_unset(word::of(7, 8));
    EXPECT_EQ(image.words().bytes(), nullptr);
    EXPECT_EQ(image.count_set(), deepest_memory);
    EXPECT_EQ(image.repetition_at(5).last, deepest_memory - 1);
}

TEST(ByteOperations, ReshapesAreThoseOfTexts) {
    for_each_memory(5, [](held_maker& maker, const memory_image& held) {
        memory_maker& random = maker.random;
        for (const bit_order order : {bit_order::low_first, bit_order::high_first}) {
            const std::uint32_t width = random.below(4) != 0
                                            ? 8 * (1 + static_cast<std::uint32_t>(random.below(12)))
                                            : 1 + static_cast<std::uint32_t>(random.below(90));
            std::optional<word> pad;
            if (random.below(4) != 0) {
                pad = word_of_digits(random.bits(width, random.below(4) == 0 ? 4U : 0U));
            }
            const bool stays_bytes =
                width % 8 == 0 && held.width() % 8 == 0 && (!pad || !pad->has_dont_care());
            expect_same(
                held, [&](const memory_image& of) { return one(reshaped(of, width, order, pad)); },
                stays_bytes ? held_as::bytes : held_as::either);
        }
    });
}

/// The words of @p bytes, with a gap of @p gap words after each @p block bytes.
memory_image with_gaps(const std::string& bytes, std::uint32_t width, byte_order order, std::size_t block,
                       std::uint64_t gap) {
    const auto held = std::make_shared<std::string>(bytes);
    const std::size_t size = (width + 7) / 8;
    std::vector<byte_words::block> blocks;
    std::uint64_t next = 0;
    for (std::size_t begin = 0; begin < held->size(); begin += block) {
        blocks.push_back({next, std::string_view(*held).substr(begin, block)});
        next = blocks.back().last(static_cast<std::uint32_t>(size)) + 1 + gap;
    }
    return {width, std::make_unique<image_words>(next, byte_words(std::move(blocks), width, order, held))};
}

TEST(ByteOperations, ReshapesOfWordsUpToALimbStayBytes) {
    memory_maker random(7);
    for (std::uint32_t old_width = 1; old_width <= 64; ++old_width) {
        for (const std::uint32_t width : {1U, 7U, 8U, 31U, 36U, 63U, 64U}) {
            const byte_order order = random.below(2) == 0 ? byte_order::little : byte_order::big;
            const std::size_t size = (old_width + 7) / 8;
            std::string bytes;
            for (std::uint32_t index = 0; index < 4 * width; ++index) {
                bytes += *word_of_digits(random.bits(old_width, 0)).to_bytes(order);
            }
            // Two strings of blocks that are adjacent or have a gap of whole words.
            for (const std::uint64_t gap : {0U, width}) {
                const memory_image held = with_gaps(bytes, old_width, order, 2 * width * size, gap);
                for (const bit_order bits : {bit_order::low_first, bit_order::high_first}) {
                    expect_same(held, [&](const memory_image& of) { return one(reshaped(of, width, bits)); });
                }
            }
            // Adjacent blocks that end within a new word, with and without a pad for the last one.
            const memory_image held = with_gaps(bytes.substr(size), old_width, order, (width + 1) * size, 0);
            const word pad = word_of_digits(random.bits(width, 0));
            for (const bit_order bits : {bit_order::low_first, bit_order::high_first}) {
                expect_same(held,
                            [&](const memory_image& of) { return one(reshaped(of, width, bits, pad)); });
                expect_same(
                    held, [&](const memory_image& of) { return one(reshaped(of, width, bits)); },
                    held_as::either);
            }
        }
    }
}

TEST(ByteOperations, ReshapesOfManyWordsAreMadeInParts) {
    std::string bytes; // words of 12 bits, most significant byte first
    for (unsigned index = 0; index < 90'000; ++index) {
        bytes += {static_cast<char>(index / 4096 % 16), static_cast<char>(index / 16 % 256)};
    }
    const memory_image held = with_gaps(bytes, 12, byte_order::big, bytes.size(), 0);
    for (const std::uint32_t width : {7U, 12U, 24U, 36U, 60U}) {
        for (const bit_order order : {bit_order::low_first, bit_order::high_first}) {
            expect_same(held,
                        [&](const memory_image& of) { return one(reshaped(of, width, order, word(width))); });
        }
    }
}

/// Bytes at the offsets of @p places, in ascending order.
memory_image bytes_at(const std::vector<address_range>& places, std::uint64_t depth) {
    const auto bytes = std::make_shared<std::string>(depth, 'a');
    std::vector<byte_words::block> blocks;
    for (const address_range& place : places) {
        blocks.push_back(
            {place.first, std::string_view(*bytes).substr(place.first, place.last - place.first + 1)});
    }
    return {8, std::make_unique<image_words>(depth, byte_words(std::move(blocks), 8, byte_order::big, bytes)),
            0};
}

TEST(ByteOperations, ManyPartsOfAWideWordNeedTheRoomOfThatWord) {
    constexpr std::size_t parts = 32768; // this many words of 2^17 bytes would have 2^32 bytes
    const auto bytes = std::make_shared<std::string>(parts, '\x5A');
    std::vector<byte_words::block> blocks;
    for (std::size_t index = 0; index < parts; ++index) {
        blocks.push_back({2 * index, std::string_view(*bytes).substr(index, 1)});
    }
    const memory_image held(8, std::make_unique<image_words>(
                                   2 * parts, byte_words(std::move(blocks), 8, byte_order::little, bytes)));
    expect_same(held, [](const memory_image& image) {
        return std::vector{reshaped(image, widest_word, bit_order::low_first, word(widest_word))};
    });
}

/// Joins @p count images of the same bytes, which are in memory once.
memory_image repeated_bytes(std::size_t bytes, std::uint64_t count) {
    const auto text = std::make_shared<std::string>(bytes, '\x5A');
    std::vector<byte_words::block> blocks;
    for (std::uint64_t index = 0; index < count; ++index) {
        blocks.push_back({index * bytes, *text});
    }
    return {8, std::make_unique<image_words>(count * bytes,
                                             byte_words(std::move(blocks), 8, byte_order::little, text))};
}

TEST(ByteOperations, ResultsThatFitNoMemoryAreRefused) {
    if (sizeof(std::size_t) > 4) {
        GTEST_SKIP() << "these results fit the memory of a program of 64 bits";
    }
    const memory_image held = repeated_bytes(std::size_t{1} << 24U, 256);
    EXPECT_THROW(static_cast<void>(inverted(held)), std::bad_alloc);
    const std::vector<memory_image> lanes(256, repeated_bytes(std::size_t{1} << 24U, 1));
    EXPECT_THROW(static_cast<void>(join_lanes(lanes)), std::bad_alloc);
}

TEST(ByteOperations, ReshapesThatLackBitsAreRefusedAsThoseOfTexts) {
    const operation reshape = [](const memory_image& of) {
        return one(reshaped(of, 32, bit_order::low_first));
    };
    expect_same(bytes_at({{0, 0}, {3, 3}}, 8), reshape);
    expect_same(bytes_at({{0, 4}, {8, 11}}, 12), reshape);
    expect_same(bytes_at({{0, 3}, {8, 9}}, 12), reshape);
    expect_same(bytes_at({{0, 1}, {2, 3}}, 4), reshape);
    EXPECT_NE(outcome_of(reshape, bytes_at({{0, 0}, {3, 3}}, 8)).refusal, "");
}

TEST(ByteOperations, ReshapesThatLackNoBitTakeTheBytesAsTheyAre) {
    const memory_image bytes = image_of_bytes("01234567");
    const memory_image made = reshaped(bytes, 32, bit_order::low_first);
    EXPECT_EQ(made.words().bytes()->blocks().front().bytes.data(),
              bytes.words().bytes()->blocks().front().bytes.data());
    EXPECT_EQ(made[1], word::of(0x37363534, 32));
}

TEST(ByteOperations, PartsAreThoseOfTexts) {
    for_each_memory(6, [](held_maker& maker, const memory_image& image) {
        memory_image held = image;
        held.resize((image.depth() + 11) / 12 * 12);
        const std::uint32_t lane = held.width() % 8 == 0 && maker.random.below(2) == 0 ? 8 : held.width();
        const held_as lanes_as = held.width() % 8 == 0 ? held_as::bytes : held_as::either;
        expect_same(
            held, [&](const memory_image& of) { return split_lanes(of, lane); }, lanes_as);
        expect_same(
            held, [&](const memory_image& of) { return one(join_lanes(split_lanes(of, lane))); }, lanes_as);
        const std::uint64_t count = std::array{1U, 2U, 3U, 4U}[maker.random.below(4)];
        // Short memories of many blocks are split as texts.
        expect_same(
            held, [&](const memory_image& of) { return split_banks(of, count); }, held_as::either);
        expect_same(held, [&](const memory_image& of) { return split_blocks(of, count); });
        expect_same(
            held, [&](const memory_image& of) { return one(join_banks(split_banks(of, count))); },
            held_as::either);
        expect_same(held, [&](const memory_image& of) { return one(join_blocks(split_blocks(of, count))); });
    });
}

TEST(ByteOperations, BanksStayBytes) {
    const memory_image image = image_of_bytes("aAbBcCdD");
    const std::vector<memory_image> banks = split_banks(image, 2);
    ASSERT_NE(banks[0].words().bytes(), nullptr);
    EXPECT_EQ(bytes_of_image(banks[0]), "abcd");
    EXPECT_EQ(bytes_of_image(banks[1]), "ABCD");
    const memory_image joined = join_banks(banks);
    ASSERT_NE(joined.words().bytes(), nullptr);
    EXPECT_EQ(bytes_of_image(joined), "aAbBcCdD");
}

TEST(ByteOperations, PartsThatAreNotAlikeAreJoinedAsTexts) {
    const std::array orders = {image_of_bytes("abcd", {.width = 16, .order = byte_order::little}),
                               image_of_bytes("abcd", {.width = 16, .order = byte_order::big})};
    EXPECT_EQ(bytes_of_image(join_lanes(orders), byte_order::big), "abbacddc");
    EXPECT_EQ(bytes_of_image(join_banks(orders), byte_order::big), "baabdccd");
    EXPECT_EQ(bytes_of_image(join_blocks(orders), byte_order::big), "badcabcd");
    const std::array forms = {image_of_bytes("ab"), in_texts(image_of_bytes("cd"))};
    EXPECT_EQ(bytes_of_image(join_lanes(forms)), "acbd");
    EXPECT_EQ(bytes_of_image(join_blocks(forms)), "abcd");
    const std::array texts_first = {in_texts(image_of_bytes("cd")), image_of_bytes("ab")};
    EXPECT_EQ(bytes_of_image(join_banks(texts_first)), "cadb");
    std::array lengths = {image_of_bytes("abc"), image_of_bytes("d")};
    lengths[1].resize(3);
    EXPECT_EQ(join_banks(lengths).count_set(), 4U);
    std::array places = {image_of_bytes("a"), image_of_bytes("b")};
    places[0] = moved(places[0], 0, 1);
    places[1].resize(2);
    EXPECT_EQ(join_banks(places)[2], word::of('a', 8));
    EXPECT_EQ(join_banks(places)[1], word::of('b', 8));
}

TEST(ByteOperations, ProtectionIsThatOfTexts) {
    for_each_memory(7, [](held_maker&, const memory_image& held) {
        const ecc_scheme scheme = ecc_scheme::named("hamming", held.width());
        const held_as result = scheme.width() <= 128 ? held_as::bytes : held_as::either;
        expect_same(
            held, [&](const memory_image& of) { return one(protected_by(of, scheme)); }, result);
        expect_same(
            held, [&](const memory_image& of) { return one(unprotected(protected_by(of, scheme), scheme)); },
            held_as::either);
    });
}

TEST(ByteOperations, FindingsOfWrongBitsAreThoseOfTexts) {
    held_maker maker(10);
    for (const std::uint32_t data_width : {8U, 32U, 64U, 120U, 128U}) {
        const ecc_scheme scheme = ecc_scheme::named("hamming", data_width);
        for (const byte_order order : {byte_order::little, byte_order::big}) {
            // A memory without protection has wrong bits in nearly all words.
            const memory_image held = maker.memory(scheme.width(), order);
            const ecc_report report = check_protection(held, scheme);
            EXPECT_EQ(held.words().bytes() != nullptr, scheme.width() <= 128);
            const ecc_report of_texts = check_protection(in_texts(held), scheme);
            EXPECT_EQ(report.checked, held.count_set());
            EXPECT_EQ(report.corrected, of_texts.corrected);
            EXPECT_EQ(report.damaged, of_texts.damaged);
            EXPECT_EQ(report.findings, of_texts.findings);
        }
    }
}

/// @p image as a file; the first obstacle if it cannot be written.
std::string written(const memory_image& image, std::string_view format_name) {
    const write_options options = {.as = format_of_name(format_name)};
    const auto obstacles = can_write(image, options);
    return obstacles.empty() ? to_text(image, options) : obstacles.front().message;
}

TEST(ByteOperations, FilesOfWordsAreThoseOfTexts) {
    for_each_memory(11, [](held_maker&, const memory_image& held) {
        const memory_image texts = in_texts(held);
        for (const std::string_view name : {"hex", "readmemh"}) {
            ASSERT_EQ(written(held, name), written(texts, name)) << "width " << held.width();
            ASSERT_NE(held.words().bytes(), nullptr) << name;
        }
        for (const std::string_view name : {"readmemb", "csv", "coe", "logisim", "mif", "rif"}) {
            ASSERT_EQ(written(memory_image(held), name), written(texts, name)) << "width " << held.width();
        }
    });
}

TEST(ByteOperations, FilesOfWordsOfMoreDigitsThanARowHasAreThoseOfTexts) {
    const memory_image held = held_maker(12).memory(1032, byte_order::big);
    const memory_image texts = in_texts(held);
    EXPECT_EQ(written(held, "readmemh"), written(texts, "readmemh"));
}

TEST(ByteOperations, ChecksumsAreThoseOfTexts) {
    for_each_memory(8, [](held_maker& maker, const memory_image& held) {
        checksum_options options = {.order =
                                        maker.random.below(2) == 0 ? byte_order::little : byte_order::big};
        options.ranges = {random_range(maker.random, held), random_range(maker.random, held)};
        if (maker.random.below(2) == 0) {
            options.unset = word_of_digits(maker.random.bits(held.width()));
        }
        const checksum_kind crc = checksum_of_name("crc-32").value();
        ASSERT_EQ(checksum_of(held, crc, options), checksum_of(in_texts(held), crc, options));
    });
}

TEST(ForEachCountedBlock, HandsOutTheBytesOfAChecksum) {
    const memory_image image = image_of_bytes("abcdefgh", {.width = 16, .order = byte_order::big});
    std::string bytes;
    const auto take = [&bytes](std::string_view block) { bytes += block; };
    for_each_counted_block(image, {.ranges = {{2, 3}, {0, 0}}, .order = byte_order::little}, take);
    EXPECT_EQ(bytes, "fehgba");
    bytes.clear();
    for_each_counted_block(image, {.order = byte_order::big}, take);
    EXPECT_EQ(bytes, "abcdefgh");
    EXPECT_THROW(for_each_counted_block(image, {.ranges = {{2, 4}}}, take), std::out_of_range);
}

} // namespace
