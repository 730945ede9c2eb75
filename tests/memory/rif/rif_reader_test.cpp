#include "kvr/memory/memory_file.h"
#include "kvr/memory/rif/rif_reader.h"
#include "tests/memory/error_messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::line_source;
using kvr::rif_address;
using kvr::rif_address_outside;
using kvr::rif_memory;
using kvr::rif_reader;
using kvr_test::error_messages;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_view_literals;

std::vector<std::string> words_of(const rif_memory& memory) {
    std::vector<std::string> texts;
    for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
        texts.emplace_back(memory.data_words[address]);
    }
    return texts;
}

/// A memory of some words, and the result of reading a text into it.
class RifReader : public testing::Test {
protected:
    void read(std::string_view text, std::uint32_t depth = 4) {
        memory.resize_words(depth);
        line_source source(text);
        rif_reader(memory).read(source);
    }

    [[nodiscard]] std::vector<std::string> words() const { return words_of(memory); }

    void expect_success() {
        EXPECT_EQ(memory.error_state, ERROR_STATE_NONE);
        EXPECT_THAT(error_messages(owner), IsEmpty());
    }

    void expect_illegal_line(const std::string& line) {
        EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
        EXPECT_THAT(error_messages(owner),
                    ElementsAre("Invalid line found in memory file.  Illegal line -- " + line +
                                " -- found in file data.rif"));
    }

    KVR_MEMORY_FILE owner;
    rif_memory memory = [this] {
        rif_memory named(&owner);
        named.file_name = "data.rif";
        return named;
    }();
};

TEST_F(RifReader, WordsStartAtAddressZero) {
    read("AB CD \n12 \n");
    EXPECT_THAT(words(), ElementsAre("AB", "CD", "12", ""));
    expect_success();
}

TEST_F(RifReader, AddressLinePlacesTheWordsThatFollow) {
    read("@10\nAB CD ", 20);
    EXPECT_EQ(memory.data_words[16], "AB");
    EXPECT_EQ(memory.data_words[17], "CD");
    EXPECT_EQ(memory.data_words[0], "");
    expect_success();
}

TEST_F(RifReader, WrittenLayoutIsRead) {
    read("\n@0\n0 1 2 3 4 5 6 7 \n@8\n8 9 ", 10);
    EXPECT_THAT(words(), ElementsAre("0", "1", "2", "3", "4", "5", "6", "7", "8", "9"));
    expect_success();
}

TEST_F(RifReader, LowerCaseWordsAreStoredInUpperCase) {
    read("ab Cd x u ");
    EXPECT_THAT(words(), ElementsAre("AB", "CD", "X", "U"));
}

TEST_F(RifReader, IllegalCharacterStopsTheRead) {
    read("AB \n12 3G \nCD ");
    EXPECT_THAT(words(), ElementsAre("AB", "", "", ""));
    expect_illegal_line("12 3G ");
}

TEST_F(RifReader, IllegalLineIsQuotedInUpperCase) {
    read("12 xyz ");
    expect_illegal_line("12 XYZ ");
}

TEST_F(RifReader, NoWordOfAnIllegalLineIsStored) {
    read("12 34 56 !");
    EXPECT_THAT(words(), Each(""));
    expect_illegal_line("12 34 56 !");
}

TEST_F(RifReader, IllegalLineLeavesTheOtherFlagsAlone) {
    memory.invalid_line_number = 7;
    memory.error_occurred = true;
    read("G");
    EXPECT_EQ(memory.invalid_line_number, 7);
    EXPECT_TRUE(memory.error_occurred);
    EXPECT_FALSE(memory.file_not_found);
}

TEST_F(RifReader, IllegalLineReplacesAnEarlierErrorState) {
    memory.error_state = ERROR_STATE_INVALID_WIDTH;
    read("G");
    EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
}

