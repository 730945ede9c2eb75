#include "kvrimage/picture/characters/plot_rows.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace kvrimage;
using namespace kvrimage::characters;

waveform waveform_of(std::uint32_t width, bool is_signed, std::uint32_t columns, const image_words& words) {
    waveform wave(column_grid(0, words.size() - 1, columns), value_order(width, {.is_signed = is_signed}));
    take_all(words, wave);
    return wave;
}

/// The glyphs of a column in ASCII, the lowest row first.
template <class Rows>
std::string column_of(const Rows& rows, std::uint32_t column) {
    std::string glyphs;
    for (std::uint32_t row = 0; row < rows.rows(); ++row) {
        glyphs += rows.at(row, column).glyph;
    }
    return glyphs;
}

TEST(WaveformRows, ColumnIsFilledUpToItsValueInEighths) {
    const waveform wave = waveform_of(8, false, 5, words_of(5, {{0, 3, {"00", "7F", "81", "FF"}}}));
    const waveform_rows rows(wave, block_glyphs, 16);
    EXPECT_EQ(column_of(rows, 0), "▁               ");
    EXPECT_EQ(column_of(rows, 1), "████████        ");
    EXPECT_EQ(column_of(rows, 2), "████████▁       ");
    EXPECT_EQ(column_of(rows, 3), "████████████████");
    EXPECT_EQ(column_of(rows, 4), "                ");
    EXPECT_EQ(rows.at(0, 0).style, character_style::value);
}

TEST(WaveformRows, AsciiHasThreeHeightsInARow) {
    const waveform wave = waveform_of(
        7, false, 9, words_of(9, {{0, 8, {"00", "01", "02", "03", "04", "05", "06", "07", "7F"}}}));
    const waveform_rows rows(wave, ascii_glyphs, 16);
    std::string lowest;
    for (std::uint32_t column = 0; column < 9; ++column) {
        lowest += rows.at(0, column).glyph;
    }
    EXPECT_EQ(lowest, "...:::###");
}

TEST(WaveformRows, ColumnOfSeveralValuesIsShadedBetweenThem) {
    const waveform wave = waveform_of(8, false, 2, words_of(4, {{0, 3, {"80", "FF", "00", "00"}}}));
    const waveform_rows rows(wave, ascii_glyphs, 16);
    EXPECT_EQ(column_of(rows, 0), "########%%%%%%%%");
    EXPECT_EQ(rows.at(7, 0).style, character_style::value);
    EXPECT_EQ(rows.at(8, 0).style, character_style::envelope);
}

TEST(WaveformRows, EndsAreLabelledExactlyAndNothingBesideThem) {
    const waveform wave = waveform_of(8, false, 2, words_of(2, {{0, 1, {"00", "FF"}}}));
    const row_labels labels = waveform_rows(wave, ascii_glyphs, 16).labels();
    EXPECT_EQ(labels, (row_labels{"0x0", "", "", "", "0x40", "", "", "", "0x80", "", "", "", "0xC0", "", "",
                                  "0xFF"}));
}

TEST(WaveformRows, ValuesFarFromZeroHaveTheirOwnLabels) {
    const waveform wave = waveform_of(8, false, 2, words_of(2, {{0, 1, {"64", "66"}}}));
    const row_labels labels = waveform_rows(wave, ascii_glyphs, 4).labels();
    EXPECT_EQ(labels, (row_labels{"0x64", "", "", "0x66"}));
}

TEST(WaveformRows, SignedValuesHaveZeroAmongTheirLabels) {
    const waveform wave = waveform_of(8, true, 2, words_of(2, {{0, 1, {"80", "7F"}}}));
    const row_labels labels = waveform_rows(wave, ascii_glyphs, 16).labels();
    EXPECT_EQ(labels,
              (row_labels{"-128", "", "", "", "-50", "", "", "", "0", "", "", "50", "", "", "", "127"}));
}

