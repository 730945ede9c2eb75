#include "kvrimage/formats/csv/csv_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

class csv_collector final : public csv_sink {
public:
    explicit csv_collector(std::string_view contents) : text(contents) {}
    void take(const csv_piece& piece) override {
        static constexpr std::array names = {"", "after:", "open:", "/"};
        pieces.push_back(names.at(static_cast<std::size_t>(piece.what)) + std::string(piece.where.in(text)));
    }
    std::vector<std::string> pieces;

private:
    std::string_view text;
};

/// The fields, with "/" at the end of each row.
std::vector<std::string> csv_pieces(std::string_view contents) {
    csv_collector collector(contents);
    csv_parser(contents, collector).parse();
    return collector.pieces;
}

TEST(CsvParser, SplitsRowsAndFields) {
    EXPECT_THAT(csv_pieces("a,b\r\n1, 2 \n\n3,\n"), ElementsAre("a", "b", "/", "1", "2", "/", "3", "", "/"));
    EXPECT_THAT(csv_pieces(",1"), ElementsAre("", "1", "/"));
}

TEST(CsvParser, TheFirstRowSaysTheSeparator) {
    EXPECT_EQ(csv_separator("a,b\n1;2;3\n"), ',');
    EXPECT_EQ(csv_separator("\n a;b,c\n"), ';');
    EXPECT_EQ(csv_separator("a;b\tc"), '\t');
    EXPECT_EQ(csv_separator("\"a;b\",c"), ',');
    EXPECT_EQ(csv_separator("1\r\n2;3"), ',');
    EXPECT_EQ(csv_separator(""), ',');
}

TEST(CsvParser, ATabIsABlankWhereItSeparatesNothing) {
    EXPECT_THAT(csv_pieces("1;2\n\t3\t;4\n"), ElementsAre("1", "2", "/", "3", "4", "/"));
    EXPECT_THAT(csv_pieces("1\t2\n\t3\n"), ElementsAre("1", "2", "/", "", "3", "/"));
}

TEST(CsvParser, QuotedFieldsHoldSeparatorsAndLines) {
    EXPECT_THAT(csv_pieces("\"a,b\" ,\"c\n\"\"d\"\"\"\n"), ElementsAre("a,b", "c\n\"\"d\"\"", "/"));
    EXPECT_THAT(csv_pieces("\"\",1"), ElementsAre("", "1", "/"));
}

TEST(CsvParser, TextAfterAQuotedFieldIsAPieceOfItsOwn) {
    EXPECT_THAT(csv_pieces("\"1\"2,3"), ElementsAre("1", "after:2", "3", "/"));
}

TEST(CsvParser, AQuotedFieldWithoutEndTakesTheRest) {
    EXPECT_THAT(csv_pieces("1,\"2\n3,4\n"), ElementsAre("1", "open:\"2", "/"));
}

TEST(CsvParser, SkipsAByteOrderMarkAndEmptyRows) {
    EXPECT_THAT(csv_pieces("\xEF\xBB\xBF\n1\n  \n"), ElementsAre("1", "/"));
    EXPECT_THAT(csv_pieces(" \r\n"), IsEmpty());
}

} // namespace
