// The pieces of texts in every registered format. A registered format that returns pieces is included
// automatically.

#include "kvrimage/exchange/text_piece.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/random_images.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;
using testing::ElementsAre;

/// The formats of the library that return pieces, without formats that tests add.
const std::vector<const format*>& formats_with_pieces() {
    static const std::vector<const format*> found = [] {
        std::vector<const format*> with;
        for (const format* each : formats()) {
            if (each->find_pieces != nullptr) {
                with.push_back(each);
            }
        }
        return with;
    }();
    return found;
}

[[maybe_unused]] const bool pieces_listed_before_any_test = !formats_with_pieces().empty();

std::vector<text_piece> pieces_of(std::string_view contents, const read_options& options) {
    const read_result ours = parse(contents, options);
    std::vector<text_piece> pieces;
    ours.facts.as->find_pieces(contents, options, ours,
                               [&pieces](const text_piece& piece) { pieces.push_back(piece); });
    return pieces;
}

std::string_view name_of(text_piece::kind what) {
    constexpr std::array<std::string_view, 7> names = {"comment", "keyword",  "setting", "address",
                                                       "word",    "checksum", "record"};
    return names.at(static_cast<std::size_t>(what));
}

/// "word 1F 0..6/2", "comment -- x"
std::vector<std::string> described(std::string_view contents, const read_options& options) {
    std::vector<std::string> texts;
    for (const text_piece& each : pieces_of(contents, options)) {
        std::string text(name_of(each.what));
        text.append(" ").append(each.where.in(contents));
        if (each.addresses) {
            text += " " + std::to_string(each.addresses->first);
            text += each.addresses->last != each.addresses->first
                        ? ".." + std::to_string(each.addresses->last)
                        : "";
            text += each.step != 1 ? "/" + std::to_string(each.step) : "";
        }
        texts.push_back(text);
    }
    return texts;
}

/// The last piece that sets each address.
std::map<std::uint64_t, text_piece> last_pieces(const std::vector<text_piece>& pieces) {
    std::map<std::uint64_t, text_piece> last;
    for (const text_piece& each : pieces) {
        if (each.what == text_piece::kind::word && each.addresses) {
            for (std::uint64_t address = each.addresses->first; address <= each.addresses->last;
                 address += each.step) {
                last[address] = each;
            }
        }
    }
    return last;
}

void expect_order(const std::vector<text_piece>& pieces, std::size_t size) {
    std::uint64_t end = 0;
    for (const text_piece& each : pieces) {
        EXPECT_LE(end, each.where.offset);
        EXPECT_GT(each.where.length, 0U);
        end = each.where.end();
    }
    EXPECT_LE(end, size);
}

/// Expects that the pieces of @p text match its words and their places.
void expect_words(const std::string& text, const read_options& options) {
    const read_result ours = parse(text, options);
    ASSERT_TRUE(ours.image) << reasons_of(ours);
    const std::vector<text_piece> pieces = pieces_of(text, options);
    expect_order(pieces, text.size());
    const auto last = last_pieces(pieces);
    read_options reading = options;
    reading.as = ours.facts.as;
    for (std::uint64_t address = 0; address < ours.image->depth(); ++address) {
        const auto place = ours.facts.as->find_word(text, reading, address);
        ASSERT_EQ(last.contains(address), place.has_value()) << "address " << address;
        if (place) {
            const span& where = last.at(address).where;
            EXPECT_LT(where.offset, place->offset + place->length) << "address " << address;
            EXPECT_GT(where.end(), place->offset) << "address " << address;
        }
    }
}

TEST(TextPieces, AreWhereEveryFormatFindsItsWords) {
    constexpr std::array<std::uint32_t, 4> widths = {8, 16, 32, 12};
    std::mt19937 random(20);
    for (const format* const as : formats_with_pieces()) {
        for (int round = 0; round < rounds(24); ++round) {
            const image_traits traits{as->holds_unset && round % 2 == 0, false, false};
            const memory_image image =
                random_image(random, widths.at(static_cast<std::size_t>(round) % widths.size()), 40, traits);
            const file_form form = usual_form(random, *as, image);
            if (can_write(image, form.to).empty()) {
                const std::string text = to_text(image, form.to);
                SCOPED_TRACE(std::string(as->id) + "\n" + text);
                expect_words(text, form.back);
            }
        }
    }
}

TEST(TextPieces, AreInOrderInDamagedFiles) {
    std::mt19937 random(21);
    for (const format* const as : formats_with_pieces()) {
        for (int round = 0; round < rounds(40); ++round) {
            const memory_image image = random_image(random, 8, 20, {});
            const file_form form = usual_form(random, *as, image);
            std::string text = to_text(image, form.to);
            for (int change = 0; change < 3 && !text.empty(); ++change) {
                constexpr std::string_view replacements = ":;@[]-/*, \n\r.=Xx0F%";
                text[random() % text.size()] = replacements[random() % replacements.size()];
            }
            read_options options = form.back;
            options.as = as;
            options.keep_going = true;
            SCOPED_TRACE(std::string(as->id) + "\n" + text);
            expect_order(pieces_of(text, options), text.size());
        }
    }
}