TEST_F(RifReader, SuccessKeepsAnEarlierErrorState) {
    memory.error_state = ERROR_STATE_INVALID_LINE;
    read("AB ");
    EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

TEST_F(RifReader, IllegalLineWithoutOwnerIsNotQueued) {
    memory.memory_file = nullptr;
    read("G");
    EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

TEST_F(RifReader, TabIsIllegal) {
    read("12\t34 ");
    expect_illegal_line("12\t34 ");
}

TEST_F(RifReader, NulIsIllegal) {
    read("12\0 34 "sv);
    expect_illegal_line(std::string("12\0 34 ", 7));
}

TEST_F(RifReader, BinaryFileIsIllegal) {
    read("\x7f\xff\x80\xfe\n12 ");
    expect_illegal_line("\x7f\xff\x80\xfe");
}

TEST_F(RifReader, EveryOtherCharacterIsIllegal) {
    const std::string_view legal = "0123456789ABCDEFabcdef XxUu@\n";
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        memory.error_state = ERROR_STATE_NONE;
        read(std::string(1, character));
        EXPECT_EQ(memory.error_state == ERROR_STATE_NONE, legal.find(character) != legal.npos) << code;
    }
}

TEST_F(RifReader, CarriageReturnBelongsToTheLineEnd) {
    read("\r\n@1\r\nAB CD\r\n");
    EXPECT_THAT(words(), ElementsAre("", "AB", "CD", ""));
    expect_success();
}

TEST_F(RifReader, CarriageReturnElsewhereIsIllegal) {
    read("AB\rCD\n");
    expect_illegal_line("AB\rCD");
}

TEST_F(RifReader, CarriageReturnAtTheEndOfTheFileIsIllegal) {
    read("AB\r");
    expect_illegal_line("AB\r");
}

TEST_F(RifReader, LastWordNeedsNoBlankAfterIt) {
    read("AB CD\nEF");
    EXPECT_THAT(words(), ElementsAre("AB", "CD", "EF", ""));
    expect_success();
}

TEST_F(RifReader, WordsMayBeSeparatedByManyBlanks) {
    read("AB   CD     EF");
    EXPECT_THAT(words(), ElementsAre("AB", "CD", "EF", ""));
}

TEST_F(RifReader, LineMayStartWithBlanks) {
    read(" AB \n   CD ");
    EXPECT_THAT(words(), ElementsAre("AB", "CD", "", ""));
}

TEST_F(RifReader, EmptyAndBlankLinesAreSkipped) {
    read("\n\nAB \n     \n\nCD \n");
    EXPECT_THAT(words(), ElementsAre("AB", "CD", "", ""));
    expect_success();
}

TEST_F(RifReader, EmptyFileChangesNothing) {
    memory.resize_words(1);
    memory.data_words.set(0, "AB");
    read("", 1);
    EXPECT_THAT(words(), ElementsAre("AB"));
    expect_success();
}

TEST_F(RifReader, WordsThatTheFileDoesNotSetAreKept) {
    memory.resize_words(4);
    memory.data_words.set(0, "11");
    memory.data_words.set(3, "33");
    read("@1\n22 ");
    EXPECT_THAT(words(), ElementsAre("11", "22", "", "33"));
}

TEST_F(RifReader, WordsAreNotCutToTheWordSize) {
    memory.word_size = 4;
    read("12345 0 ");
    EXPECT_THAT(words(), ElementsAre("12345", "0", "", ""));
}

TEST_F(RifReader, DepthAndRadixStayAsTheyAre) {
    memory.memory_radix = RADIX_BIN;
    read("AB CD EF 01 23 45 ", 3);
    EXPECT_EQ(memory.number_of_words, 3U);
    EXPECT_EQ(memory.memory_radix, RADIX_BIN);
}

TEST_F(RifReader, WordsBeyondTheStoreAreDropped) {
    read("1 2 3 4 5 6 \n7 ");
    EXPECT_THAT(words(), ElementsAre("1", "2", "3", "4"));
    expect_success();
}

TEST_F(RifReader, WordsCanComeBackIntoTheStore) {
    read("@F\n1 \n@2\n2 ");
    EXPECT_THAT(words(), ElementsAre("", "", "2", ""));
}

TEST_F(RifReader, EmptyStoreTakesNoWord) {
    read("1 2 ", 0);
    EXPECT_THAT(words(), IsEmpty());
    expect_success();
}

TEST_F(RifReader, AddressSignAnywhereMakesAnAddressLine) {
    read("GARBAGE !?@2 ZZ\nAB ");
    EXPECT_THAT(words(), ElementsAre("", "", "AB", ""));
    expect_success();
}

TEST_F(RifReader, WordsOnAnAddressLineAreIgnored) {
    read("11 @1 22 \n33 ");
    EXPECT_THAT(words(), ElementsAre("", "33", "", ""));
}

TEST_F(RifReader, AddressesBeyondEveryStoreNeverWrapIntoIt) {
    for (const std::string address :
         {"FFFFFFFF", "100000000", "-1", "FFFFFFFFFFFFFFFF", "10000000000000000", "-8000000000000000"}) {
        read("@" + address + "\n1 2 3 4 ");
        EXPECT_THAT(words(), Each("")) << address;
    }
    expect_success();
}

TEST_F(RifReader, MegabyteLongLineIsReadWhole) {
    std::string line;
    for (int count = 0; count < 350'000; ++count) {
        line += "A5 ";
    }
    read(line, 350'000);
    EXPECT_THAT(words(), Each("A5"));
    expect_success();
}

TEST_F(RifReader, MegabyteLongWordIsReadWhole) {
    const std::string word(1'000'000, 'f');
    read(word, 1);
    EXPECT_EQ(memory.data_words[0], std::string(1'000'000, 'F'));
}

TEST_F(RifReader, SourceThatIsNotOpenIsAFileNotFound) {
    std::FILE* const none = nullptr;
    line_source source(none);
    rif_reader(memory).read(source);
    EXPECT_TRUE(memory.file_not_found);
    expect_success();
}

TEST_F(RifReader, FileFoundClearsTheFlag) {
    memory.file_not_found = true;
    read("AB ");
    EXPECT_FALSE(memory.file_not_found);
}

#if defined(__GLIBC__)

TEST_F(RifReader, FailureOnTheWayIsAFileNotFound) {
    std::size_t left = 2 * line_source::block_size;
    const auto read_blanks_then_fail = [](void* cookie, char* buffer, std::size_t size) -> ssize_t {
        auto& blanks = *static_cast<std::size_t*>(cookie);
        const std::size_t count = std::min(size, blanks);
        if (count == 0) {
            errno = EIO;
            return -1;
        }
        std::fill_n(buffer, count, ' ');
        blanks -= count;
        return static_cast<ssize_t>(count);
    };
    const auto stay = [](void*, off64_t* offset, int) {
        *offset = 0;
        return 0;
    };
    line_source source(fopencookie(&left, "rb", {read_blanks_then_fail, nullptr, stay, nullptr}));
    ASSERT_TRUE(source.is_open());
    rif_reader(memory).read(source);
    EXPECT_TRUE(memory.file_not_found);
    expect_success();
}

#endif

struct address_case {
    const char* line;
    std::uint64_t address;
};

std::ostream& operator<<(std::ostream& stream, const address_case& test) {
    return stream << test.line;
}

class RifAddress : public testing::TestWithParam<address_case> {};

INSTANTIATE_TEST_SUITE_P(
    Lines, RifAddress,
    testing::Values(address_case{"@0", 0}, address_case{"@10", 16}, address_case{"@ff", 255},
                    address_case{"@DEADbeef", 0xDEADBEEF}, address_case{"@", 0}, address_case{"@XYZ", 0},
                    address_case{"@12G4", 0x12}, address_case{"@1 2", 1}, address_case{"@1@2", 1},
                    address_case{"@@2", 0}, address_case{"5@2", 2}, address_case{"@0x1F", 0x1F},
                    address_case{"@0X1f", 0x1F}, address_case{"@0x", 0}, address_case{"@0xG", 0},
                    address_case{"@0x0x5", 0}, address_case{"@x5", 0}, address_case{"@  7", 7},
                    address_case{"@\t\v\f\r 7", 7}, address_case{"@+7", 7}, address_case{"@ +0x7", 7},
                    address_case{"@+ 7", 0}, address_case{"@+-7", 0}, address_case{"@-0", 0},
                    address_case{"@-", 0}, address_case{"@-1", rif_address_outside},
                    address_case{"@-0x10", rif_address_outside}, address_case{"@7FFFFFFF", 0x7FFFFFFF},
                    address_case{"@80000000", 0x80000000}, address_case{"@FFFFFFFF", 0xFFFFFFFF},
                    address_case{"@00000000000000000FF", 0xFF},
                    address_case{"@100000000", rif_address_outside},
                    address_case{"@FFFFFFFFFFFFFFFF", rif_address_outside},
                    address_case{"@10000000000000000000000000001", rif_address_outside}));

TEST_P(RifAddress, IsTheNumberAtTheStartOfTheTextAfterTheSign) {
    EXPECT_EQ(rif_address(GetParam().line), GetParam().address);
}

TEST(RifData, IsDigitsBlanksAndUnknowns) {
    EXPECT_TRUE(kvr::is_rif_data("0123456789ABCDEFabcdef XxUu"));
    EXPECT_TRUE(kvr::is_rif_data(""));
}

TEST(RifData, IsNothingElse) {
    for (const std::string_view text :
         {"G"sv, "g"sv, "12@"sv, "1\n"sv, "1\r"sv, "1\t2"sv, "\0"sv, "\xff"sv, "-1"sv}) {
        EXPECT_FALSE(kvr::is_rif_data(text)) << text;
    }
}

/// Records all calls, and continues after every fault or after none.
class noting_observer : public kvr::read_observer {
public:
    explicit noting_observer(bool go_on) : goes_on(go_on) {}

    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        EXPECT_EQ(fault.code, kvr::fault_code::illegal_character);
        notes.push_back("fault line " + std::to_string(fault.line) + " column " +
                        std::to_string(fault.column) + " length " + std::to_string(fault.length) + " " +
                        std::string(text));
        return goes_on;
    }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) override {
        notes.push_back("words " + std::to_string(first) + "-" + std::to_string(last) + " line " +
                        std::to_string(line));
    }
    void address_line(std::uint64_t address, std::uint64_t line, std::string_view text) override {
        notes.push_back("address " + std::to_string(address) + " line " + std::to_string(line) + " " +
                        std::string(text));
    }

    std::vector<std::string> notes;

private:
    bool goes_on;
};

