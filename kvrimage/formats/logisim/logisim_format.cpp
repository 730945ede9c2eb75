#include "kvrimage/formats/logisim/logisim_format.h"

#include "kvrimage/formats/logisim/logisim_formatter.h"
#include "kvrimage/formats/logisim/logisim_pieces.h"
#include "kvrimage/formats/logisim/logisim_reader.h"
#include "kvrimage/formats/logisim/logisim_search.h"
#include "kvrimage/formats/logisim/logisim_writer.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<choice_kind, 1> logisim_write_choices = {
    {{logisim_variant_choice, "NAME", logisim_variant_names,
      "variant to write: v3 (words with addresses), v3-plain, v2"}}};

} // namespace

const format logisim_format = {
    .id = "logisim",
    .title = "Logisim",
    .extensions = {},
    .counts = address_unit::word,
    .holds_unset = true,
    .sniff = sniff_logisim,
    .read = read_logisim,
    .find_word = find_logisim_word,
    .find_comments = find_logisim_comments,
    .find_pieces = find_logisim_pieces,
    .lay_out = lay_out_logisim,
    .can_write = can_write_logisim,
    .write = write_logisim,
    .written_size = written_logisim_size,
    .write_choices = logisim_write_choices,
};

} // namespace kvrimage
