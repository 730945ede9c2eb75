#include "kvrimage/picture/characters/plot_rows.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using namespace kvrimage::characters;

waveform waveform_of(std::uint32_t width, bool is_signed, std::uint32_t columns, const image_words& words) {
    waveform wave(column_grid(0, words.size() - 1, columns), value_order(width, is_signed));
    take_all(words, wave);
    return wave;
}

/// The glyphs of a column in ASCII, the lowest row first.
template <class Rows>
std::string column_of(const Rows& rows, std::uint32_t column) {
    std::string glyphs;
    for (std::uint32_t row = 0; row < plot_rows; ++row) {
        glyphs += rows.at(row, column).glyph;
    }
    return glyphs;
}

TEST(WaveformRows, ColumnIsFilledUpToItsValueInEighths) {
    const waveform wave = waveform_of(8, false, 5, words_of(5, {{0, 3, {"00", "7F", "81", "FF"}}}));
    const waveform_rows rows(wave, block_glyphs);
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
    const waveform_rows rows(wave, ascii_glyphs);
    std::string lowest;
    for (std::uint32_t column = 0; column < 9; ++column) {
        lowest += rows.at(0, column).glyph;
    }
    EXPECT_EQ(lowest, "...:::###");
}

TEST(WaveformRows, ColumnOfSeveralValuesIsShadedBetweenThem) {
    const waveform wave = waveform_of(8, false, 2, words_of(4, {{0, 3, {"80", "FF", "00", "00"}}}));
    const waveform_rows rows(wave, ascii_glyphs);
    EXPECT_EQ(column_of(rows, 0), "########||||||||");
    EXPECT_EQ(rows.at(7, 0).style, character_style::value);
    EXPECT_EQ(rows.at(8, 0).style, character_style::envelope);
}

TEST(WaveformRows, EndsAreLabelledExactlyAndNothingBesideThem) {
    const waveform wave = waveform_of(8, false, 2, words_of(2, {{0, 1, {"00", "FF"}}}));
    const row_labels labels = waveform_rows(wave, ascii_glyphs).labels();
    EXPECT_EQ(labels,
              (row_labels{"0", "", "", "50", "", "", "100", "", "", "150", "", "", "200", "", "", "255"}));
}

TEST(WaveformRows, SignedValuesHaveZeroAmongTheirLabels) {
    const waveform wave = waveform_of(8, true, 2, words_of(2, {{0, 1, {"80", "7F"}}}));
    const row_labels labels = waveform_rows(wave, ascii_glyphs).labels();
    EXPECT_EQ(labels,
              (row_labels{"-128", "", "", "", "-50", "", "", "", "0", "", "", "50", "", "", "", "127"}));
}

TEST(BitRows, CellsHaveTheirShadesAndStyles) {
    bit_map map(column_grid(0, 2, 3), 68, plot_rows);
    map.take({0, 0, "FFFFFFFFF00000000"});
    map.take({1, 1, "XXXXXXXXXXXXXXXXX"});
    const bit_rows rows(map, ascii_glyphs);
    EXPECT_EQ(column_of(rows, 0), "       +########");
    EXPECT_EQ(column_of(rows, 1), "xxxxxxxxxxxxxxxx");
    EXPECT_EQ(column_of(rows, 2), "................");
    EXPECT_EQ(rows.at(0, 0).style, character_style::value);
    EXPECT_EQ(rows.at(0, 1).style, character_style::dont_care);
    EXPECT_EQ(rows.at(0, 2).style, character_style::faint);
}

TEST(BitRows, PowersOfTwoAndTheHighestBitAreLabelled) {
    const bit_map map(column_grid(0, 0, 1), 1024, plot_rows);
    EXPECT_EQ(
        bit_rows(map, ascii_glyphs).labels(),
        (row_labels{"0", "", "128", "", "256", "", "384", "", "512", "", "640", "", "768", "", "", "1023"}));
}

} // namespace
