#include "kvrimage/formats/mif/mif_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

/// Records the pieces that it receives.
class mif_piece_list : public mif_sink {
public:
    explicit mif_piece_list(std::string_view contents) : text(contents) {}

    void comment(const span& whole) override { add("comment", whole); }
    void setting(const mif_setting& found) override {
        pieces.push_back("setting " + std::to_string(static_cast<int>(found.keyword)) + " '" +
                         shown(found.value) + "'");
    }
    void content(const span& keyword) override { add("content", keyword); }
    void begin(const span& keyword) override { add("begin", keyword); }
    void statement(const mif_statement& found) override {
        std::string piece = "statement " + shown(found.first);
        if (found.is_range()) {
            piece += ".." + shown(found.last);
        }
        for (const span& value : found.values) {
            piece += " " + shown(value);
        }
        pieces.push_back(piece + (found.sound ? "" : " unsound"));
    }
    void end(const span& keyword, const span& semicolon) override {
        pieces.push_back("end " + shown(keyword) + shown(semicolon));
    }
    void finding(const mif_finding& found) override {
        pieces.push_back("finding " + std::to_string(static_cast<int>(found.what)) + " " +
                         std::to_string(found.where.offset));
    }

    std::vector<std::string> pieces;

private:
    [[nodiscard]] std::string shown(const span& where) const { return std::string(where.in(text)); }
    void add(const std::string& what, const span& where) { pieces.push_back(what + " " + shown(where)); }

    std::string_view text;
};

std::vector<std::string> pieces_of(std::string_view contents) {
    mif_piece_list list(contents);
    parse_mif(contents, list);
    return list.pieces;
}

TEST(MifParser, HandsOutEveryPieceInOrder) {
    EXPECT_THAT(pieces_of("-- a\nWidth = 8 ;\r\nDEPTH=4;\n%b\n c% ADDRESS_RADIX=hex;DATA_RADIX=UNS;\n"
                          "content Begin\n\t0 : 1 2\n 3;\n[4 .. 7]:5 ;-- d\nend;\n"),
                ElementsAre("comment -- a", "setting 0 '8'", "setting 1 '4'", "comment %b\n c%",
                            "setting 2 'hex'", "setting 3 'UNS'", "content content", "begin Begin",
                            "statement 0 1 2 3", "statement 4..7 5", "comment -- d", "end end;"));
}

TEST(MifParser, GoesOnBehindWhatItDoesNotUnderstand) {
    const std::string where = std::to_string(static_cast<int>(mif_syntax::range_syntax));
    EXPECT_THAT(pieces_of("CONTENT BEGIN\n[1 2 3 4] : 5;\n6 : 7;\nEND;\n"),
                ElementsAre("content CONTENT", "begin BEGIN", "finding " + where + " 14", "statement 6 7",
                            "end END;"));
}

TEST(MifParser, AStatementWithoutAColonEndsWithItsLine) {
    const std::string where = std::to_string(static_cast<int>(mif_syntax::missing_colon));
    EXPECT_THAT(pieces_of("CONTENT BEGIN\n0 1\n2 : 3;\n4 : 5;\nEND;\n"),
                ElementsAre("content CONTENT", "begin BEGIN", "finding " + where + " 14",
                            "statement 0 unsound", "statement 2 3", "statement 4 5", "end END;"));
}

} // namespace
