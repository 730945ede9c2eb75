#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/image/image_words.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;
using namespace std::string_view_literals;
using kvrimage_tests::bytes_as;
using kvrimage_tests::set_words_of;
using kvrimage_tests::shown_report;

constexpr std::string_view file_of_bytes = "the file, of which byte address 10 is in line 1\n";

struct placed {
    std::uint64_t address;
    std::string_view bytes;
};

byte_blocks blocks_of(const std::vector<placed>& all) {
    byte_blocks blocks;
    for (const placed& each : all) {
        blocks.add(each.address, each.bytes);
    }
    return blocks;
}

read_result words_of(const std::vector<placed>& all, const read_options& options) {
    byte_blocks blocks = blocks_of(all);
    diagnostic_list list;
    read_result result;
    make_words_of_bytes(
        blocks, options,
        [](std::uint64_t address) {
            return span{address % 16, 1};
        },
        list, result);
    finish_byte_reading(file_of_bytes, options, list, result);
    return result;
}

std::string message_and_hint(const read_result& result) {
    return result.diagnostics.at(0).message + "|" + result.diagnostics.at(0).hint;
}

TEST(WordsOfBytes, AreBytesWithoutAWidth) {
    const read_result result = words_of({{0, "\x12\x34"}, {5, "\xFF"}}, {});
    EXPECT_EQ(set_words_of(result), "0=12 1=34 5=FF");
    EXPECT_EQ(result.image->depth(), 6U);
    EXPECT_EQ(result.facts.unit, address_unit::byte);
    EXPECT_EQ(shown_report(result), "");
}

TEST(WordsOfBytes, BeyondTheDepthAreLeftOut) {
    read_options options;
    options.depth = 2;
    options.keep_going = true;
    EXPECT_EQ(set_words_of(words_of({{0, "\x12"}, {1, "\x34\x56"}, {5, "\xFF"}}, options)), "0=12 1=34");
}

TEST(WordsOfBytes, ThatAreIncompleteAreOneDiagnostic) {
    std::vector<placed> halves;
    for (std::uint64_t address = 0; address < 12; ++address) {
        halves.push_back({2 * address, "\x12"});
    }
    const read_result result = words_of(halves, bytes_as(16, byte_order::big));
    EXPECT_EQ(shown_report(result), "broken incomplete-word 1:1+1 x12\n");
    EXPECT_EQ(result.diagnostics.at(0).more.size(), 9U);
}

TEST(WordsOfBytes, PlacesAreOnlyLookedForIfTheyAreShown) {
    std::vector<placed> differing;
    std::vector<placed> halves;
    std::vector<placed> wide;
    for (std::uint64_t address = 0; address < 24; address += 2) {
        differing.push_back({address, "\x01"});
        differing.push_back({address, "\x02"});
        halves.push_back({address, "\x01"});
        wide.push_back({address, "\xFF\xFF"});
    }
    const std::vector<std::pair<std::vector<placed>, read_options>> faulty = {
        {differing, {}}, {halves, bytes_as(16, byte_order::big)}, {wide, bytes_as(12, byte_order::big)}};
    for (const auto& [all, options] : faulty) {
        byte_blocks blocks = blocks_of(all);
        diagnostic_list list;
        read_result result;
        std::size_t calls = 0;
        make_words_of_bytes(
            blocks, options,
            [&calls](std::uint64_t) {
                ++calls;
                return span();
            },
            list, result);
        finish_byte_reading(file_of_bytes, options, list, result);
        ASSERT_EQ(result.diagnostics.size(), 1U);
        EXPECT_EQ(result.diagnostics[0].count, 12U);
        EXPECT_EQ(calls, 10U);
    }
}

TEST(WordsOfBytes, AnIncompleteWordIsShownAtTheFirstOfItsBytes) {
    const read_result result =
        words_of({{0, "\x01\x02\x03\x04"}, {6, "\x01\x02"}}, bytes_as(32, byte_order::big));
    EXPECT_EQ(shown_report(result), "broken incomplete-word 1:7+1 x1\n");
}

TEST(WordsOfBytes, TakeTheOrderThatIsGiven) {
    EXPECT_EQ(set_words_of(words_of({{2, "\x12\x34\x56\x78"}}, bytes_as(16, byte_order::big))),
              "1=1234 2=5678");
    EXPECT_EQ(set_words_of(words_of({{2, "\x12\x34\x56\x78"}}, bytes_as(16, byte_order::little))),
              "1=3412 2=7856");
}

