#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/memory_file.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/io/failing_file.h"
#include "tests/memory/io/failing_read.h"
#include "tests/memory/seen_fault.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {
namespace {

using kvr_test::error_messages;
using kvr_test::hex_record_line;
using kvr_test::seen_fault;
using testing::ElementsAre;
using testing::IsEmpty;

line_source source_of(std::string_view text) {
    return line_source(text, hex_record_walk::longest_line);
}

/// A memory of @p word_size bits that reads texts instead of files.
class text_reader {
public:
    explicit text_reader(std::uint32_t word_size) : memory(nullptr) { memory.word_size = word_size; }

    /// The fault of the first pass over @p text.
    std::optional<seen_fault> first_pass(std::string_view text, read_observer* observer = nullptr) {
        line_source source = source_of(text);
        const std::optional<hex_read_stop> stop = find_address_space(memory, source, observer);
        return stop ? std::optional<seen_fault>(stop->fault) : std::nullopt;
    }

    std::optional<hex_read_stop> second_pass(std::string_view text, read_observer* observer = nullptr) {
        line_source source = source_of(text);
        return store_hex_records(memory, source, observer);
    }

    void read(std::string_view text) {
        ASSERT_FALSE(first_pass(text));
        ASSERT_FALSE(second_pass(text));
    }

    [[nodiscard]] std::vector<std::string> words() const {
        std::vector<std::string> texts;
        for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
            texts.emplace_back(memory.data_words[address]);
        }
        return texts;
    }

    hex_memory memory;
};

/// The words of @p word_size bits in @p text.
std::vector<std::string> words_of(std::string_view text, std::uint32_t word_size) {
    text_reader reader(word_size);
    reader.read(text);
    return reader.words();
}

const std::string end_line = ":00000001FF\n";

constexpr std::string_view two_byte_words = ":020000040000FA\n:0400000012345678E8\n:00000001FF\n";

TEST(HexReader, FourBytesAreFourWordsOf8Bits) {
    text_reader reader(8);
    reader.read(two_byte_words);
    EXPECT_THAT(reader.words(), ElementsAre("12", "34", "56", "78"));
    EXPECT_EQ(reader.memory.lowest_address, 0U);
    EXPECT_EQ(reader.memory.highest_address, 3U);
}

TEST(HexReader, FourBytesAreTwoWordsOf16Bits) {
    EXPECT_THAT(words_of(two_byte_words, 16), ElementsAre("1234", "5678"));
}

TEST(HexReader, FourBytesAreOneWordOf32Bits) {
    EXPECT_THAT(words_of(two_byte_words, 32), ElementsAre("12345678"));
}

TEST(HexReader, FinalNewlineAndCarriageReturnsDoNotMatter) {
    EXPECT_THAT(words_of(":0400000012345678E8\n:00000001FF", 16), ElementsAre("1234", "5678"));
    EXPECT_THAT(words_of(":0400000012345678E8\r\n:00000001FF\r\n", 16), ElementsAre("1234", "5678"));
}

TEST(HexReader, BlanksWithinRecordsDoNotMatter) {
    EXPECT_THAT(words_of(" : 04 0000 00 12 34 56 78 E8\n:\t00000001FF", 16), ElementsAre("1234", "5678"));
}

TEST(HexReader, DigitsKeepTheirLetterCase) {
    EXPECT_THAT(words_of(":04001000AabBcCDdDE\n:00000001FF", 16).back(), "cCDd");
    EXPECT_THAT(words_of(":02000000abCd86\n:00000001FF", 16), ElementsAre("abCd"));
}

TEST(HexReader, WordsOf12BitsLoseTheDigitThatPadsTheWord) {
    EXPECT_THAT(words_of(":020000000ABC38\n:00000001FF", 12), ElementsAre("ABC"));
}

TEST(HexReader, TwoWordsOf12BitsInARecordLoseTheirPlaces) {
    EXPECT_THAT(words_of(":040000000ABC0DEF3A\n:00000001FF", 12), ElementsAre("C0D", "0"));
}

TEST(HexReader, WordsOf9Bits) {
    EXPECT_THAT(words_of(":0200000001FFFE\n:00000001FF", 9), ElementsAre("1FF"));
    EXPECT_THAT(words_of(":0400000001FF0022DA\n:00000001FF", 9), ElementsAre("FF0", "022"));
}

TEST(HexReader, WordsOf1To7BitsKeepTheLastDigits) {
    EXPECT_THAT(words_of(":0400000012345678E8\n:00000001FF", 4), ElementsAre("2", "4", "6", "8"));
    EXPECT_THAT(words_of(":0400000012345678E8\n:00000001FF", 1), ElementsAre("2", "4", "6", "8"));
    EXPECT_THAT(words_of(":0100000012ED\n:00000001FF", 5), ElementsAre("12"));
    EXPECT_THAT(words_of(":0100000012ED\n:00000001FF", 7), ElementsAre("12"));
}

