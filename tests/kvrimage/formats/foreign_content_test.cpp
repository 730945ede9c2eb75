#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using namespace std::string_view_literals;

std::string kind_of(std::string_view contents) {
    const auto found = foreign_content(contents);
    return found ? found->message : "";
}

std::string message_for(const std::string& what) {
    return "this looks like " + what + ", not like a memory file";
}

TEST(ForeignContent, IsKnownByItsFirstBytes) {
    EXPECT_EQ(kind_of("\x7F"
                      "ELF\2\1\1"),
              message_for("an ELF program"));
    EXPECT_EQ(kind_of("\x89PNG\r\n\x1A\n"), message_for("a PNG picture"));
    EXPECT_EQ(kind_of("PK\x03\x04\0\0"sv), message_for("a zip archive"));
    EXPECT_EQ(kind_of("\x1F\x8B\x08"), message_for("a gzip archive"));
    EXPECT_EQ(kind_of("\xFF\xFE\0\0A\0\0\0"sv), message_for("UTF-32 text"));
}

TEST(ForeignContent, IsNotThatOfAFormatThatCannotBeRead) {
    static const format written_only = {
        .id = "written_only", .title = "Written only", .extensions = {}, .sniff = [](std::string_view head) {
            return head.starts_with("written only!") ? certainty::certain : certainty::no;
        }};
    add_format(written_only);
    EXPECT_EQ(foreign_content("written only!\n", &mif_format), std::nullopt);
}

TEST(ForeignContent, IsUtf16WithOrWithoutAMark) {
    for (const std::string_view text :
         {"\xFF\xFEW\0I\0"sv, "\xFE\xFF\0W\0I"sv, "W\0I\0D\0T\0H\0"sv, "\0W\0I\0D\0T"sv}) {
        EXPECT_EQ(kind_of(text), message_for("UTF-16 text"));
    }
    EXPECT_EQ(foreign_content("\xFF\xFE")->hint, "use iconv -f UTF-16 -t UTF-8 to convert it to plain text");
}

TEST(ForeignContent, IsBinaryWithANul) {
    EXPECT_EQ(kind_of("WIDTH=8;\0"sv), message_for("a binary file"));
    EXPECT_EQ(kind_of("\0"sv), message_for("a binary file"));
    EXPECT_EQ(kind_of("\0\0\0\0\0\0\0\0"sv), message_for("a binary file"));
    EXPECT_EQ(kind_of("a\0\0b"sv), message_for("a binary file"));
}

TEST(ForeignContent, IsMarkup) {
    for (const std::string_view text :
         {"<?xml version=\"1.0\"?>", "<!DOCTYPE html>", "<Book 5>\n", "\xEF\xBB\xBF<html>"}) {
        EXPECT_EQ(kind_of(text), message_for("markup text of other software"));
    }
    EXPECT_EQ(kind_of("<"), "");
    EXPECT_EQ(kind_of("< 1"), "");
}

TEST(ForeignContent, IsBareRowsOfBinaryWords) {
    EXPECT_EQ(kind_of("01000001\n01000010\n\n 1111 0000\r\n"), message_for("bare rows of binary words"));
    EXPECT_EQ(kind_of("0"), message_for("bare rows of binary words"));
    EXPECT_EQ(kind_of("\xEF\xBB\xBF"
                      "01\n"),
              message_for("bare rows of binary words"));
}

TEST(ForeignContent, IsBareRowsOfHexadecimalWords) {
    EXPECT_EQ(kind_of("01000001\n0100001F\n"), message_for("bare rows of hexadecimal words"));
    EXPECT_EQ(foreign_content("AB cd\n")->hint, "use --from readmemh");
}

TEST(ForeignContent, HasTheFirstFilledLineAsItsPlace) {
    const auto found = foreign_content("\n  AB CD \r\n");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->where.offset, 3U);
    EXPECT_EQ(found->where.length, 5U);
}

TEST(ForeignContent, LooksAtTheFrontOfALongText) {
    std::string text;
    while (text.size() < 70000) {
        text += "0101010101\n";
    }
    EXPECT_EQ(kind_of(text + "Z"), message_for("bare rows of binary words"));
    EXPECT_EQ(kind_of(std::string(70000, '1')), message_for("bare rows of binary words"));
    EXPECT_EQ(kind_of("Z\n" + text), "");
}

TEST(ForeignContent, IsAnotherFormatForItsReader) {
    const auto found = foreign_content("WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n", &hex_format);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, diagnostic_id::other_format);
    EXPECT_EQ(found->message, "this looks like MIF, not like Intel HEX");
    EXPECT_EQ(found->hint, "read it with --from mif");
}

TEST(ForeignContent, IsSettingsOfOtherSoftwareForAReader) {
    for (const std::string_view text : {"VERSION 300\n", "\n memory_radix=16;\n", "_a = b"}) {
        const auto found = foreign_content(text, &mif_format);
        ASSERT_TRUE(found) << text;
        EXPECT_EQ(found->message, message_for("text of other software"));
    }
    for (const std::string_view text : {"0 : 1;\n", "300 VERSION\n", "VERSION\n", "VERSION a\n",
                                        "VERSION -3\n", "VERSION,3\n", "Dear reader,\n"}) {
        EXPECT_FALSE(foreign_content(text, &mif_format)) << text;
    }
}

TEST(ForeignContent, IsNotEveryText) {
    EXPECT_EQ(kind_of(""), "");
    EXPECT_EQ(kind_of(" \n\t"), "");
    EXPECT_EQ(kind_of("Dear reader,"), "");
    EXPECT_EQ(kind_of("WIDTH=8;\n"), "");
    EXPECT_EQ(kind_of("0101\nDear reader,\n"), "");
}

TEST(ForeignContent, IsNoMarkupWithoutANameAfterTheBracket) {
    for (const std::string_view markup : {"<?xml", "<!--", "<Memory>", "<zone>"}) {
        EXPECT_TRUE(foreign_content(markup)) << markup;
    }
    for (const std::string_view other : {"<", "<1>", "<[", "<{", "<@"}) {
        EXPECT_FALSE(foreign_content(other)) << other;
    }
}

} // namespace
