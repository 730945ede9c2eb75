#pragma once

#include <string_view>

namespace kvr_fuzz {

// The fuzz targets of the tool and of kvrimage.

/// Each line is a word of a command line, without the program's name.
void try_arguments(std::string_view input);
/// The input is a file of assignments.
void try_assignments(std::string_view input);
/// The first byte chooses the format: "0" is the first one of the registry. The second byte chooses what the
/// user says about the file, which may include choices of the format on the first line. The rest is the file.
void try_check(std::string_view input);
/// The input is the same as for try_check(). The whole input chooses the edits.
void try_edit(std::string_view input);
/// Each line is a message to the language server. Text after "=" goes into the stream without a header.
void try_language_server(std::string_view input);
/// The input is the same as for try_check().
void try_layout(std::string_view input);
/// The input is a picture in one of the supported formats.
void try_picture(std::string_view input);
/// The input is a quoted text without its first quote.
void try_quoted_text(std::string_view input);
/// The input is a WAVE file.
void try_sound(std::string_view input);

// The input chooses the operations, at least one byte each, on:
void try_edit_pieces(std::string_view input);      ///< the pieces of edits
void try_memory_image(std::string_view input);     ///< a memory_image
void try_merge(std::string_view input);            ///< memories that are merged
void try_message_splitter(std::string_view input); ///< a stream of messages
void try_protection(std::string_view input);       ///< memories that get check bits
void try_replacement_file(std::string_view input); ///< files that are replaced
void try_reshape(std::string_view input);          ///< memories whose word width changes
void try_split(std::string_view input);            ///< memories that are split and parts that are joined
void try_text_buffer(std::string_view input);      ///< a text that a client edits

} // namespace kvr_fuzz