TEST(HexReader, WordsOf16BitsWithAnOddByteCountLoseTheFirstByte) {
    EXPECT_THAT(words_of(":0300000012345661\n:00000001FF", 16), ElementsAre("3456", "0"));
}

TEST(HexReader, RecordShorterThanAWordIsNotStored) {
    EXPECT_THAT(words_of(":020000001234B8\n:00000001FF", 32), ElementsAre("0"));
}

TEST(HexReader, WordWiderThanAnyRecordIsNotStored) {
    EXPECT_THAT(words_of(":020000001234B8\n:00000001FF", 0xFFFFFFFF), ElementsAre("0"));
}

TEST(HexReader, RecordAtItsAddressLeavesTheInitializeValueBeforeIt) {
    text_reader reader(8);
    reader.memory.memory_initialize_value = "none";
    reader.read(":020002001122C9\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("none", "none", "11", "22"));
    EXPECT_EQ(reader.memory.lowest_address, 2U);
    EXPECT_EQ(reader.memory.highest_address, 3U);
}

TEST(HexReader, LaterRecordReplacesTheWordsOfAnEarlierOne) {
    EXPECT_THAT(words_of(":0400000012345678E8\n:01000100AB53\n:00000001FF", 8),
                ElementsAre("12", "AB", "56", "78"));
}

TEST(HexReader, RecordWithoutDataAtAnAddressSpansTheWordsBeforeIt) {
    text_reader reader(8);
    reader.read(":00000500FB\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("0", "0", "0", "0", "0"));
    EXPECT_EQ(reader.memory.lowest_address, 5U);
    EXPECT_EQ(reader.memory.highest_address, 4U);
}

TEST(HexReader, RecordWithoutDataAtAddress0EndsAtTheHighestAddressThereIs) {
    text_reader reader(8);
    reader.read(":0000000000\n:0100000012ED\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("12"));
    EXPECT_EQ(reader.memory.highest_address, 0xFFFFFFFFU);
}

TEST(HexReader, ExtendedSegmentAddressMovesTheRecord) {
    text_reader reader(8);
    reader.read(":020000021000EC\n:01000100AB53\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 0x10002U);
    EXPECT_EQ(reader.memory.data_words[0x10001], "AB");
    EXPECT_EQ(reader.memory.data_words[0x10000], "0");
    EXPECT_EQ(reader.memory.lowest_address, 1U);
    EXPECT_EQ(reader.memory.highest_address, 1U);
}

TEST(HexReader, ExtendedLinearAddressMovesTheRecord) {
    text_reader reader(8);
    reader.read(":02000004000AF0\n:01000100AB53\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 0xA0002U);
    EXPECT_EQ(reader.memory.data_words[0xA0001], "AB");
}

TEST(HexReader, SegmentsAreUnitsOf16Words) {
    text_reader reader(8);
    reader.read(":020000020001FB\n:0100000011EE\n:020000020002FA\n:0100000022DD\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 33U);
    EXPECT_EQ(reader.memory.data_words[16], "11");
    EXPECT_EQ(reader.memory.data_words[32], "22");
}

TEST(HexReader, DataOnALowerPageAfterTheTopOneIsStoredWhereItFits) {
    text_reader reader(8);
    reader.read(":020000020002FA\n:0100000022DD\n:020000020001FB\n:01000100AB53\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 33U);
    EXPECT_EQ(reader.memory.data_words[32], "22");
    EXPECT_EQ(reader.memory.data_words[17], "AB");
}

// The size of the memory is determined by the top page; words of a lower page beyond it are not counted.
TEST(HexReader, WordsOutsideTheStoreAreDropped) {
    text_reader reader(8);
    reader.read(":020000020001FB\n:0100000011EE\n:020000020000FC\n:04001000AABBCCDDDE\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 17U);
    EXPECT_EQ(reader.memory.data_words[16], "AA");
    EXPECT_EQ(reader.memory.highest_address, 0x13U);
}

TEST(HexReader, HigherPageWithoutDataDoesNotExtendTheMemory) {
    EXPECT_THAT(words_of(":0100000012ED\n:02000004000AF0\n:00000001FF", 8), ElementsAre("12"));
}

TEST(HexReader, PendingHigherPageIsEnteredWithTheAddressThatCameLast) {
    EXPECT_THAT(words_of(":02000004000AF0\n:020000040000FA\n:0100000012ED\n:00000001FF", 8),
                ElementsAre("12"));
}

TEST(HexReader, SegmentAndLinearAddressAddUpInTheSizeButNotInTheAddressOfAWord) {
    text_reader reader(8);
    reader.read(":020000040001F9\n:020000020001FB\n:0100000011EE\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 65536U + 16 + 1);
    EXPECT_EQ(reader.memory.data_words[16], "11");
    EXPECT_EQ(reader.memory.data_words[65536 + 16], "0");
}

TEST(HexReader, OffsetOfTheReadBeforeLingers) {
    text_reader reader(8);
    reader.read(":020000020001FB\n:0100000011EE\n:00000001FF");
    EXPECT_EQ(reader.memory.address_offset, 16U);
    reader.read(":0400000012345678E8\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("0", "0", "0", "0"));
    EXPECT_EQ(reader.memory.address_offset, 16U);
}

TEST(HexReader, SecondReadDoesNotClearTheWordsOfTheFirst) {
    text_reader reader(8);
    reader.read(":0400000012345678E8\n:00000001FF");
    reader.read(":01000100AB53\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("12", "AB"));
    reader.memory.memory_initialize_value = "F";
    reader.read(":0100030055A7\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("12", "AB", "F", "55"));
}

TEST(HexReader, StartAddressesAreIgnored) {
    EXPECT_THAT(words_of(":0400000300003800C1\n:0100000012ED\n:04000005000000CD2A\n:00000001FF", 8),
                ElementsAre("12"));
}

TEST(HexReader, LinesAfterTheEndRecordAreNotRead) {
    EXPECT_THAT(words_of(":0100000012ED\n:00000001FF\n:01000100AB53\n:broken\n", 8), ElementsAre("12"));
}

TEST(HexReader, TwoRecordsSpanNearly4GiWords) {
    text_reader reader(8);
    reader.read(":0100000012ED\n:02000004FFFFFC\n:01FFFE0034CE\n:00000001FF");
    ASSERT_EQ(reader.memory.data_words.size(), 0xFFFFFFFFU);
    EXPECT_EQ(reader.memory.data_words[0], "12");
    EXPECT_EQ(reader.memory.data_words[1], "0");
    EXPECT_EQ(reader.memory.data_words[0xFFFFFFFE], "34");
}

TEST(HexReader, SpanOf4GiWordsWrapsToNone) {
    text_reader reader(8);
    reader.read(":02000004FFFFFC\n:01FFFF0012EF\n:00000001FF");
    EXPECT_EQ(reader.memory.data_words.size(), 0U);
}

TEST(HexReader, AddressesOfARecordWrapAt32Bits) {
    text_reader reader(8);
    reader.read(":02000004FFFFFC\n:02FFFF001234BA\n:00000001FF");
    EXPECT_THAT(reader.words(), ElementsAre("34"));
}

struct stop_case {
    std::string_view text;
    seen_fault fault;
};

class HexReaderStops : public testing::TestWithParam<stop_case> {};

TEST_P(HexReaderStops, InTheFirstPass) {
    text_reader reader(8);
    EXPECT_EQ(reader.first_pass(GetParam().text), GetParam().fault) << GetParam().text;
    EXPECT_THAT(reader.words(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    AtFaultyRecords, HexReaderStops,
    testing::Values(stop_case{":0400000012345678E9\n:00000001FF", {fault_code::checksum, 1, 18, 2}},
                    stop_case{"\n:0100000012ED\n:0100000600F9\n:00000001FF",
                              {fault_code::record_type, 3, 8, 2}},
                    stop_case{":\n:00000001FF", {fault_code::record_too_short, 1, 1, 1}},
                    stop_case{":0200000012ED\n:00000001FF", {fault_code::record_length, 1, 2, 2}}));
INSTANTIATE_TEST_SUITE_P(
    WithoutEndRecord, HexReaderStops,
    testing::Values(stop_case{":0100000012ED\n", {fault_code::missing_end_record, 2, 0, 0}},
                    stop_case{":0100000012ED", {fault_code::missing_end_record, 1, 0, 0}},
                    stop_case{":0100000012ED\nx:00000001FF\n", {fault_code::missing_end_record, 3, 0, 0}},
                    stop_case{"", {fault_code::missing_end_record, 1, 0, 0}}));
INSTANTIATE_TEST_SUITE_P(WithoutData, HexReaderStops,
                         testing::Values(stop_case{":00000001FF\n", {fault_code::no_data, 1, 1, 11}},
                                         stop_case{"text\n :00000001FF", {fault_code::no_data, 2, 2, 11}},
                                         stop_case{":0000000000\n:00000001FF",
                                                   {fault_code::no_data, 2, 1, 11}},
                                         stop_case{":020000040001F9\n:00000001FF\n:0100000012ED",
                                                   {fault_code::no_data, 2, 1, 11}}));

TEST(HexReader, ColonAfterAnythingButBlanksIsNoRecord) {
    EXPECT_THAT(words_of(" \t:0100000012ED\nx:01000100AB53\n :00000001FF", 8), ElementsAre("12"));
}

TEST(HexReader, FailedFirstPassLeavesTheAddressesSeenSoFar) {
    text_reader reader(8);
    EXPECT_TRUE(reader.first_pass(":020002001122C9\n:broken"));
    EXPECT_EQ(reader.memory.lowest_address, 2U);
    EXPECT_EQ(reader.memory.highest_address, 3U);
    EXPECT_TRUE(reader.first_pass(":00000001FF"));
    EXPECT_EQ(reader.memory.lowest_address, 0xFFFFFFFFU);
    EXPECT_EQ(reader.memory.highest_address, 0U);
}

TEST(HexReader, FailedFirstPassLeavesTheWords) {
    text_reader reader(8);
    reader.read(":0400000012345678E8\n:00000001FF");
    EXPECT_TRUE(reader.first_pass(":0100000012ED\n"));
    EXPECT_THAT(reader.words(), ElementsAre("12", "34", "56", "78"));
}

TEST(HexReader, WordSize0RefusesTheFirstDataRecord) {
    text_reader reader(0);
    EXPECT_EQ(reader.first_pass("\n :0100000012ED\n:00000001FF"),
              (seen_fault{fault_code::word_size_zero, 2, 2, 13}));
    EXPECT_EQ(reader.first_pass(":020000040001F9\n:00000001FF"), (seen_fault{fault_code::no_data, 2, 1, 11}));
}

TEST(HexReader, SecondPassDoesNotTestChecksums) {
    text_reader reader(8);
    reader.memory.data_words.resize(2, "0");
    EXPECT_FALSE(reader.second_pass(":0100000012EE\n:00000001FF"));
    EXPECT_THAT(reader.words(), ElementsAre("12", "0"));
}

TEST(HexReader, SecondPassStopsAtAFaultWithTheTextOfItsLine) {
    text_reader reader(8);
    reader.memory.data_words.resize(2, "0");
    const std::optional<hex_read_stop> stop = reader.second_pass(":0100000012ED\n : 01 000006 00 00\n");
    ASSERT_TRUE(stop);
    EXPECT_EQ(seen_fault(stop->fault), (seen_fault{fault_code::record_type, 2, 11, 2}));
    EXPECT_EQ(stop->line_text, ":010000060000");
    EXPECT_THAT(reader.words(), ElementsAre("12", "0"));
}

/// Lets each allocation of @p store fail in turn. It must throw then, or store the words nevertheless.
template <class Store>
void expect_words_or_exception(Store store) {
    bool thrown = true;
    for (std::size_t failure = 1; thrown; ++failure) {
        text_reader reader(8);
        reader.memory.data_words.resize(4, "0");
        thrown = kvr_test::throws_without_allocation(failure, [&] { store(reader); });
        if (!thrown) {
            EXPECT_GT(failure, 1U);
            EXPECT_THAT(reader.words(), ElementsAre("12", "34", "56", "78"));
        }
    }
}

TEST(HexReader, LackOfMemoryForWordsIsAnExceptionWhereverTheReadEnds) {
    for (const std::string last_line : {":00000001FF\n", ":broken\n"}) {
        SCOPED_TRACE(last_line);
        expect_words_or_exception([&](text_reader& reader) {
            static_cast<void>(reader.second_pass(":0400000012345678E8\n" + last_line));
        });
    }
    expect_words_or_exception([](text_reader& reader) { store_hex_words(reader.memory, 0, "12345678", 4); });
}

TEST(HexReader, SecondPassNeedsTheEndRecord) {
    text_reader reader(8);
    const std::optional<hex_read_stop> stop = reader.second_pass(":0100000012ED");
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->fault.code, fault_code::missing_end_record);
}

struct trimming_case {
    std::uint32_t word_size;
    std::uint32_t record_bytes;
    std::string_view data;
    std::vector<std::string> words;
};

class StoreHexWords : public testing::TestWithParam<trimming_case> {};

TEST_P(StoreHexWords, TrimsDigits) {
    text_reader reader(GetParam().word_size);
    reader.memory.data_words.resize(4, "-");
    std::vector<std::string> expected = GetParam().words;
    EXPECT_EQ(store_hex_words(reader.memory, 0, GetParam().data, GetParam().record_bytes), expected.size());
    expected.resize(4, "-");
    EXPECT_EQ(reader.words(), expected);
}

INSTANTIATE_TEST_SUITE_P(WholeWords, StoreHexWords,
                         testing::Values(trimming_case{8, 2, "1a2B", {"1a", "2B"}},
                                         trimming_case{16, 2, "1a2B", {"1a2B"}},
                                         trimming_case{24, 3, "123456", {"123456"}},
                                         trimming_case{8, 0, "", {}}));
INSTANTIATE_TEST_SUITE_P(
    PartsOfWords, StoreHexWords,
    testing::Values(trimming_case{12, 2, "0ABC", {"ABC"}}, trimming_case{12, 4, "0ABC0DEF", {"C0D"}},
                    trimming_case{12, 6, "0ABC0DEF0123", {"ABC", "DEF", "123"}},
                    trimming_case{16, 3, "123456", {"3456"}}, trimming_case{20, 3, "012345", {"12345"}},
                    trimming_case{24, 4, "12345678", {"345678"}}, trimming_case{32, 2, "1234", {}},
                    trimming_case{10, 2, "03FF", {"3FF"}}, trimming_case{11, 2, "07FF", {"7FF"}},
                    trimming_case{13, 2, "1FFF", {"1FFF"}}));
// Only invalid records contain such texts.
INSTANTIATE_TEST_SUITE_P(MoreDigitsThanTheRecordSays, StoreHexWords,
                         testing::Values(trimming_case{8, 1, "123456", {"56"}},
                                         trimming_case{16, 1, "12345678", {"5678"}},
                                         trimming_case{8, 0, "1234", {}},
                                         trimming_case{8, 2, "12345", {"23", "45"}},
                                         trimming_case{8, 0xFFFFFFFF, "1234", {"12", "34"}}));
INSTANTIATE_TEST_SUITE_P(OddDigits, StoreHexWords,
                         testing::Values(trimming_case{8, 2, "123", {"23"}},
                                         trimming_case{4, 2, "123", {"2", "3"}}));
INSTANTIATE_TEST_SUITE_P(ExtremeWidths, StoreHexWords,
                         testing::Values(trimming_case{0, 2, "1234", {}},
                                         trimming_case{0xFFFFFFFF, 2, "1234", {}},
                                         trimming_case{0xFFFFFFF8, 255, "1234", {}}));

/// Records the calls and answers faults with the given value.
class noting_observer : public read_observer {
public:
    explicit noting_observer(bool go_on) : answer(go_on) {}

    bool fault(const read_fault& fault, std::string_view text) override {
        faults.emplace_back(fault);
        texts.emplace_back(text);
        return answer;
    }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) override {
        ranges.push_back(std::to_string(first) + "-" + std::to_string(last) + " line " +
                         std::to_string(line));
    }

    std::vector<seen_fault> faults;
    std::vector<std::string> texts;
    std::vector<std::string> ranges;

private:
    bool answer;
};

TEST(HexReaderWithObserver, StopsAtTheFirstFaultOnRequest) {
    text_reader reader(8);
    noting_observer observer(false);
    EXPECT_EQ(reader.first_pass(":0100000012EE\n:broken\n:00000001FF", &observer),
              (seen_fault{fault_code::checksum, 1, 12, 2}));
    EXPECT_THAT(observer.faults, ElementsAre(seen_fault{fault_code::checksum, 1, 12, 2}));
    EXPECT_THAT(observer.texts, ElementsAre(":0100000012EE"));
}

TEST(HexReaderWithObserver, LeavesOutLinesAtFaultInBothPasses) {
    constexpr std::string_view text =
        ":0100000012ED\n:01000100AB54\n:02000004000AF1\n:0100000600F9\n:0100030055A7\n:00000001FF";
    text_reader reader(8);
    noting_observer observer(true);
    EXPECT_FALSE(reader.first_pass(text, &observer));
    EXPECT_FALSE(reader.second_pass(text, &observer));
    EXPECT_THAT(reader.words(), ElementsAre("12", "0", "0", "55"));
    EXPECT_THAT(observer.faults, ElementsAre(seen_fault{fault_code::checksum, 2, 12, 2},
                                             seen_fault{fault_code::checksum, 3, 14, 2},
                                             seen_fault{fault_code::record_type, 4, 8, 2}));
    EXPECT_EQ(reader.memory.address_offset, 0U);
}

TEST(HexReaderWithObserver, GetsTheWordsAndTheirLines) {
    constexpr std::string_view text =
        ":0400000012345678E8\n\n:0000000000\n:020000020001FB\n:0100000011EE\n:00000001FF";
    text_reader reader(16);
    noting_observer observer(true);
    EXPECT_FALSE(reader.first_pass(text, &observer));
    EXPECT_FALSE(reader.second_pass(text, &observer));
    EXPECT_THAT(observer.ranges, ElementsAre("0-1 line 1"));
    text_reader bytes(8);
    EXPECT_FALSE(bytes.first_pass(text, &observer));
    EXPECT_FALSE(bytes.second_pass(text, &observer));
    EXPECT_THAT(observer.ranges, ElementsAre("0-1 line 1", "0-3 line 1", "16-16 line 5"));
}

TEST(HexReaderWithObserver, MissingEndRecordAndMissingDataEndTheReadInAnyCase) {
    text_reader reader(8);
    noting_observer observer(true);
    EXPECT_EQ(reader.first_pass(":0100000012ED\n", &observer),
              (seen_fault{fault_code::missing_end_record, 2, 0, 0}));
    EXPECT_EQ(reader.first_pass(":00000001FF\n", &observer), (seen_fault{fault_code::no_data, 1, 1, 11}));
    EXPECT_THAT(observer.faults, ElementsAre(seen_fault{fault_code::missing_end_record, 2, 0, 0},
                                             seen_fault{fault_code::no_data, 1, 1, 11}));
}

TEST(HexReaderWithObserver, MissingEndRecordHasTheTextOfTheLastLine) {
    constexpr std::string_view last = ":020000040000FA";
    text_reader reader(8);
    noting_observer observer(true);
    EXPECT_TRUE(reader.first_pass(":0100000012ED\n" + std::string(last), &observer));
    EXPECT_THAT(observer.texts, ElementsAre(last));
}

TEST(HexReaderWithObserver, WordsAreInTheStoreWhenTheyAreReported) {
    class looking_observer : public read_observer {
    public:
        explicit looking_observer(const word_store& store) : words_read(store) {}
        bool fault(const read_fault& /*fault*/, std::string_view /*text*/) override { return true; }
        void words(std::uint64_t first, std::uint64_t /*last*/, std::uint64_t /*line*/) override {
            seen.emplace_back(words_read[static_cast<std::uint32_t>(first)]);
        }
        const word_store& words_read;
        std::vector<std::string> seen;
    };
    text_reader reader(8);
    looking_observer observer(reader.memory.data_words);
    constexpr std::string_view text = ":0100000012ED\n:0100010034CA\n:00000001FF\n";
    EXPECT_FALSE(reader.first_pass(text, &observer));
    EXPECT_FALSE(reader.second_pass(text, &observer));
    EXPECT_THAT(observer.seen, ElementsAre("12", "34"));
}

TEST(HexReaderWithObserver, WordSize0IsAFaultOfEveryDataRecord) {
    text_reader reader(0);
    noting_observer observer(true);
    EXPECT_TRUE(reader.first_pass(":0100000012ED\n:01000100AB53\n:00000001FF\n", &observer));
    EXPECT_THAT(observer.faults, ElementsAre(seen_fault{fault_code::word_size_zero, 1, 1, 13},
                                             seen_fault{fault_code::word_size_zero, 2, 1, 13},
                                             seen_fault{fault_code::no_data, 3, 1, 11}));
}

#if defined(__GLIBC__)

/// Reads @p file into @p memory.
bool read_failing_file(hex_memory& memory, failing_file& file, read_observer* observer = nullptr) {
    line_source source(file.open(), hex_record_walk::longest_line);
    return read_hex_lines(memory, source, observer);
}

/// Data records that fill more than two blocks of a line source, and the end record.
std::string many_records() {
    std::string text;
    while (text.size() < 2 * line_source::block_size) {
        text += ":0400000012345678E8\n";
    }
    return text + ":00000001FF\n";
}

TEST(HexReaderOfAFileThatFails, FirstPassEndsTheReadAsIfTheFileCouldNotBeOpened) {
    KVR_MEMORY_FILE owner;
    hex_memory memory(&owner);
    memory.file_name = "words.hex";
    failing_file file{.content = ":0400000012345678E8\n:0400000012", .error_at = 30};
    EXPECT_FALSE(read_failing_file(memory, file));
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_EQ(memory.error_state, ERROR_STATE_NONE);
    EXPECT_TRUE(memory.data_words.empty());
    EXPECT_THAT(error_messages(owner),
                ElementsAre("Memory file cannot be opened.  Memory file -- words.hex -- not found. "));
}

TEST(HexReaderOfAFileThatFails, WalkEndsAtTheFailure) {
    failing_file file{.content = ":0400000012345678E8\n:0400000012", .error_at = 30};
    line_source source(file.open(), hex_record_walk::longest_line);
    hex_record_walk walk(source);
    EXPECT_EQ(walk.next(), hex_record_walk::step::record);
    EXPECT_EQ(walk.next(), hex_record_walk::step::end);
}

TEST(HexReaderOfAFileThatFails, AddressSpaceEndsAtTheFailure) {
    hex_memory memory(nullptr);
    memory.word_size = 8;
    failing_file file{.content = ":0400000012345678E8\n", .error_at = 20};
    line_source source(file.open(), hex_record_walk::longest_line);
    const std::optional<hex_read_stop> stop = find_address_space(memory, source);
    ASSERT_TRUE(stop);
    EXPECT_EQ(seen_fault(stop->fault), (seen_fault{fault_code::missing_end_record, 2, 0, 0}));
}

TEST(HexReaderOfAFileThatChanges, SecondPassNamesTheLineAtFault) {
    KVR_MEMORY_FILE owner;
    hex_memory memory(&owner);
    memory.file_name = "words.hex";
    memory.word_size = 8;
    failing_file file{.content = many_records()};
    file.content_after_rewind = ":0400000012345678E8\n : 01 000006 00 00\n:00000001FF\n";
    EXPECT_FALSE(read_failing_file(memory, file));
    EXPECT_FALSE(memory.file_not_found);
    EXPECT_TRUE(memory.error_occurred);
    EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
    EXPECT_EQ(memory.invalid_line_number, 2);
    EXPECT_THAT(error_messages(owner), ElementsAre("Invalid line found in memory file.  Invalid line -- "
                                                   ":010000060000 -- found in file words.hex"));
}

TEST(HexReaderOfAFileThatFails, SecondPassEndsTheReadAsIfTheFileCouldNotBeOpened) {
    KVR_MEMORY_FILE owner;
    hex_memory memory(&owner);
    memory.file_name = "words.hex";
    memory.resize_words(10);
    failing_file file{.content = many_records(), .error_at = 1, .rewinds = 1};
    EXPECT_FALSE(read_failing_file(memory, file));
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_EQ(memory.data_words.size(), 4U);
    EXPECT_EQ(memory.number_of_words, 10U);
    EXPECT_TRUE(memory.holds_word_in(3, RADIX_NONE));
    EXPECT_FALSE(memory.holds_word_in(4, RADIX_NONE));
    EXPECT_THAT(error_messages(owner),
                ElementsAre("Memory file cannot be opened.  Memory file -- words.hex -- not found. "));
}

TEST(HexReaderOfAFileThatFails, SecondPassThatFailsOnTheWayEndsTheReadInTheSameWay) {
    KVR_MEMORY_FILE owner;
    hex_memory memory(&owner);
    memory.file_name = "words.hex";
    memory.word_size = 8;
    failing_file file{.content = many_records(), .error_at = line_source::block_size + 1, .rewinds = 1};
    EXPECT_FALSE(read_failing_file(memory, file));
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_EQ(memory.number_of_words, 0U);
    EXPECT_EQ(memory.data_words[3], "78");
    EXPECT_THAT(error_messages(owner),
                ElementsAre("Memory file cannot be opened.  Memory file -- words.hex -- not found. "));
}

TEST(HexReaderOfAFileThatFails, LinesBeforeTheFailureAreCheckedFirst) {
    KVR_MEMORY_FILE owner;
    hex_memory memory(&owner);
    memory.word_size = 8;
    noting_observer observer(true);
    // Because of the blanks, no line is read in place.
    failing_file file{.content = ": 01 0000 00 12 ED\n: 01 0001 00 AB 54\n: 01", .error_at = 40};
    EXPECT_FALSE(read_failing_file(memory, file, &observer));
    EXPECT_TRUE(memory.file_not_found);
    ASSERT_EQ(observer.faults.size(), 1U);
    EXPECT_EQ(observer.faults[0].line, 2U);
}

TEST(HexReaderOfAFileThatFails, SameFileIsReadWhenNothingFails) {
    hex_memory memory(nullptr);
    failing_file file{.content = many_records(), .error_at = 1, .rewinds = 2};
    EXPECT_TRUE(read_failing_file(memory, file));
    EXPECT_EQ(memory.number_of_words, 4U);
}

TEST(HexReaderOfAFileThatFails, ObserverDoesNotGetLinesThatTheFailureCutsShort) {
    hex_memory memory(nullptr);
    noting_observer observer(true);
    for (const std::string content : {":0400000012345678E8\n", ":0400000012345678E8\n:04000", ":"}) {
        failing_file file{.content = content, .error_at = content.size()};
        EXPECT_FALSE(read_failing_file(memory, file, &observer));
        EXPECT_TRUE(memory.file_not_found);
        EXPECT_THAT(observer.faults, IsEmpty()) << content;
    }
}

#endif

TEST(HexReaderWithObserver, OwnerGetsNoMessageOfAFault) {
    KVR_MEMORY_FILE owner;
    hex_memory memory(&owner);
    noting_observer observer(false);
    line_source source("\n:broken\n");
    EXPECT_FALSE(read_hex_lines(memory, source, &observer));
    EXPECT_EQ(memory.invalid_line_number, 2);
    EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
    EXPECT_FALSE(owner.has_error_messages());
}

TEST(HexReaderWithObserver, ReadSucceedsWithoutTheLinesThatWereLeftOut) {
    hex_memory memory(nullptr);
    noting_observer observer(true);
    line_source source(":0100000012ED\n:broken\n:00000001FF\n");
    EXPECT_TRUE(read_hex_lines(memory, source, &observer));
    EXPECT_EQ(memory.number_of_words, 1U);
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_EQ(memory.invalid_line_number, 0);
}

/// Stores a record step by step, digit by digit on copies, for comparison with the reader.
std::vector<std::string> words_by_the_steps(std::string data, std::uint64_t word_size, std::uint64_t bytes) {
    const std::uint64_t word_bits = (word_size + 7) / 8 * 8;
    const std::uint64_t record_bits = (word_bits + 8 * bytes - 1) / word_bits * word_bits;
    if (4 * data.size() >= record_bits + 4) {
        data.erase(0, (4 * data.size() - record_bits) / 4);
    }
    data.erase(0, 4 * data.size() % word_size / 4);
    std::vector<std::string> words;
    while (!data.empty()) {
        std::string word = data.substr(0, word_bits / 4);
        data.erase(0, word_bits / 4);
        const std::uint64_t surplus = (4 * std::uint64_t{word.size()} - word_size) / 4;
        word.erase(0, surplus);
        if (!word.empty()) {
            words.push_back(word);
        }
    }
    return words;
}

TEST(StoreHexWordsByTheSteps, GivesTheSameWordsAtEveryWidthAndLength) {
    kvr_test::random_record_lines random(5);
    for (std::uint32_t word_size = 1; word_size <= 140; ++word_size) {
        for (std::uint32_t bytes = 0; bytes <= 40; ++bytes) {
            const std::string data = random.digits(2 * bytes + (random.below(5) == 0 ? random.below(20) : 0));
            text_reader reader(word_size);
            reader.memory.data_words.resize(60, "");
            std::vector<std::string> expected = words_by_the_steps(data, word_size, bytes);
            ASSERT_EQ(store_hex_words(reader.memory, 0, data, bytes), expected.size());
            expected.resize(60);
            ASSERT_EQ(reader.words(), expected) << word_size << " bits, " << data;
        }
    }
}

TEST(HexReader, OfConsecutiveSegmentsTheLastCounts) {
    text_reader reader(8);
    reader.read(":020000021000EC\n:020000022000DC\n:020000021000EC\n:0100000012ED\n:00000001FF\n");
    EXPECT_EQ(reader.words().size(), 0x1000U * 16 + 1);
}

TEST(HexReader, PageThatIsEnteredAgainKeepsItsEnd) {
    const std::string first = hex_record_line(4, 0, "0001") + "\n" + hex_record_line(0, 10, "AA") + "\n";
    const std::string again = hex_record_line(4, 0, "0001") + "\n" + hex_record_line(0, 0, "BB") + "\n";
    EXPECT_EQ(words_of(first + again + end_line, 8).size(), 0x10000U + 11);
}

TEST(HexReader, HigherPageDoesNotHaveTheEndOfTheLowerOne) {
    const std::string low = hex_record_line(0, 0x100, "AA") + "\n";
    const std::string high = hex_record_line(0, 1, "BB") + "\n";
    EXPECT_EQ(words_of(low + hex_record_line(4, 0, "0001") + "\n" + high + end_line, 8).size(), 0x10002U);
    EXPECT_EQ(words_of(low + hex_record_line(2, 0, "1000") + "\n" + high + end_line, 8).size(), 0x10002U);
}

TEST(HexReader, HigherPageOfARecordWithoutDataIsEmpty) {
    for (const unsigned type : {2U, 4U}) {
        const std::string text = hex_record_line(0, 0, "AA") + "\n" + hex_record_line(type, 0, "0001") +
                                 "\n" + hex_record_line(0, 0, "") + "\n" + end_line;
        text_reader reader(8);
        EXPECT_EQ(reader.first_pass(text), (seen_fault{fault_code::no_data, 4, 1, 11})) << type;
    }
}

TEST(HexReader, DataAfterALowerLinearAddressDoNotLowerTheEnd) {
    text_reader reader(8);
    reader.read(":020000040001F9\n:0100000012ED\n:020000040000FA\n:01FFFF0033CE\n:00000001FF\n");
    EXPECT_EQ(reader.words().size(), 0x10001U);
    EXPECT_EQ(reader.words()[0xFFFF], "33");
}

} // namespace
} // namespace kvr