TEST(WordsOfBytes, WithoutAnOrderBothFirstWordsAreShown) {
    read_options options;
    options.width = 24;
    const read_result result = words_of({{0, "\x12\x34\x56\x78\x9A\xBC"}}, options);
    EXPECT_EQ(message_and_hint(result), "the byte order of words of 24 bits is unknown|add "
                                        "--endian little (first word 563412) or big (123456)");
    EXPECT_EQ(result.diagnostics[0].option, "--endian little");
    EXPECT_FALSE(result.image);
    EXPECT_EQ(message_and_hint(words_of({{0, "\x12"}}, options)),
              "the byte order of words of 24 bits is unknown|add "
              "--endian little (first word 000012) or big (120000)");
}

TEST(WordsOfBytes, AHighFirstAddressNeedsABase) {
    const std::vector<placed> high = {{0x80000002, "\x01"}};
    EXPECT_EQ(message_and_hint(words_of(high, {})), "the addresses begin at 80000002|use --base 0x80000002 "
                                                    "to make that word 0, or --base 0 to keep the addresses");
    EXPECT_EQ(words_of(high, {}).diagnostics[0].option, "--base 0x80000002");
    read_options options;
    for (const std::uint64_t base : {0U, 0x100U}) {
        options.base = base != 0 ? std::optional(base) : std::nullopt;
        EXPECT_EQ(set_words_of(words_of({{base + 0xFFFFFF, "\x01"}}, options)), "16777215=01");
        EXPECT_EQ(shown_report(words_of({{base + 0x1000000, "\x01"}}, options)),
                  "broken base-needed 1:1+1 x1\n");
    }
    options.base = 0x80000000;
    EXPECT_EQ(set_words_of(words_of(high, options)), "2=01");
    options.base = 0;
    EXPECT_EQ(set_words_of(words_of(high, options)), "2147483650=01");
    options.base.reset();
    options.depth = 0x80000003;
    EXPECT_EQ(set_words_of(words_of(high, options)), "2147483650=01");
}

TEST(WordsOfBytes, NothingMayBeBelowTheBase) {
    read_options options;
    options.base = 0x8000;
    const read_result result = words_of({{0x7FFF, "\x01\x02"}}, options);
    EXPECT_EQ(shown_report(result), "broken below-base 1:16+1 x1\n");
    EXPECT_EQ(result.diagnostics[0].message, "address 7FFF is below the base 8000");
    options.keep_going = true;
    EXPECT_EQ(set_words_of(words_of({{0x7FFF, "\x01\x02"}}, options)), "none");
}

TEST(WordsOfBytes, ByteThatIsSetAgainIsSuspectWhenItDiffers) {
    const read_result result = words_of({{0, "\x01\x02\x03"}, {1, "\x02\x04"}, {9, "\x05"}}, {});
    EXPECT_EQ(shown_report(result), "suspect overwritten-byte 1:2+1 x1\n");
    EXPECT_EQ(message_and_hint(result),
              "address 1 is set twice, with different bytes|the later value is used");
    EXPECT_EQ(set_words_of(result), "0=01 1=02 2=04 9=05");
    EXPECT_EQ(shown_report(words_of({{0, "\x01\x02"}, {1, "\x02"}}, {})), "");
}

TEST(WordsOfBytes, AWordOfWhichBytesAreMissingIsBroken) {
    read_options options = bytes_as(32, byte_order::big);
    const std::vector<placed> parts = {{0, "\x01\x02"}, {3, "\x04"}, {4, "\x05\x06\x07\x08\x09"}};
    const read_result result = words_of(parts, options);
    EXPECT_EQ(shown_report(result), "broken incomplete-word 1:1+1 x2\n");
    EXPECT_EQ(message_and_hint(result),
              "word at address 0 has 3 of 4 bytes|use --pad VALUE for the missing bytes");
    EXPECT_EQ(result.diagnostics[0].option, "--pad 0");
    EXPECT_FALSE(result.image);
    EXPECT_TRUE(result.unreadable.empty());

    options.keep_going = true;
    const read_result kept = words_of(parts, options);
    EXPECT_EQ(set_words_of(kept), "1=05060708");
    ASSERT_EQ(kept.unreadable.size(), 2U);
    EXPECT_EQ(kept.unreadable[0].first, 0U);
    EXPECT_EQ(kept.unreadable[1].first, 2U);

    options.pad = 0xFF;
    EXPECT_EQ(set_words_of(words_of(parts, options)), "0=0102FF04 1=05060708 2=09FFFFFF");
}

TEST(WordsOfBytes, BesideFaultsAreMadeOnlyToKeepGoing) {
    for (const bool has_fault : {false, true}) {
        for (const bool keep_going : {false, true}) {
            byte_blocks blocks;
            blocks.add(0, "\x12");
            read_options options;
            options.keep_going = keep_going;
            diagnostic_list list;
            read_result result;
            make_words_beside_faults(
                has_fault, blocks, options, [](std::uint64_t) { return span(); }, list, result);
            EXPECT_EQ(result.image.has_value(), !has_fault || keep_going) << has_fault << keep_going;
        }
    }
}

