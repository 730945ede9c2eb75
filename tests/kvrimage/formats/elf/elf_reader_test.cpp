#include "kvrimage/formats/elf/elf_file.h"
#include "kvrimage/formats/elf/elf_format.h"
#include "kvrimage/formats/elf/elf_reader.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/bytes/byte_images.h"
#include "tests/kvrimage/formats/elf/made_elf_file.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using namespace kvrimage_tests;

read_result read_made_elf(const made_elf& file, read_options options = {}) {
    options.as = &elf_format;
    return parse(bytes_of_elf(file), options);
}

/// Code at address 0, followed by data with reserved space.
made_elf small_program() {
    made_elf file;
    file.entry = 0x104;
    file.segments = {{"", 0x100, 0x100, "code", 0}, {"", 0x2000, 0x104, "data", 8}};
    file.sections = {
        {".text", 0x100, 0, "code", 0}, {".data", 0x2000, 0, "data", 0}, {".bss", 0x2004, 0, "", 8}};
    return file;
}

read_options with_choice(const std::string& name, const std::string& value) {
    read_options options;
    options.choices = {{name, value}};
    return options;
}

std::string elf_message(const read_result& result) {
    return result.diagnostics.at(0).message + "|" + result.diagnostics.at(0).hint;
}

TEST(ElfReader, LoadsSegmentsOfBothSizesAndOrders) {
    for (const bool is_64_bits : {false, true}) {
        for (const byte_order order : {byte_order::little, byte_order::big}) {
            made_elf file = small_program();
            file.is_64_bits = is_64_bits;
            file.order = order;
            const read_result result = read_made_elf(file);
            EXPECT_EQ(shown_report(result), "");
            EXPECT_EQ(set_words_of(result), "256=63 257=6F 258=64 259=65 260=64 261=61 262=74 263=61");
            EXPECT_EQ(result.facts.order, order);
        }
    }
}

TEST(ElfReader, ContentsOfAnotherKindAreNone) {
    EXPECT_EQ(read_elf_facts({}, true), std::nullopt);
    EXPECT_EQ(read_elf_facts("Dear reader,", true), std::nullopt);
    EXPECT_EQ(read_elf_facts("\x7F"
                             "ELF\1\1\1",
                             true),
              std::nullopt);
}

TEST(ElfReader, IsCertainOfAKnownClassAndOrder) {
    EXPECT_EQ(elf_format.sniff("\x7F"
                               "ELF\1\2"),
              certainty::certain);
    EXPECT_EQ(elf_format.sniff("\x7F"
                               "ELF\3\1"),
              certainty::likely);
    EXPECT_EQ(elf_format.sniff("\x7F"
                               "ELF\2\3"),
              certainty::likely);
}

/// The section that contains the names has its number in another section, which does not exist.
TEST(ElfReader, ATableOfSectionsThatIsNotThereIsDamaged) {
    for (const bool is_64_bits : {false, true}) {
        for (const byte_order order : {byte_order::little, byte_order::big}) {
            made_elf file = small_program();
            file.is_64_bits = is_64_bits;
            file.order = order;
            std::string bytes = bytes_of_elf(file);
            const std::size_t names = is_64_bits ? 62 : 50;
            const std::size_t table = is_64_bits ? 40 : 32;
            bytes.replace(names, 2, "\xFF\xFF");
            bytes.replace(table, 4, "\x7F\x7F\x7F\x7F");
            const auto facts = read_elf_facts(bytes, true);
            ASSERT_TRUE(facts);
            EXPECT_EQ(facts->damaged, "the table of sections");
            EXPECT_FALSE(facts->reason.empty());
        }
    }
}

TEST(ElfReader, ATableOfSectionsThatIsCutOffHasNone) {
    for (const bool is_64_bits : {false, true}) {
        made_elf file = small_program();
        file.is_64_bits = is_64_bits;
        file.order = byte_order::big;
        std::string bytes = bytes_of_elf(file);
        bytes.pop_back();
        const auto facts = read_elf_facts(bytes, true);
        ASSERT_TRUE(facts);
        EXPECT_EQ(facts->segments.size(), 2U);
        EXPECT_TRUE(facts->sections.empty());
    }
}

TEST(ElfReader, WhatIsLoadedWhereIsAFactEach) {
    const read_result result = read_made_elf(small_program());
    ASSERT_EQ(result.facts.more.size(), 4U);
    EXPECT_EQ(result.facts.more[0].value, "32 bits, little endian");
    EXPECT_EQ(result.facts.more[1].name, "start address");
    EXPECT_EQ(result.facts.more[1].value, "104");
    EXPECT_EQ(result.facts.start_address, 0x104U);
    EXPECT_EQ(result.facts.more[2].name, "segment 0");
    EXPECT_EQ(result.facts.more[2].value, "100..103, 4 bytes from offset 116");
    EXPECT_EQ(result.facts.more[3].value, "104..107, 4 bytes from offset 120, 8 more are not set");
}

