#pragma once

#include <string_view>

namespace kvr_fuzz {

// The fuzz targets of the library. If an input begins with settings, the function documents them.

/// The input is a MIF file.
void try_mif_reader(std::string_view input);
/// Two bytes choose the word size and the address offset of an earlier read. The rest is an Intel HEX file.
void try_hex_reader(std::string_view input);
/// Two bytes choose the word size and the depth. The rest is a RIF file.
void try_rif_reader(std::string_view input);
/// Two bytes choose the radixes, two more are the width. The rest is the word.
void try_radix_conversion(std::string_view input);
/// Two bytes choose the radixes. The rest of the first line is the format; the word follows.
void try_fixed_point(std::string_view input);
/// The first byte is the index of a token. The rest of the first line contains the delimiters; the text
/// follows.
void try_tokenizer(std::string_view input);
/// One byte chooses the keys of the maps. The rest is a list file.
void try_list_file(std::string_view input);
/// The input is a design file and also a name.
void try_generated_file(std::string_view input);
/// The input chooses the changes to a word store, at least one byte each.
void try_word_store(std::string_view input);
/// The input chooses the changes to a comment store, at least one byte each.
void try_comment_store(std::string_view input);

} // namespace kvr_fuzz
