#include "kvrimage/formats/titxt/titxt_format.h"

#include "kvrimage/formats/titxt/titxt_formatter.h"
#include "kvrimage/formats/titxt/titxt_pieces.h"
#include "kvrimage/formats/titxt/titxt_reader.h"
#include "kvrimage/formats/titxt/titxt_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 1> titxt_extensions = {"txt"};

} // namespace

const format titxt_format = {
    .id = "titxt",
    .title = "TI-TXT",
    .extensions = titxt_extensions,
    .counts = address_unit::byte,
    .sniff = sniff_titxt,
    .read = read_titxt,
    .find_word = find_titxt_word,
    .find_pieces = find_titxt_pieces,
    .lay_out = lay_out_titxt,
    .can_write = can_write_titxt,
    .write = write_titxt,
    .written_size = size_of_titxt,
};

} // namespace kvrimage