TEST(WaveformRows, SignedValuesGrowFromZeroInBothDirections) {
    const waveform wave = waveform_of(8, true, 5, words_of(5, {{0, 4, {"80", "C0", "00", "40", "7F"}}}));
    const waveform_rows rows(wave, block_glyphs, 16);
    EXPECT_EQ(column_of(rows, 0), "████████        ");
    EXPECT_EQ(column_of(rows, 1), "   ▔████        ");
    EXPECT_EQ(column_of(rows, 2), "        ▁       ");
    EXPECT_EQ(column_of(rows, 3), "        ████▁   ");
    EXPECT_EQ(column_of(rows, 4), "        ████████");
    EXPECT_EQ(rows.at(7, 0).means, meaning::negative_value);
    EXPECT_EQ(rows.at(8, 0).means, meaning::nothing);
    EXPECT_EQ(rows.at(8, 4).means, meaning::value);
    EXPECT_EQ(rows.at(7, 4).means, meaning::nothing);
}

TEST(WaveformRows, ColumnAcrossZeroIsShadedOnBothSides) {
    const waveform wave =
        waveform_of(8, true, 3, words_of(6, {{0, 5, {"80", "7F", "80", "C0", "40", "7F"}}}));
    const waveform_rows rows(wave, ascii_glyphs, 16);
    EXPECT_EQ(column_of(rows, 0), "%%%%%%%%%%%%%%%%");
    EXPECT_EQ(column_of(rows, 1), "%%%%####        ");
    EXPECT_EQ(column_of(rows, 2), "        ####%%%%");
    EXPECT_EQ(rows.at(0, 1).means, meaning::between);
    EXPECT_EQ(rows.at(7, 1).means, meaning::negative_value);
}

TEST(WaveformRows, NegativeValuesAloneHangFromTheTop) {
    const waveform wave = waveform_of(8, true, 3, words_of(3, {{0, 2, {"80", "F8", "00"}}}));
    const waveform_rows rows(wave, block_glyphs, 16);
    EXPECT_EQ(column_of(rows, 0), "████████████████");
    EXPECT_EQ(column_of(rows, 1), "              ▔█");
    EXPECT_EQ(column_of(rows, 2), "               ▔");
}

TEST(WaveformRows, BothSidesOfZeroHaveARow) {
    const waveform wave = waveform_of(8, true, 2, words_of(2, {{0, 1, {"9C", "01"}}})); // -100 and 1
    const waveform_rows rows(wave, ascii_glyphs, 4);
    EXPECT_EQ(column_of(rows, 0), "### ");
    EXPECT_EQ(column_of(rows, 1), "   #");
    EXPECT_EQ(rows.labels(), (row_labels{"-100", "", "", "1"}));
    const waveform mirrored = waveform_of(8, true, 2, words_of(2, {{0, 1, {"64", "FF"}}}));
    EXPECT_EQ(waveform_rows(mirrored, ascii_glyphs, 4).labels(), (row_labels{"-1", "0", "", "100"}));
}

TEST(WaveformRows, LargestValuesAreExactWhereTheyEnd) {
    const waveform wave =
        waveform_of(64, true, 2, words_of(2, {{0, 1, {"8000000000000000", "0000000000000001"}}}));
    const waveform_rows rows(wave, ascii_glyphs, 4);
    EXPECT_EQ(column_of(rows, 0), "### ");
    EXPECT_EQ(column_of(rows, 1), "   #");
    EXPECT_EQ(rows.labels().front(), "-9223372036854775808");
    EXPECT_EQ(rows.labels().back(), "1");
}

TEST(WaveformRows, WordsWithDontCareBitsHaveAMarkAndUnsetOnesNone) {
    const waveform wave = waveform_of(8, false, 3, words_of(3, {{0, 1, {"XX", "01"}}}));
    const waveform_rows rows(wave, ascii_glyphs, 4);
    EXPECT_EQ(column_of(rows, 0), "xxxx");
    EXPECT_EQ(column_of(rows, 1), "####");
    EXPECT_EQ(column_of(rows, 2), "    ");
    EXPECT_EQ(rows.at(0, 0).style, character_style::dont_care);
    EXPECT_EQ(rows.at(0, 0).means, meaning::dont_care);
}

TEST(BitRows, CellsHaveTheirShadesAndStyles) {
    bit_map map(column_grid(0, 2, 3), 128, 16);
    map.take({0, 0, "FFFFFFFFFFFFFFF00000000000000000"});
    map.take({1, 1, "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX"});
    const bit_rows rows(map, ascii_glyphs);
    EXPECT_EQ(column_of(rows, 0), "        *#######");
    EXPECT_EQ(column_of(rows, 1), "xxxxxxxxxxxxxxxx");
    EXPECT_EQ(column_of(rows, 2), "~~~~~~~~~~~~~~~~");
    EXPECT_EQ(rows.at(0, 0).style, character_style::value);
    EXPECT_EQ(rows.at(0, 1).style, character_style::dont_care);
    EXPECT_EQ(rows.at(0, 2).style, character_style::faint);
}

