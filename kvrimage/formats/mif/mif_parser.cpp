#include "kvrimage/formats/mif/mif_parser.h"

#include "kvrimage/formats/mif/mif_content_parser.h"
#include "kvrimage/formats/mif/mif_header_parser.h"
#include "kvrimage/formats/mif/mif_tokens.h"

namespace kvrimage {

namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

} // namespace

void parse_mif(std::string_view contents, mif_sink& sink) {
    mif_tokens tokens(contents, sink);
    if (contents.starts_with(utf8_mark)) {
        sink.finding(
            {mif_syntax::byte_order_mark, {0, utf8_mark.size()}, {}, {}, text_edit{0, utf8_mark.size(), ""}});
        tokens.skip_mark(utf8_mark.size());
    }
    if (!mif_header_parser(tokens, sink).read()) {
        sink.finding({mif_syntax::missing_content, {}, {}, {}, {}});
        return;
    }
    mif_content_parser(tokens, sink).read();
}

} // namespace kvrimage