TEST(ElfReader, VirtualAddressesAreAChoice) {
    const read_result result = read_made_elf(small_program(), with_choice("address", "virtual"));
    EXPECT_EQ(set_words_of(result), "256=63 257=6F 258=64 259=65 8192=64 8193=61 8194=74 8195=61");
    EXPECT_EQ(elf_message(read_made_elf(small_program(), with_choice("address", "real"))),
              "--address real is not valid|use one of: physical virtual");
}

TEST(ElfReader, SectionsAreAChoice) {
    EXPECT_EQ(set_words_of(read_made_elf(small_program(), with_choice("section", ".data"))),
              "260=64 261=61 262=74 263=61");
    EXPECT_EQ(set_words_of(read_made_elf(small_program(), with_choice("section", ".text,.data"))),
              "256=63 257=6F 258=64 259=65 260=64 261=61 262=74 263=61");
    read_options options = with_choice("section", ".data");
    options.choices.push_back({"address", "virtual"});
    const read_result result = read_made_elf(small_program(), options);
    EXPECT_EQ(set_words_of(result), "8192=64 8193=61 8194=74 8195=61");
    EXPECT_EQ(result.facts.more.back().name, "section .data");
}

TEST(ElfReader, ASectionMustBeThereAndHaveContents) {
    EXPECT_EQ(elf_message(read_made_elf(small_program(), with_choice("section", ".boot"))),
              "there is no section .boot|use one of the sections with contents: .text, .data, .shstrtab");
    EXPECT_EQ(elf_message(read_made_elf(small_program(), with_choice("section", ".text,.bss"))),
              "section .bss has no contents in the file|");
    EXPECT_EQ(shown_report(read_made_elf(small_program(), with_choice("section", ""))),
              "broken elf-section 0:0+0 x1\n");
}

TEST(ElfReader, ManySectionsAreNotAllNamed) {
    made_elf file;
    for (int number = 0; number < 40; ++number) {
        file.sections.push_back({".s" + std::to_string(number), 0, 0, "contents", 0});
    }
    const std::string message = elf_message(read_made_elf(file, with_choice("section", "x")));
    EXPECT_TRUE(message.ends_with("...")) << message;
}

TEST(ElfReader, WordsTakeTheOrderOfTheFile) {
    made_elf file = small_program();
    read_options options;
    options.width = 32;
    EXPECT_EQ(set_words_of(read_made_elf(file, options)), "64=65646F63 65=61746164");
    file.order = byte_order::big;
    EXPECT_EQ(set_words_of(read_made_elf(file, options)), "64=636F6465 65=64617461");
    options.order = byte_order::big;
    EXPECT_EQ(shown_report(read_made_elf(file, options)), "");
    options.order = byte_order::little;
    const read_result result = read_made_elf(file, options);
    EXPECT_EQ(set_words_of(result), "64=65646F63 65=61746164");
    EXPECT_EQ(elf_message(result), "the file is big endian, but the words are read as little endian|");
}

TEST(ElfReader, OverlappingSegmentsAreSuspect) {
    made_elf file = small_program();
    file.segments[1].physical_address = 0x102;
    const read_result result = read_made_elf(file);
    EXPECT_EQ(shown_report(result), "suspect overwritten-byte 0:0+0 x1\n");
    EXPECT_EQ(set_words_of(result), "256=63 257=6F 258=64 259=61 260=74 261=61");
}

TEST(ElfReader, AFarSegmentNeedsADecision) {
    made_elf file = small_program();
    file.segments[1].physical_address = 0x10000100;
    const read_result result = read_made_elf(file);
    EXPECT_EQ(elf_message(result),
              "the contents from 100 to 10000103 span 256 MiB|use --section NAME,... to read a part of them, "
              "--base 0x100 to set word 0, or --sparse to read all of them");
    EXPECT_FALSE(result.image);
    const std::string all = "256=63 257=6F 258=64 259=65 268435712=64 268435713=61 268435714=74 268435715=61";
    EXPECT_EQ(set_words_of(read_made_elf(file, with_choice("sparse", ""))), all);
    read_options options;
    options.base = 0;
    EXPECT_EQ(set_words_of(read_made_elf(file, options)), all);
    EXPECT_EQ(set_words_of(read_made_elf(file, with_choice("section", ".text"))),
              "256=63 257=6F 258=64 259=65");
    file.segments[1].physical_address = 0xFFFFFFC;
    EXPECT_EQ(shown_report(read_made_elf(file)), "");
}

TEST(ElfReader, AHighFirstAddressNeedsABase) {
    made_elf file = small_program();
    file.segments = {{"", 0x80000000, 0x80000000, "code", 0}};
    EXPECT_EQ(shown_report(read_made_elf(file)), "broken base-needed 0:0+0 x1\n");
    read_options options;
    options.base = 0x80000000;
    EXPECT_EQ(set_words_of(read_made_elf(file, options)), "0=63 1=6F 2=64 3=65");
}