TEST(BitRows, PowersOfTwoAndTheHighestBitAreLabelled) {
    const bit_map map(column_grid(0, 0, 1), 1024, 16);
    EXPECT_EQ(
        bit_rows(map, ascii_glyphs).labels(),
        (row_labels{"0", "", "128", "", "256", "", "384", "", "512", "", "640", "", "768", "", "", "1023"}));
}

TEST(BitRows, FewRowsHaveTheirEndsLabelled) {
    EXPECT_EQ(bit_rows(bit_map(column_grid(0, 0, 1), 65, 1), ascii_glyphs).labels(), (row_labels{"0"}));
    EXPECT_EQ(bit_rows(bit_map(column_grid(0, 0, 1), 65, 2), ascii_glyphs).labels(), (row_labels{"0", "64"}));
    EXPECT_EQ(bit_rows(bit_map(column_grid(0, 0, 1), 65, 3), ascii_glyphs).labels(),
              (row_labels{"0", "", "64"}));
}

difference_map map_of_differences() {
    const word one = word::of(1, 8);
    const word two = word::of(2, 8);
    difference_map map(column_grid(0, 7, 2));
    map.take({{0, 3}, one, two}, {0, 3});
    map.take({{4, 5}, one, std::nullopt}, {4, 5});
    map.take({{6, 6}, std::nullopt, two}, {6, 6});
    return map;
}

TEST(DifferenceRows, EachKindHasALaneOfItsOwn) {
    const difference_map map = map_of_differences();
    const difference_rows rows(map, ascii_glyphs, 16);
    EXPECT_EQ(rows.rows(), 14);
    // From the bottom: only B, only A, changed.
    EXPECT_EQ(column_of(rows, 0), "          ####");
    EXPECT_EQ(column_of(rows, 1), "#    ##       ");
    EXPECT_EQ(rows.at(13, 0).style, character_style::changed);
    EXPECT_EQ(rows.at(5, 1).style, character_style::left_only);
    EXPECT_EQ(rows.at(0, 1).style, character_style::right_only);
    EXPECT_EQ(rows.at(0, 1).means, meaning::share);
    EXPECT_EQ(rows.labels(),
              (row_labels{"only B", "", "", "", "", "only A", "", "", "", "", "changed", "", "", ""}));
}

TEST(DifferenceRows, ALaneHasARowAtLeast) {
    const difference_map map = map_of_differences();
    EXPECT_EQ(difference_rows(map, ascii_glyphs, 4).rows(), 5);
    EXPECT_EQ(difference_rows(map, ascii_glyphs, 8).rows(), 8);
}

TEST(Glyphs, NoCharacterHasTwoMeanings) {
    for (const glyph_set& glyphs : {block_glyphs, ascii_glyphs}) {
        const std::vector<std::string_view> frame = {glyphs.side, glyphs.floor, glyphs.left_out, " "};
        for (const std::string_view mark : glyphs.strip) {
            EXPECT_EQ(std::ranges::count(frame, mark), 0) << mark;
            EXPECT_NE(mark, glyphs.between);
            EXPECT_NE(mark, glyphs.run_begin);
            for (const std::string_view height : glyphs.eighths) {
                EXPECT_NE(mark, height);
                EXPECT_NE(glyphs.between, height);
            }
            for (const std::string_view height : glyphs.hanging) {
                EXPECT_NE(mark, height);
            }
            for (const bit_shade shade :
                 {bit_shade::none, bit_shade::low, bit_shade::half, bit_shade::high, bit_shade::all}) {
                EXPECT_NE(mark, glyphs.of(shade));
                EXPECT_NE(glyphs.side, glyphs.of(shade));
            }
        }
        EXPECT_EQ(std::ranges::count(glyphs.eighths, glyphs.left_out), 0);
        EXPECT_EQ(glyphs.of(occupancy::unset), glyphs.of(bit_shade::unset));
        EXPECT_EQ(glyphs.of(occupancy::dont_care), glyphs.of(bit_shade::dont_care));
    }
}

} // namespace
