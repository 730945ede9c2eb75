#pragma once

#include <string_view>

namespace kvr_fuzz {

// The fuzz targets of the tool and of the library of memory images.

/// Each line is a word of a command line, after the program's name.
void try_arguments(std::string_view input);
/// The input is a file of assignments.
void try_assignments(std::string_view input);
/// The first byte chooses the format, "0" the first of the registry, the second what a user says of the
/// file, which may be choices of the format on the first line; the rest is the file.
void try_check(std::string_view input);
/// The input is as for try_check(). All of it together chooses the edits.
void try_edit(std::string_view input);
/// Each line is a message to the language server; the text after "=" is put into the stream as it is.
void try_language_server(std::string_view input);
/// The input is as for try_check().
void try_layout(std::string_view input);
/// The input is a picture in one of the formats that are read.
void try_picture(std::string_view input);
/// The input is a text after its first quote.
void try_quoted_text(std::string_view input);
/// The input is a WAVE file.
void try_sound(std::string_view input);

// The input chooses the operations, a byte or more for each, on:
void try_edit_pieces(std::string_view input);      ///< the pieces of edits
void try_memory_image(std::string_view input);     ///< a memory_image
void try_merge(std::string_view input);            ///< memories that become one
void try_message_splitter(std::string_view input); ///< a stream of messages
void try_protection(std::string_view input);       ///< memories that get check bits
void try_replacement_file(std::string_view input); ///< files that are replaced
void try_reshape(std::string_view input);          ///< memories whose words get another width
void try_split(std::string_view input);            ///< memories that are split, and parts that are joined
void try_text_buffer(std::string_view input);      ///< a text that a client edits

} // namespace kvr_fuzz