TEST(ElfReader, AFileWithoutSegmentsHasNothingToLoad) {
    made_elf file = small_program();
    file.segments.clear();
    EXPECT_EQ(elf_message(read_made_elf(file)), "no segment has contents to load|");
    file.type = 1;
    EXPECT_EQ(elf_message(read_made_elf(file)),
              "no segment has contents to load|link the object file first, or read --section NAME");
    EXPECT_EQ(set_words_of(read_made_elf(file, with_choice("section", ".text"))),
              "256=63 257=6F 258=64 259=65");
    file.segments = {{"", 0, 0, "", 100}};
    EXPECT_EQ(shown_report(read_made_elf(file)), "broken elf-no-contents 0:0+0 x1\n");
}

/// @p file with a 4-byte field of the first segment set to all ones, at @p offset of its header.
std::string with_huge_field(const made_elf& file, std::size_t offset) {
    std::string bytes = bytes_of_elf(file);
    return bytes.replace(52 + offset, 4, "\xFF\xFF\xFF\x7F");
}

TEST(ElfReader, ContentsMustBeInTheFile) {
    const std::string far = with_huge_field(small_program(), 4);
    EXPECT_EQ(elf_message(read_elf(far, {})),
              "segment 0 has its contents at offset 2147483647 to 2147483650, but the file has " +
                  std::to_string(far.size()) + " bytes|the file may be cut off");
    EXPECT_EQ(shown_report(read_elf(with_huge_field(small_program(), 16), {})),
              "broken elf-beyond-file 0:0+0 x1\n");
}

TEST(ElfReader, AddressesHave64Bits) {
    made_elf file = small_program();
    file.is_64_bits = true;
    file.segments[0].physical_address = ~std::uint64_t{0} - 2;
    EXPECT_EQ(elf_message(read_made_elf(file)), "segment 0 goes beyond the last address, FFFFFFFFFFFFFFFF|");
    file.segments[1].physical_address = ~std::uint64_t{0} - 100;
    file.segments[0].physical_address = ~std::uint64_t{0} - 50;
    read_options options;
    options.base = ~std::uint64_t{0} - 100;
    EXPECT_EQ(set_words_of(read_made_elf(file, options)), "0=64 1=61 2=74 3=61 50=63 51=6F 52=64 53=65");
}

TEST(ElfReader, ASegmentMayEndWithTheLastAddress) {
    made_elf file = small_program();
    file.is_64_bits = true;
    file.segments.pop_back();
    file.segments[0].physical_address = ~std::uint64_t{0} - 3;
    read_options options;
    options.base = ~std::uint64_t{0} - 3;
    EXPECT_EQ(set_words_of(read_made_elf(file, options)), "0=63 1=6F 2=64 3=65");
    options.width = 32;
    EXPECT_EQ(read_made_elf(file, options).image->depth(), 1U);
    options.width = 8;
    options.depth = 3;
    EXPECT_EQ(shown_report(read_made_elf(file, options)), "broken beyond-depth 0:0+0 x1\n");
}

TEST(ElfReader, LoadingTheSameBytesAgainAndAgainIsRefused) {
    made_elf file;
    for (std::uint64_t number = 0; number < 20; ++number) {
        file.sections.push_back({"x", 1000 * number, 0, std::string(2000, 'c'), 0});
    }
    EXPECT_EQ(shown_report(read_made_elf(file, with_choice("section", "x"))),
              "broken elf-out-of-proportion 0:0+0 x1\n");
}

TEST(ElfReader, OtherFilesAreNone) {
    EXPECT_EQ(shown_report(read_elf("WIDTH=8;\n", {})), "broken not-elf 0:0+0 x1\n");
    EXPECT_EQ(shown_report(read_elf("", {})), "broken not-elf 0:0+0 x1\n");
    EXPECT_EQ(shown_report(read_elf("!<arch>\n", {})), "broken not-elf 0:0+0 x1\n");
}

TEST(ElfReader, ContentsTellTheFormat) {
    const std::string bytes = bytes_of_elf(small_program());
    EXPECT_EQ(sniff_elf(bytes), certainty::certain);
    EXPECT_EQ(sniff_elf(bytes.substr(0, 5)), certainty::no);
    EXPECT_EQ(sniff_elf(std::string(bytes).replace(4, 1, "\x03")), certainty::likely);
    EXPECT_EQ(parse(bytes).facts.as, &elf_format);
    EXPECT_EQ(format_of_path("boot.axf"), &elf_format);
}

TEST(ElfReader, DamagedFilesAreBrokenOrHaveAnImage) {
    for (const bool is_64_bits : {false, true}) {
        made_elf file = small_program();
        file.is_64_bits = is_64_bits;
        EXPECT_EQ(fault_of_damaged(elf_format, bytes_of_elf(file)), "");
    }
}

TEST(ElfReader, DamagedFilesWithSectionsAreBrokenOrHaveAnImage) {
    std::mt19937 random(9);
    const std::string bytes = bytes_of_elf(small_program());
    for (int round = 0; round < 5000; ++round) {
        std::string damaged = bytes.substr(0, round % 3 == 0 ? random() % bytes.size() : bytes.size());
        for (auto left = random() % 4; left > 0 && !damaged.empty(); --left) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        const read_result result = read_elf(damaged, with_choice("section", ".text,.data"));
        EXPECT_EQ(result.image.has_value(), shown_report(result).find("broken") == std::string::npos);
    }
}

} // namespace