TEST(WordsOfBytes, SurplusBitsMustBeZero) {
    const read_result result = words_of({{0, "\x0A\xBC\x1A\xBC\xFF\xFF"}}, bytes_as(12, byte_order::big));
    EXPECT_EQ(shown_report(result), "broken surplus-bits 1:3+1 x2\n");
    EXPECT_EQ(message_and_hint(result), "word at address 1 is 1ABC, which does not fit 12 bits|the "
                                        "bits above the width must be 0");
    EXPECT_EQ(set_words_of(words_of({{0, "\xBC\x0A"}}, bytes_as(12, byte_order::little))), "0=ABC");
}

TEST(WordsOfBytes, TheFirstWordThatIsTooWideIsShownEvenIfItIsInTwoPieces) {
    const read_result result = words_of({{0, "\xFF"}, {1, "\xFF\xEE\xEE"}}, bytes_as(12, byte_order::big));
    EXPECT_EQ(shown_report(result), "broken surplus-bits 1:1+1 x2\n");
    EXPECT_EQ(result.diagnostics[0].message, "word at address 0 is FFFF, which does not fit 12 bits");
}

TEST(WordsOfBytes, ThatCannotBeReadAreListedInOrderOfAddresses) {
    read_options options = bytes_as(12, byte_order::big);
    options.keep_going = true;
    const read_result result = words_of({{0, "\xFF\xFF"}, {2, "\x01"}, {4, "\xFF\xFF\x01\x02"}}, options);
    EXPECT_EQ(set_words_of(result), "3=102");
    EXPECT_EQ(result.unreadable, (std::vector<address_range>{{0, 0}, {1, 1}, {2, 2}}));
}

TEST(WordsOfBytes, WholeWordsStayBytesWhereTheSurplusBitsAreZero) {
    const std::vector<placed> all = {{0, "\x01\x23\x0F\xFF"sv}, {8, "\x04\x56"sv}};
    const read_result result = words_of(all, {.width = 12, .order = byte_order::big});
    ASSERT_TRUE(result.image);
    EXPECT_NE(result.image->words().bytes(), nullptr);
    EXPECT_EQ((*result.image)[1], word::of(0xFFF, 12));
    EXPECT_EQ((*result.image)[2], std::nullopt);
    EXPECT_EQ((*result.image)[4], word::of(0x456, 12));
}

TEST(WordsOfBytes, BorderOnWordsFromTheBaseOn) {
    read_options options = bytes_as(24, byte_order::big);
    options.base = 1;
    const read_result whole = words_of({{4, "\x01\x02\x03"}}, options);
    EXPECT_EQ(set_words_of(whole), "1=010203");
    EXPECT_NE(whole.image->words().bytes(), nullptr);
    EXPECT_EQ(shown_report(words_of({{5, "\x01\x02\x03"}}, options)), "broken incomplete-word 1:6+1 x2\n");
}

TEST(WordsOfBytes, WholeWordsAreCopiedUnlessTheyHaveAKeeper) {
    const read_options options = bytes_as(16, byte_order::big);
    for (const bool has_keeper : {false, true}) {
        const auto contents = std::make_shared<std::string>("abcdef");
        byte_blocks blocks(has_keeper ? contents : nullptr);
        blocks.add(0, *contents);
        diagnostic_list list;
        read_result result;
        make_words_of_bytes(
            blocks, options, [](std::uint64_t) { return span(); }, list, result);
        ASSERT_TRUE(result.image);
        const std::string_view held = result.image->words().bytes()->blocks().front().bytes;
        EXPECT_EQ(held, "abcdef");
        EXPECT_EQ(held.data() == contents->data(), has_keeper);
    }
}

TEST(WordsOfBytes, TheFirstByteBeyondTheDepthIsShown) {
    read_options options;
    options.depth = 2;
    EXPECT_EQ(message_and_hint(words_of({{0, "\x01\x02"}, {2, "\x03"}, {9, "\x04"}}, options)),
              "address 2 is beyond the depth 2 (0 to 1)|needs --depth 10 or more");
    options.base = 0x10;
    EXPECT_EQ(message_and_hint(words_of({{0x15, "\x03"}}, options)),
              "address 5 is beyond the depth 2 (0 to 1)|needs --depth 6 or more");
}

TEST(WordsOfBytes, ADepthIsALimit) {
    read_options options = bytes_as(16, byte_order::big);
    options.depth = 2;
    const read_result result = words_of({{2, "\x01\x02\x03\x04\x05\x06"}}, options);
    EXPECT_EQ(shown_report(result), "broken beyond-depth 1:5+1 x1\n");
    EXPECT_EQ(message_and_hint(result), "address 2 is beyond the depth 2 (0 to 1)|needs --depth 4 or more");
    EXPECT_EQ(words_of({{0, "\x01\x02"}}, options).image->depth(), 2U);
}

