// The memory that reading, editing and writing use. It must not be proportional to the size that a file
// declares, but to the size of the file.

#include "kvr/memory/memory_file.h"
#include "tests/allocation.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/memory_sizes.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>

namespace {

using kvr_test::mebibyte;

constexpr std::size_t memory_limit = 64 * mebibyte;

class MemoryFileMemory : public testing::Test {
protected:
    void configure(KVR_MEMORY_FILE& file, KVR_FILE_TYPES type, const std::string& text) {
        path = folder.file("memory.txt", text);
        file.set_file_type(type);
        file.set_file_name(path);
    }
    kvr_test::temporary_directory folder;
    std::string path;
};

constexpr const char* huge_header = "WIDTH=8;\nDEPTH=2147483647;\nCONTENT BEGIN\n";

TEST_F(MemoryFileMemory, AHugeRangeIsReadEditedAndWrittenInLittleMemory) {
    const allocation_meter meter;
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_MIF, std::string(huge_header) + "[0..7FFFFFFE] : 5;\nEND;\n");
    ASSERT_TRUE(file.read_file());
    for (const unsigned address : {0U, 1234567890U, 2147483646U}) {
        ASSERT_TRUE(file.set_data_word(address, "A1", RADIX_HEX));
    }
    ASSERT_TRUE(file.write_file());
    EXPECT_LT(allocation_meter::peak(), memory_limit);
    const std::string written = kvr_test::content_of(path);
    EXPECT_NE(written.find("\t[00000001..499602d1]  :   5;\n\t499602d2  :   A1;\n"), std::string::npos);
    EXPECT_LT(written.size(), 500U);
}

TEST_F(MemoryFileMemory, AHugeRangeOfSeveralValuesIsReadInLittleMemory) {
    const allocation_meter meter;
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_MIF, std::string(huge_header) + "[0..7FFFFFFE] : 1 2 3;\nEND;\n");
    ASSERT_TRUE(file.read_file());
    EXPECT_LT(allocation_meter::peak(), memory_limit);
    EXPECT_EQ(file.get_data_word(2147483646U, RADIX_NONE), "1");
    EXPECT_EQ(file.get_data_word(1000000000U, RADIX_NONE), "2");
}

TEST_F(MemoryFileMemory, TheLargestNumberOfWordsIsSetInLittleMemory) {
    const allocation_meter meter;
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        KVR_MEMORY_FILE file;
        file.set_file_type(type);
        file.set_number_of_words(4294967295U);
        EXPECT_EQ(file.get_number_of_words(), 4294967295U);
        EXPECT_EQ(file.get_data_word(4294967294U, RADIX_NONE), type == FILE_TYPE_RIF ? "" : "0");
    }
    EXPECT_LT(allocation_meter::peak(), memory_limit);
}

TEST_F(MemoryFileMemory, TwoRecordsThatSpanAllAddressesAreReadInLittleMemory) {
    const allocation_meter meter;
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_HEX, ":010000005AA5\n:02000004FFFFFC\n:01FFFE00A55D\n:00000001FF\n");
    ASSERT_TRUE(file.read_file()) << kvr_test::error_messages(file).front();
    EXPECT_LT(allocation_meter::peak(), memory_limit);
    EXPECT_EQ(file.get_number_of_words(), 4294967295U);
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "5A");
    EXPECT_EQ(file.get_data_word(4294967294U, RADIX_NONE), "A5");
    EXPECT_EQ(file.get_data_word(1, RADIX_NONE), "0");
}

TEST_F(MemoryFileMemory, WordsOfOneLengthCostTheirTextAndHalfAByte) {
    constexpr unsigned depth = 1U << 20;
    for (const unsigned digits : {2U, 8U, 32U}) {
        SCOPED_TRACE(digits);
        std::mt19937 random(digits);
        KVR_MEMORY_FILE file;
        const allocation_meter meter;
        file.set_file_type(FILE_TYPE_MIF);
        file.set_word_size(4 * digits);
        file.set_memory_radix(RADIX_HEX);
        file.set_number_of_words(depth);
        std::string word(digits, '0');
        for (unsigned address = 0; address < depth; ++address) {
            word.front() = "0123456789ABCDEF"[random() % 16];
            word.back() = "0123456789ABCDEF"[random() % 16];
            ASSERT_TRUE(file.set_data_word(address, word, RADIX_HEX));
        }
        EXPECT_LT(allocation_meter::live(), depth * digits + depth / 2);
    }
}

TEST_F(MemoryFileMemory, AFileOfScatteredAddressesCostsABoundedMultipleOfItsSize) {
    std::string text = huge_header;
    constexpr unsigned lines = 100000;
    for (unsigned line = 0; line < lines; ++line) {
        std::array<char, 16> address{};
        const int length = std::snprintf(address.data(), address.size(), "%X:1;\n", line * 21474U);
        text.append(address.data(), static_cast<std::size_t>(length));
    }
    KVR_MEMORY_FILE file;
    configure(file, FILE_TYPE_MIF, text + "END;\n");
    const allocation_meter meter;
    ASSERT_TRUE(file.read_file());
    EXPECT_LT(allocation_meter::peak(), 32 * mebibyte + 100 * text.size());
}

} // namespace
