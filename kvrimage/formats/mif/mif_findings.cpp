#include "kvrimage/formats/mif/mif_findings.h"

#include "kvrimage/diagnostics/diagnose.h"

#include <type_traits>

namespace kvrimage {

namespace {

struct mif_syntax_kind {
    diagnostic (*make)(const places& where, const named_text& text, const named_text& instead);
    std::string_view repair;
};

/// Calls @p Make with the arguments that its message needs.
template <auto Make>
diagnostic one_of(const places& where, const named_text& text, const named_text& instead) {
    if constexpr (std::is_invocable_v<decltype(Make), const places&>) {
        return Make(where);
    } else if constexpr (std::is_invocable_v<decltype(Make), const places&, const named_text&>) {
        return Make(where, text);
    } else {
        return Make(where, text, instead);
    }
}

/// In the order of mif_syntax.
constexpr std::array<mif_syntax_kind, mif_syntax_count> mif_syntax_kinds = {{
    {one_of<diagnose::byte_order_mark>, "byte-order mark removed"},
    {one_of<diagnose::missing_equals>, "'=' put after the name"},
    {one_of<diagnose::unknown_header>, ""},
    {one_of<diagnose::header_text>, "'--' put before the text"},
    {one_of<diagnose::missing_setting_value>, ""},
    {one_of<diagnose::header_semicolon>, "';' put after the setting"},
    {one_of<diagnose::empty_statement>, "';' removed"},
    {one_of<diagnose::lone_semicolon>, "';' removed"},
    {one_of<diagnose::missing_content>, "CONTENT BEGIN put before the first statement"},
    {one_of<diagnose::content_spelling>, "CONTENT BEGIN spelled correctly"},
    {one_of<diagnose::content_semicolon>, "';' removed"},
    {one_of<diagnose::missing_begin>, "BEGIN put after CONTENT"},
    {one_of<diagnose::before_begin>, ""},
    {one_of<diagnose::after_begin>, "line break put after BEGIN"},
    {one_of<diagnose::missing_semicolon>, "';' put after the last value"},
    {one_of<diagnose::content_syntax>, ""},
    {one_of<diagnose::missing_value>, ""},
    {one_of<diagnose::missing_address>, ""},
    {one_of<diagnose::range_syntax>, ""},
    {one_of<diagnose::missing_bracket>, "']' put after the range"},
    {one_of<diagnose::range_form>, "range written with '..'"},
    {one_of<diagnose::one_in_brackets>, "brackets removed"},
    {one_of<diagnose::stray_character>, ""},
    {one_of<diagnose::comma>, "',' is now a blank"},
    {one_of<diagnose::left_out>, ""},
    {one_of<diagnose::after_semicolon>, "line break put between two statements"},
    {one_of<diagnose::before_end>, "END put into a line of its own"},
    {one_of<diagnose::split_value>, "blank put before the value"},
    {one_of<diagnose::line_too_long>, "line broken at a blank"},
    {one_of<diagnose::after_comment>, "line break put after the comment"},
    {one_of<diagnose::open_comment>, "'%' put at the end of the comment"},
    {one_of<diagnose::comment_of_lines>, "'--' put before each line of the comment"},
    {one_of<diagnose::doubtful_comment>, ""},
    {one_of<diagnose::end_semicolon>, "';' put after END"},
    {one_of<diagnose::after_end>, ""},
    {one_of<diagnose::text_after_end>, ""},
    {one_of<diagnose::missing_end>, "END; put after the last line"},
    {one_of<diagnose::mif_comment>, "comments begin with '--' now"},
}};

} // namespace

void mif_findings::add(const mif_finding& found, diagnostic_list& list) {
    const auto index = static_cast<std::size_t>(found.what);
    if (found.what == mif_syntax::unknown_setting) {
        list.add(mif_syntax_kinds[index].make(found.where, found.text.in(text), found.instead));
        return;
    }
    cause& one = causes[index];
    if (one.found.add(found.where, found.repair, all_repairs)) {
        one.text = found.text.in(text).substr(0, named_text::longest + 1);
        one.instead = found.instead;
    }
}

void mif_findings::report(diagnostic_list& list) {
    for (std::size_t i = 0; i < causes.size(); ++i) {
        cause& one = causes[i];
        if (!one.found.empty()) {
            const mif_syntax_kind& kind = mif_syntax_kinds[i];
            one.found.report(kind.make(one.found.where(), one.text, one.instead), kind.repair, list);
        }
    }
}

} // namespace kvrimage
