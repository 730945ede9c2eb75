#include "kvrimage/formats/mif/mif_findings.h"

#include "kvrimage/diagnostics/diagnose.h"

namespace kvrimage {

namespace {

struct mif_syntax_kind {
    diagnostic (*make)(const places& w, const named_text& text, const named_text& instead);
    std::string_view repair;
};

/// In the order of mif_syntax.
constexpr std::array<mif_syntax_kind, mif_syntax_count> mif_syntax_kinds = {{
    // byte_order_mark
    {[](const places& w, const named_text&, const named_text&) { return diagnose::byte_order_mark(w); },
     "byte-order mark removed"},
    // missing_equals
    {[](const places& w, const named_text& t, const named_text& i) {
         return diagnose::missing_equals(w, t, i);
     },
     "'=' put after the name"},
    // unknown_setting
    {[](const places& w, const named_text& t, const named_text& i) {
         return diagnose::unknown_header(w, t, i);
     },
     ""},
    // header_text
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::header_text(w, t); },
     "'--' put before the text"},
    // missing_value_of_setting
    {[](const places& w, const named_text& t, const named_text&) {
         return diagnose::missing_setting_value(w, t);
     },
     ""},
    // missing_semicolon_of_setting
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::header_semicolon(w, t); },
     "';' put after the setting"},
    // empty_statement
    {[](const places& w, const named_text&, const named_text&) { return diagnose::empty_statement(w); },
     "';' removed"},
    // lone_semicolon
    {[](const places& w, const named_text&, const named_text&) { return diagnose::lone_semicolon(w); },
     "';' removed"},
    // missing_content
    {[](const places& w, const named_text&, const named_text&) { return diagnose::missing_content(w); },
     "CONTENT BEGIN put before the first statement"},
    // content_spelling
    {[](const places& w, const named_text& t, const named_text& i) {
         return diagnose::content_spelling(w, t, i);
     },
     "CONTENT BEGIN spelt right"},
    // content_semicolon
    {[](const places& w, const named_text& t, const named_text&) {
         return diagnose::content_semicolon(w, t);
     },
     "';' removed"},
    // missing_begin
    {[](const places& w, const named_text&, const named_text&) { return diagnose::missing_begin(w); },
     "BEGIN put after CONTENT"},
    // text_before_begin
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::before_begin(w, t); },
     ""},
    // behind_begin
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::behind_begin(w, t); },
     "line break put after BEGIN"},
    // missing_semicolon
    {[](const places& w, const named_text& t, const named_text&) {
         return diagnose::missing_semicolon(w, t);
     },
     "';' put after the last value"},
    // missing_colon
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::content_syntax(w, t); },
     ""},
    // missing_value
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::missing_value(w, t); },
     ""},
    // missing_address
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::missing_address(w, t); },
     ""},
    // range_syntax
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::range_syntax(w, t); },
     ""},
    // missing_bracket
    {[](const places& w, const named_text& t, const named_text& i) {
         return diagnose::missing_bracket(w, t, i);
     },
     "']' put after the range"},
    // range_separator
    {[](const places& w, const named_text& t, const named_text& i) { return diagnose::range_form(w, t, i); },
     "range written with '..'"},
    // one_in_brackets
    {[](const places& w, const named_text& t, const named_text& i) {
         return diagnose::one_in_brackets(w, t, i);
     },
     "brackets removed"},
    // stray_text
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::stray_character(w, t); },
     ""},
    // comma
    {[](const places& w, const named_text&, const named_text&) { return diagnose::comma(w); },
     "',' is now a blank"},
    // left_out
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::left_out(w, t); }, ""},
    // behind_semicolon
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::behind_semicolon(w, t); },
     "line break put between two statements"},
    // before_end
    {[](const places& w, const named_text&, const named_text&) { return diagnose::before_end(w); },
     "END put into a line of its own"},
    // split_value
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::split_value(w, t); },
     "blank put before the value"},
    // line_too_long
    {[](const places& w, const named_text&, const named_text&) { return diagnose::line_too_long(w); },
     "line broken at a blank"},
    // behind_comment
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::behind_comment(w, t); },
     "line break put after the comment"},
    // open_comment
    {[](const places& w, const named_text&, const named_text&) { return diagnose::open_comment(w); },
     "'%' put at the end of the comment"},
    // comment_of_lines
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::comment_of_lines(w, t); },
     "'--' put before each line of the comment"},
    // doubtful_comment
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::doubtful_comment(w, t); },
     ""},
    // end_semicolon
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::end_semicolon(w, t); },
     "';' put after END"},
    // behind_end
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::behind_end(w, t); }, ""},
    // text_behind_end
    {[](const places& w, const named_text& t, const named_text&) { return diagnose::text_behind_end(w, t); },
     ""},
    // missing_end
    {[](const places& w, const named_text&, const named_text&) { return diagnose::missing_end(w); },
     "END; put after the last line"},
}};

} // namespace

void mif_findings::add(const mif_finding& found, diagnostic_list& list) {
    if (found.what == mif_syntax::unknown_setting) {
        list.add(diagnose::unknown_header(found.where, found.text.in(text), found.instead));
        return;
    }
    cause& one = causes[static_cast<std::size_t>(found.what)];
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
