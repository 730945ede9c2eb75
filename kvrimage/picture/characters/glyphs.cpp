#include "kvrimage/picture/characters/glyphs.h"

namespace kvrimage::characters {

namespace {

constexpr glyph_set blocks = {{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"},
                              "▒",
                              {"·", "▒", "█", "━"},
                              "┣",
                              {"·", " ", "░", "▒", "▓", "█", "x"},
                              "│",
                              "┤",
                              "└",
                              "─",
                              "┬",
                              "…"};

constexpr glyph_set ascii = {{" ", ".", ".", ".", ":", ":", ":", "#", "#"},
                             "|",
                             {".", "+", "#", "="},
                             "[",
                             {".", " ", "-", "+", "*", "#", "x"},
                             "|",
                             "+",
                             "+",
                             "-",
                             "+",
                             "..."};

} // namespace

const glyph_set& glyphs_for(bool has_blocks) noexcept {
    return has_blocks ? blocks : ascii;
}

} // namespace kvrimage::characters