read_options reading(std::string_view format_name) {
    read_options options;
    options.as = format_of_name(format_name);
    return options;
}

TEST(TextPieces, OfMif) {
    EXPECT_THAT(
        described("-- words\nWIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n0 : -- first\n 1F 20;\n[4..7] : 5A A5; "
                  "% range %\n9 : ;\nEND;\n-- end\n",
                  reading("mif")),
        ElementsAre("comment -- words", "keyword WIDTH", "setting 8", "keyword DEPTH", "setting 16",
                    "keyword CONTENT", "keyword BEGIN", "address 0 0..1", "comment -- first", "word 1F 0",
                    "word 20 1", "address 4 4..7", "address 7 4..7", "word 5A 4..6/2", "word A5 5..7/2",
                    "comment % range %", "address 9", "keyword END", "comment -- end"));
}

TEST(TextPieces, OfMifFromABase) {
    read_options options = reading("mif");
    options.base = 2;
    EXPECT_THAT(described("WIDTH=8;DEPTH=4;CONTENT BEGIN 1 : 5; [2..3] : 6 7 8; END;", options),
                ElementsAre("keyword WIDTH", "setting 8", "keyword DEPTH", "setting 4", "keyword CONTENT",
                            "keyword BEGIN", "address 1", "word 5", "address 2 0..1", "address 3 0..1",
                            "word 6 0", "word 7 1", "word 8", "keyword END"));
}

TEST(TextPieces, OfIntelHexOfWords) {
    read_options options = reading("hex");
    options.width = 16;
    EXPECT_THAT(described("start\n:020000040001F9\n:04 0001 00 12345678 E7\nnote\n:00000001 FF\n", options),
                ElementsAre("record 02", "address 0000", "record 04", "setting 0001", "checksum F9",
                            "record 04", "address 0001 65537..65538", "record 00", "word 1234 65537",
                            "word 5678 65538", "checksum E7", "comment note", "record 00", "address 0000",
                            "record 01", "checksum FF"));
}

TEST(TextPieces, OfIntelHexOfBytes) {
    read_options options = reading("hexbytes");
    options.width = 16;
    options.order = byte_order::little;
    EXPECT_THAT(described(":0400000012345678E8\n:00000001FF\n", options),
                ElementsAre("record 04", "address 0000 0..1", "record 00", "word 1234 0", "word 5678 1",
                            "checksum E8", "record 00", "address 0000", "record 01", "checksum FF"));
}

TEST(TextPieces, OfIntelHexWithoutAWidth) {
    EXPECT_THAT(described(":0400000012345678E8\n:00000001FF\n", reading("hex")), ElementsAre());
}

TEST(TextPieces, OfRif) {
    EXPECT_THAT(
        described("// all\n@2\n1F XX\n@G\n3\n", reading("rif")),
        ElementsAre("comment // all", "address @2 2", "word 1F 2", "word XX 3", "address @G", "word 3"));
}

TEST(TextPieces, OfReadmemh) {
    EXPECT_THAT(described("/* a */ 1F 2x // b\n@10 33\n@ZZ 44", reading("readmemh")),
                ElementsAre("comment /* a */", "word 1F 0", "word 2x 1", "comment // b", "address @10 16",
                            "word 33 16", "address @ZZ", "word 44"));
}

TEST(TextPieces, OfReadmemWithCommentsOfOtherLanguages) {
    EXPECT_THAT(described("# a\n1F\n-- b\n20 /* c\n", reading("readmemh")),
                ElementsAre("comment # a", "word 1F 0", "comment -- b", "word 20 1", "comment /* c\n"));
}

TEST(TextPieces, OfReadmemb) {
    EXPECT_THAT(described("01 1x\n", reading("readmemb")), ElementsAre("word 01 0", "word 1x 1"));
}

TEST(TextPieces, OfCoe) {
    EXPECT_THAT(described("; a\nmemory_initialization_radix=16;\nmemory_initialization_vector=\n1F,\n20;\n",
                          reading("coe")),
                ElementsAre("comment ; a", "keyword memory_initialization_radix", "setting 16",
                            "keyword memory_initialization_vector", "word 1F 0", "word 20 1"));
}

TEST(TextPieces, OfLogisim) {
    EXPECT_THAT(described("v2.0 raw\n# a\n1f 3*0\n", reading("logisim")),
                ElementsAre("keyword v2.0 raw", "comment # a", "word 1f 0", "word 3*0 1..3"));
}