TEST(WordsOfBytes, AddressesBeyondTheDeepestMemoryAreBroken) {
    read_options options;
    options.base = 0;
    const read_result result = words_of({{0xFFFFFFFF, "\x01\x02"}}, options);
    EXPECT_EQ(shown_report(result), "broken address-outside 1:1+1 x1\n");
    EXPECT_EQ(result.diagnostics[0].message, "address 100000000 is beyond the largest, FFFFFFFF");
    options.base = ~std::uint64_t{0} - 4;
    EXPECT_EQ(set_words_of(words_of({{*options.base + 1, "\x01\x02"}}, options)), "1=01 2=02");
}

TEST(WordsOfBytes, NoByteNeedsADepth) {
    const read_result result = words_of({}, {});
    EXPECT_EQ(message_and_hint(result),
              "the file holds no byte|use --depth WORDS to read it as a memory without words");
    EXPECT_FALSE(result.image);
    read_options options;
    options.depth = 3;
    const read_result empty = words_of({}, options);
    EXPECT_EQ(shown_report(empty), "suspect no-words 0:0+0 x1\n");
    EXPECT_EQ(empty.image->depth(), 3U);
    EXPECT_EQ(empty.image->count_set(), 0U);
}

TEST(WordsOfBytes, AreThoseThatTheBytesWereMadeOf) {
    std::mt19937 random(6);
    for (std::uint32_t width = 1; width <= 300; ++width) {
        const memory_image image = kvrimage_tests::random_byte_image(random, width, 300);
        const std::uint64_t base = random() % 3 == 0 ? 0 : random() % 100000;
        read_options options = bytes_as(width, width % 3 == 0 ? byte_order::big : byte_order::little);
        options.base = base;
        options.depth = image.depth();
        byte_blocks blocks;
        std::deque<std::string> kept;
        for_each_byte_block(image, *options.order, [&](std::uint64_t address, std::string_view bytes) {
            // In pieces of any size, like the records of a file.
            while (!bytes.empty()) {
                const std::size_t size = std::min<std::size_t>(bytes.size(), 1 + random() % 50);
                kept.emplace_back(bytes.substr(0, size));
                blocks.add(base + address, kept.back());
                address += size;
                bytes.remove_prefix(size);
            }
        });
        diagnostic_list list;
        read_result result;
        make_words_of_bytes(
            blocks, options, [](std::uint64_t) { return span(); }, list, result);
        ASSERT_TRUE(result.image) << width;
        EXPECT_TRUE(*result.image == image) << width;
        EXPECT_FALSE(list.has_broken()) << width;
    }
}

TEST(WordsOfBytes, APadCompletesWordsAtRandom) {
    std::mt19937 random(8);
    for (int round = 0; round < 300; ++round) {
        const auto bytes_per_word = static_cast<std::uint32_t>(1 + random() % 5);
        read_options options =
            bytes_as(8 * bytes_per_word, random() % 2 == 0 ? byte_order::big : byte_order::little);
        options.pad = static_cast<std::uint8_t>(random());
        std::map<std::uint64_t, char> bytes;
        for (auto count = 1 + random() % 30; count > 0; --count) {
            bytes[random() % 60] = static_cast<char>(random());
        }
        byte_blocks blocks;
        for (const auto& [address, byte] : bytes) {
            blocks.add(address, {&byte, 1});
        }
        diagnostic_list list;
        read_result result;
        make_words_of_bytes(
            blocks, options, [](std::uint64_t) { return span(); }, list, result);
        ASSERT_TRUE(result.image);
        for (std::uint64_t address = 0; address < result.image->depth(); ++address) {
            std::string digits;
            bool is_set = false;
            for (std::uint32_t index = 0; index < bytes_per_word; ++index) {
                const auto found = bytes.find(address * bytes_per_word + index);
                is_set = is_set || found != bytes.end();
                const int value =
                    found != bytes.end() ? static_cast<unsigned char>(found->second) : *options.pad;
                constexpr std::string_view all = "0123456789ABCDEF";
                const std::string pair = {all[static_cast<std::size_t>(value / 16)],
                                          all[static_cast<std::size_t>(value % 16)]};
                digits = options.order == byte_order::big ? digits + pair : pair + digits;
            }
            const auto value = (*result.image)[address];
            ASSERT_EQ(value.has_value(), is_set);
            if (is_set) {
                EXPECT_EQ(*value->to_text(radix::hex), digits);
            }
        }
    }
}

} // namespace
