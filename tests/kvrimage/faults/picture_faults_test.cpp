// Each allocation of pictures, of texts of diagnostics and of edits of a text fails, one per trial.

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/files/unfinished_files.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/picture/picture.h"
#include "kvrimage/picture/pixel_picture.h"
#include "tests/kvrimage/faults/library_trial.h"
#include "tests/kvrimage/faults/sample_images.h"

#include <gtest/gtest.h>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

/// A map of bits, and bars over ranges that are separated by a gap.
constexpr image_kind drawn_kinds[] = {{'x', "don't care", image_with_dont_care},
                                      {'d', "the deepest", deepest_image}};

picture_options named_picture(const library_trial& trial) {
    picture_options options;
    options.range = {12, trial.image->last_address()};
    options.is_signed = true;
    options.name = "folder/a name that is longer than what a string holds.mif";
    options.format_title = "MIF";
    return options;
}

difference_options named_difference() {
    difference_options options;
    options.left = {"a name that is longer than what a string holds.mif", "MIF"};
    options.right = {"another name that is longer than what a string holds.hex", "Intel HEX"};
    return options;
}

character_screen colored_screen() {
    character_screen screen;
    screen.columns = 60;
    screen.has_blocks = true;
    screen.paint = [](character_style /*style*/, std::string_view text) {
        return "<" + std::string(text) + ">";
    };
    return screen;
}

/// trial.image with some words changed.
memory_image changed_image(const memory_image& image) {
    memory_image changed = image;
    changed.set(14, word::of(0x123, image.width()));
    changed.unset({20, 24});
    return changed;
}

constexpr image_call calls_of_pictures[] = {
    {"draw_svg", [](library_trial& trial) { trial.text = draw_svg(*trial.image, named_picture(trial)); }},
    {"draw_in_characters",
     [](library_trial& trial) {
         trial.text = draw_in_characters(*trial.image, named_picture(trial), colored_screen());
     }},
};

constexpr image_kind kinds_of_differences[] = {{'w', "wide words", image_of_wide_words}};

constexpr image_call calls_of_differences[] = {
    {"draw_difference_svg",
     [](library_trial& trial) {
         trial.text = draw_difference_svg(*trial.image, changed_image(*trial.image), named_difference());
     }},
    {"draw_difference_in_characters",
     [](library_trial& trial) {
         trial.text = draw_difference_in_characters(*trial.image, changed_image(*trial.image),
                                                    named_difference(), colored_screen());
     }},
};

constexpr image_kind kinds_of_pixels[] = {{'w', "wide words", image_of_wide_words},
                                          {'b', "bytes", image_held_as_bytes}};

constexpr image_call calls_of_pixels[] = {
    {"draw_pixels_svg",
     [](library_trial& trial) {
         trial.text = draw_pixels_svg(*trial.image, named_picture(trial), {4, pixel_format::rgb444});
     }},
    {"draw_pixels_in_characters",
     [](library_trial& trial) {
         trial.text = draw_pixels_in_characters(*trial.image, named_picture(trial), {4, pixel_format::rgb332},
                                                {20, true, {}});
     }},
};

constexpr std::string_view broken_text = "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1FF;\nEND;\n";

diagnostic some_diagnostic() {
    diagnostic found = parse(broken_text).diagnostics.at(0);
    found.more = {found.where, found.where};
    found.count = 50;
    found.hint = "a hint that is longer than what a string holds";
    return found;
}

const diagnostic& known_diagnostic() {
    static const diagnostic known = some_diagnostic();
    return known;
}

std::vector<text_edit> some_edits() {
    return {{0, 5, "DEPTH"}, {30, 0, "a text that is longer than what a string holds"}, {40, 2, ""}};
}

const std::vector<text_edit>& known_edits() {
    static const std::vector<text_edit> known = some_edits();
    return known;
}

const library_call calls_of_texts[] = {
    {"diagnostic_text", prepare_nothing,
     [](library_trial& trial) { trial.text = diagnostic_text(known_diagnostic(), "boot.mif", broken_text); }},
    {"diagnostic_text, painted", prepare_nothing,
     [](library_trial& trial) {
         trial.text = diagnostic_text(
             known_diagnostic(), "boot.mif", broken_text,
             [](text_part /*part*/, std::string_view text) { return "<" + std::string(text) + ">"; });
     }},
    {"level_of", prepare_nothing, [](library_trial& trial) { trial.text = level_of(known_diagnostic()); },
     false},
    {"with_edits", prepare_nothing,
     [](library_trial& trial) { trial.text = with_edits(std::string(broken_text), known_edits()); }},
    {"remove_temporary_files", prepare_nothing, [](library_trial& /*trial*/) { remove_temporary_files(); },
     false},
};

TEST(PictureAllocationFaults, PicturesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(each_call_on_each(drawn_kinds, calls_of_pictures));
}

TEST(PictureAllocationFaults, DifferencesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(
        each_call_on_each(kinds_of_differences, calls_of_differences));
}

TEST(PictureAllocationFaults, PixelsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(each_call_on_each(kinds_of_pixels, calls_of_pixels));
}

TEST(PictureAllocationFaults, TextsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_texts);
}

} // namespace

} // namespace kvrimage_tests
