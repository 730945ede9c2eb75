#include "kvrimage/formats/csv/csv_format.h"

#include "kvrimage/formats/csv/csv_formatter.h"
#include "kvrimage/formats/csv/csv_reader.h"
#include "kvrimage/formats/csv/csv_search.h"
#include "kvrimage/formats/csv/csv_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 2> csv_extensions = {"csv", "tsv"};

constexpr std::array<radix, 4> csv_radixes = {radix::hex, radix::dec, radix::uns, radix::bin};

constexpr std::array<choice_kind, 5> csv_read_choices = {{
    {"address-column", "COLUMN", "", "name or number of the address column, or none"},
    {"value-column", "COLUMN", "", "name or number of the value column"},
    {"value-radix", "RADIX", "", "radix of values: dec, uns, hex, bin or fixed:I.F"},
    {"round", "HOW", "nearest even down", "how fractions are rounded: nearest, even, down"},
    {"saturate", "", "", "fractions out of range become the nearest word"},
}};

} // namespace

const format csv_format = {
    .id = "csv",
    .title = "CSV",
    .extensions = csv_extensions,
    .states_radix = true,
    .counts = address_unit::word,
    .holds_unset = true,
    .sniff = sniff_csv,
    .read = read_csv,
    .find_word = find_csv_word,
    .find_pieces = find_csv_pieces,
    .lay_out = lay_out_csv,
    .write = write_csv,
    .written_size = written_csv_size,
    .read_choices = csv_read_choices,
    .data_radixes = csv_radixes,
    .address_radixes = csv_radixes,
};

} // namespace kvrimage
