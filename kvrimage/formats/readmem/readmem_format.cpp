#include "kvrimage/formats/readmem/readmem_format.h"

#include "kvrimage/formats/readmem/readmem_consumers.h"
#include "kvrimage/formats/readmem/readmem_formatter.h"
#include "kvrimage/formats/readmem/readmem_pieces.h"
#include "kvrimage/formats/readmem/readmem_reader.h"
#include "kvrimage/formats/readmem/readmem_search.h"
#include "kvrimage/formats/readmem/readmem_sniff.h"
#include "kvrimage/formats/readmem/readmem_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 5> readmemh_extensions = {"mem", "vmem", "dat", "hex", "txt"};
constexpr std::array<std::string_view, 3> readmemb_extensions = {"mem", "dat", "txt"};

const std::array<consumer, 3> readmem_consumers = {
    consumer{
        .name = "icarus", .title = "Icarus Verilog", .check = check_readmem_for_icarus, .takes_broken = true},
    consumer{.name = "verilator",
             .title = "Verilator",
             .check = check_readmem_for_verilator,
             .takes_broken = true},
    consumer{.name = "yosys", .title = "Yosys", .check = check_readmem_for_yosys, .takes_broken = true},
};

} // namespace

const format readmemh_format = {
    .id = "readmemh",
    .title = "$readmemh",
    .extensions = readmemh_extensions,
    .counts = address_unit::either,
    .holds_unset = true,
    .holds_dont_care = true,
    .sniff = sniff_readmemh,
    .read = read_readmemh,
    .find_word = find_readmemh_word,
    .find_comments = find_readmem_comments,
    .find_pieces = find_readmemh_pieces,
    .lay_out = lay_out_readmemh,
    .can_write = can_write_readmemh,
    .write = write_readmemh,
    .written_size = written_readmemh_size,
    .consumers = readmem_consumers,
    .write_choices = readmem_write_choices,
};

const format readmemb_format = {
    .id = "readmemb",
    .title = "$readmemb",
    .extensions = readmemb_extensions,
    .counts = address_unit::either,
    .holds_unset = true,
    .holds_dont_care = true,
    .sniff = sniff_readmemb,
    .read = read_readmemb,
    .find_word = find_readmemb_word,
    .find_comments = find_readmem_comments,
    .find_pieces = find_readmemb_pieces,
    .lay_out = lay_out_readmemb,
    .can_write = can_write_readmemb,
    .write = write_readmemb,
    .written_size = written_readmemb_size,
    .consumers = readmem_consumers,
    .write_choices = readmem_write_choices,
};

} // namespace kvrimage