TEST(TextPieces, OfLogisimOfBytes) {
    read_options options = reading("logisim");
    options.width = 16;
    options.base = 2;
    EXPECT_THAT(described("v3.0 hex bytes addressed little-endian\n0: 1 2 3 4\n4: 3*5 6\n", options),
                ElementsAre("keyword v3.0 hex bytes addressed little-endian", "address 0", "word 1", "word 2",
                            "word 3 0", "word 4 0", "address 4 1", "word 3*5 1..2", "word 6 2"));
}

TEST(TextPieces, OfLogisimOfBytesWithAnAddressThatIsNone) {
    read_options options = reading("logisim");
    options.width = 8;
    options.keep_going = true;
    EXPECT_THAT(
        described("v3.0 hex bytes addressed little-endian\n0: 1\nG: 2\n", options),
        ElementsAre("keyword v3.0 hex bytes addressed little-endian", "address 0 0", "word 1 0", "word 2"));
}

TEST(TextPieces, OfMemheader) {
    EXPECT_THAT(described("#Format=AddrHex\n#Depth=4\n#Width=8\n#Data\n0: 1F 20\n", reading("memheader")),
                ElementsAre("keyword Format", "setting AddrHex", "keyword Depth", "setting 4",
                            "keyword Width", "setting 8", "keyword #Data", "address 0 0", "word 1F 0",
                            "word 20 1"));
}

TEST(TextPieces, OfTables) {
    EXPECT_THAT(described("address,value\n3,1F\n4,20\n", reading("csv")),
                ElementsAre("address 3 3", "word 1F 3", "address 4 4", "word 20 4"));
}

TEST(TextPieces, OfTablesWithSeveralWordsARow) {
    EXPECT_THAT(described("addr,0,1\n0x10,1F,20\nG,1\n0x18,,5\n", reading("csv")),
                ElementsAre("address 0x10 16", "word 1F 16", "word 20 17", "address G", "word 1",
                            "address 0x18 24", "word 5 25"));
}

TEST(TextPieces, OfTablesWithTheAddressAtTheEnd) {
    EXPECT_THAT(described("value,address\n1F,3\n20,4\n", reading("csv")),
                ElementsAre("word 1F 3", "address 3 3", "word 20 4", "address 4 4"));
}

TEST(TextPieces, OfTablesWithoutAddresses) {
    EXPECT_THAT(described("value\n1F\n20\n", reading("csv")), ElementsAre("word 1F 0", "word 20 1"));
}

TEST(TextPieces, OfSrecords) {
    EXPECT_THAT(described("note\nS1050004123 \nS10500041234B0\nS9030000FC\n", reading("srec")),
                ElementsAre("comment note", "record S1", "address 0004 4..5", "word 12 4", "word 34 5",
                            "checksum B0", "record S9", "setting 0000", "checksum FC"));
}

TEST(TextPieces, OfRecordsWithoutAWordHaveTheirAddress) {
    read_options options = reading("hex");
    options.width = 16;
    options.unit = address_unit::word;
    options.keep_going = true;
    EXPECT_THAT(described(":00000400FC\n:01000500AA50\n", options),
                ElementsAre("record 00", "address 0004 4", "record 00", "checksum FC", "record 01",
                            "address 0005 5", "record 00", "checksum 50"));
}

TEST(TextPieces, OfSrecordsAreThoseOfRecordsWithoutFaults) {
    // A data record without data, a blank line, and one with a wrong checksum.
    EXPECT_THAT(
        described("S1030010EC\n\nS104000055A7\nS9030000FC\n", reading("srec")),
        ElementsAre("record S1", "setting 0010", "checksum EC", "record S9", "setting 0000", "checksum FC"));
}

TEST(TextPieces, OfSrecordsThatAreNoMemoryHaveTheWidthThatIsGiven) {
    read_options options = reading("srec");
    options.width = 16;
    EXPECT_THAT(described("S10700021234ABCD38\nS1\n", options),
                ElementsAre("record S1", "address 0002 1..2", "word 1234 1", "word ABCD 2", "checksum 38"));
}

TEST(TextPieces, OfTitxt) {
    read_options options = reading("titxt");
    options.width = 16;
    EXPECT_THAT(described("@0010\n12 34 56 78\nq\n", options),
                ElementsAre("address @0010 8", "word 12 34 8", "word 56 78 9", "keyword q"));
}

TEST(TextPieces, OfTitxtFromABase) {
    read_options options = reading("titxt");
    options.width = 16;
    options.base = 0x11;
    EXPECT_THAT(
        described("@0010\n12 34 56\n@0008\n78\nq\n", options),
        ElementsAre("address @0010", "word 12", "word 34 56 0", "address @0008", "word 78", "keyword q"));
}

} // namespace

} // namespace kvrimage_tests