class RifReaderObserver : public RifReader {
protected:
    std::vector<std::string> notes_of(std::string_view text, bool go_on = true) {
        memory.resize_words(4);
        noting_observer observer(go_on);
        line_source source(text);
        rif_reader(memory, &observer).read(source);
        return observer.notes;
    }
};

TEST_F(RifReaderObserver, GetsTheWordsOfEveryLine) {
    EXPECT_THAT(notes_of("1 2 \n\n   \n3"), ElementsAre("words 0-1 line 1", "words 2-2 line 4"));
}

TEST_F(RifReaderObserver, GetsWordsThatAreDropped) {
    EXPECT_THAT(notes_of("1 2 3 4 5\n6 "), ElementsAre("words 0-4 line 1", "words 5-5 line 2"));
}

TEST_F(RifReaderObserver, GetsAddressLines) {
    EXPECT_THAT(
        notes_of("\r\n12 @ 0x1f junk\r\n1 \n@xyz"),
        ElementsAre("address 31 line 2 12 @ 0X1F JUNK", "words 31-31 line 3", "address 0 line 4 @XYZ"));
}

TEST_F(RifReaderObserver, SeesAddressesOutsideEveryStoreGoOn) {
    EXPECT_THAT(notes_of("@-1\n1 2"),
                ElementsAre("address 4294967296 line 1 @-1", "words 4294967296-4294967297 line 2"));
}

