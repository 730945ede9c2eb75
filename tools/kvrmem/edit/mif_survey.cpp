#include "tools/kvrmem/edit/mif_survey.h"

#include "tools/kvrmem/edit/mif_statement.h"
#include "tools/kvrmem/memory/word_text.h"

#include <string>

namespace kvrmem {

namespace {

/// The style for a file that has no line to follow: all digits of the word.
mif_line_style style_without_example(const memory_image& image) {
    mif_line_style style;
    std::string text;
    show_word("0", image.data_radix, image.width, text);
    style.value.digits = text.size();
    return style;
}

} // namespace

mif_survey survey_mif(std::string_view text, const memory_image& image, const edit_pieces& pieces,
                      kvr::mif_memory& memory) {
    mif_survey survey;
    style_finder addresses;
    style_finder values;
    std::size_t behind_last = 0;
    for_each_statement(text, memory, [&](const mif_statement& statement) {
        const kvr::mif_content& content = statement.content();
        if (pieces.touch(content.first, content.last)) {
            survey.places.push_back({statement.number(), content.first, content.last});
        }
        addresses.see(statement.first_address());
        if (statement.is_range()) {
            addresses.see(statement.last_address());
        }
        for (const std::string_view value : content.values) {
            values.see(statement.in_file(value));
        }
        survey.style = style_of(content, statement.indent());
        behind_last = statement.behind();
    });
    if (behind_last == 0) {
        survey.style = style_without_example(image);
    } else {
        survey.style.address = addresses.found();
        survey.style.value = values.found();
    }
    survey.end_line = line_before_end(text, behind_last != 0 ? behind_last : content_start(text));
    return survey;
}

} // namespace kvrmem