TEST_F(RifReaderObserver, GetsThePlaceOfAnIllegalLine) {
    EXPECT_THAT(notes_of("1 \n2 xyz0- 3 "),
                ElementsAre("words 0-0 line 1", "fault line 2 column 4 length 2 2 XYZ0- 3 "));
}

TEST_F(RifReaderObserver, CanGoOnAfterAFault) {
    EXPECT_THAT(notes_of("!\n1 \n2 ?\n3 "),
                ElementsAre("fault line 1 column 1 length 1 !", "words 0-0 line 2",
                            "fault line 3 column 3 length 1 2 ?", "words 1-1 line 4"));
    EXPECT_THAT(words(), ElementsAre("1", "3", "", ""));
    EXPECT_EQ(memory.error_state, ERROR_STATE_INVALID_LINE);
}

TEST_F(RifReaderObserver, CanStopAtAFault) {
    EXPECT_THAT(notes_of("1 \n!\n2 ", false),
                ElementsAre("words 0-0 line 1", "fault line 2 column 1 length 1 !"));
    EXPECT_THAT(words(), ElementsAre("1", "", "", ""));
}

TEST_F(RifReaderObserver, GetsFaultsInsteadOfMessages) {
    notes_of("!");
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

/// The words of a text in an empty store if illegal lines are skipped, computed in the simplest way.
std::vector<std::string> model_words(const std::string& text, std::uint32_t depth) {
    std::vector<std::string> words(depth);
    long long address = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t sign = line.find('@');
        if (!lines.eof() && line.ends_with('\r')) {
            line.pop_back();
        }
        if (sign != line.npos) {
            address = std::strtoll(line.c_str() + sign + 1, nullptr, 16);
            address = address < 0 ? depth : address;
        } else if (line.find_first_not_of("0123456789ABCDEFabcdef XxUu") == line.npos) {
            std::istringstream parts(line);
            for (std::string word; parts >> word; ++address) {
                std::transform(word.begin(), word.end(), word.begin(),
                               [](unsigned char c) { return std::toupper(c); });
                if (address < depth) {
                    words[static_cast<std::size_t>(address)] = word;
                }
            }
        }
    }
    return words;
}

TEST(RifReaderModel, RandomTextsLeaveTheWordsOfTheModel) {
    const std::string_view alphabet = "0019AFafxU@@-+  \n\n\n\r\t\0G"sv;
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        std::string text(random() % 60, ' ');
        for (char& character : text) {
            character = alphabet[random() % alphabet.size()];
        }
        rif_memory memory(nullptr);
        memory.resize_words(static_cast<std::uint32_t>(random() % 20));
        noting_observer observer(true);
        line_source source{std::string_view(text)};
        rif_reader(memory, &observer).read(source);
        ASSERT_EQ(words_of(memory), model_words(text, memory.number_of_words)) << text;
    }
}

TEST_F(RifReader, AddressSignWithoutANumberMeansAddressZero) {
    read("55 66 \n@1\n77 \n@\n88 \n" + std::string(200, '\n'));
    EXPECT_EQ(words_of(memory)[0], "88");
    EXPECT_EQ(words_of(memory)[1], "77");
}

} // namespace
