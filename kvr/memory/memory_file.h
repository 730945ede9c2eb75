#pragma once

/// @file
/// The memory initialization file.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <deque>
#include <memory>
#include <string>

class KVR_MEMORY_HEX_FILE;
class KVR_MEMORY_MIF_FILE;
class KVR_MEMORY_RIF_FILE;

namespace kvr {
class message_queue;
struct memory_state;
} // namespace kvr

/// The one object through which a memory initialization file is read, held, edited and written.
///
/// It owns at most one handler per format, created by set_file_type() and kept, with its words and
/// settings, until the object is destroyed. Every call is forwarded to the handler of the current type,
/// the *active* one; without one it does nothing and returns its default. Setters write into every
/// handler that exists at that time: choose the type first and set the properties after it.
///
/// What a read needs depends on the format. MIF: only the file name. Intel HEX: the word size too, which
/// is 8 unless it is set and which no such file contains. RIF: the word size and the number of words, both
/// 0 unless they are set.
///
/// Nothing throws on bad input; what can escape are the standard containers' own errors
/// (std::out_of_range of an empty signed-decimal word, std::length_error, std::bad_alloc). An object is
/// used from one thread at a time.
class KVR_API KVR_MEMORY_FILE {
public:
    KVR_MEMORY_FILE();
    ~KVR_MEMORY_FILE();
    KVR_MEMORY_FILE(const KVR_MEMORY_FILE&) = delete;
    KVR_MEMORY_FILE& operator=(const KVR_MEMORY_FILE&) = delete;

    /// Makes @p type the current type and creates its handler if it does not exist yet. A value that names
    /// no format creates nothing and leaves the object without an active handler; so does std::bad_alloc,
    /// after which @p type is the current type and can be set again.
    void set_file_type(KVR_FILE_TYPES type);
    /// The current type; FILE_TYPE_UNSET before the first set_file_type().
    [[nodiscard]] KVR_FILE_TYPES get_file_type() const;

    /// Depth in words; 0 without a handler.
    [[nodiscard]] unsigned int get_number_of_words() const;
    /// Width of a word in bits; 0 without a handler.
    [[nodiscard]] unsigned int get_word_size() const;
    /// Radix in which the words are held and written; RADIX_NONE without a handler.
    [[nodiscard]] KVR_MEMORY_RADIXES get_memory_radix() const;
    /// Radix of the addresses in the file: always RADIX_HEX for Intel HEX; RADIX_NONE without a handler.
    [[nodiscard]] KVR_MEMORY_RADIXES get_address_radix() const;
    /// Whether the last read or write failed; true without a handler.
    [[nodiscard]] bool get_error_occurred() const;
    /// Whether the last read or write could not open its file; true without a handler.
    [[nodiscard]] bool get_file_not_found() const;
    /// Line at which the last read stopped, continuation lines not counted; 0 when there is none.
    [[nodiscard]] int get_invalid_line_number() const;
    /// Path of the file; "" without a handler.
    [[nodiscard]] std::string get_file_name() const;
    /// Reason of the last failed read; never reset by a later read that succeeds.
    [[nodiscard]] KVR_ERROR_STATES get_error_state() const;
    /// Intel HEX: the smallest address field of the last read; 0 for every other type.
    [[nodiscard]] unsigned int get_lowest_address() const;
    /// Intel HEX: the largest word address of the last read, without page offsets. MIF and RIF: the
    /// number of words itself, not one less; callers rely on it.
    [[nodiscard]] unsigned int get_highest_address() const;

    /// Width of a word in bits. Existing words stay as they are. A read of MIF sets it to the value in the
    /// file; a read of Intel HEX or RIF uses it as it is.
    void set_word_size(unsigned int word_size);
    /// Radix in which words are held and written. Existing words are not converted.
    void set_memory_radix(KVR_MEMORY_RADIXES radix);
    /// Reaches the MIF handler only; the others always use RADIX_HEX.
    void set_address_radix(KVR_MEMORY_RADIXES radix);
    /// Path of the file that is read and written next. The operating system gets its bytes as they are, up
    /// to the first NUL: on POSIX systems any encoding is valid; on Windows they are characters of the
    /// process's active code page, which is UTF-8 only where the program's manifest asks for it.
    void set_file_name(std::string file_name);
    /// The text of words that are created from now on; MIF and Intel HEX only, initially "0".
    void set_memory_initialize_value(const std::string& value);
    /// MIF only: true makes the writer give every address its own line.
    void set_dont_consolidate_data(bool dont_consolidate);
    /// Sizes every handler's words: those that stay keep their texts, new ones hold the initialize value
    /// (RIF: ""), surplus ones at the high end are dropped.
    void set_number_of_words(unsigned int number_of_words);

    /// The word at @p address in @p radix (RADIX_NONE: as stored). "" and an error message when the
    /// address is not below the number of words; "" without a handler.
    ///
    /// A word that is held in another radix is converted by kvr_radix_conversion() at the word size. To
    /// RADIX_UNS or RADIX_DEC its digits then come out *least significant first*, and RADIX_DEC is ones'
    /// complement: the HEX word "0C" is "21". Callers rely on it; use RADIX_HEX or RADIX_BIN for a value to
    /// compute with. A word that is held in @p radix is returned as it is, whatever its length.
    std::string get_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// Stores @p value, which is taken to be written in the memory radix and is converted from there to
    /// @p radix (RADIX_NONE: the memory radix) at the word size; give it in the memory radix and pass that
    /// one. True when it was stored, false and an error message when the address is not below the number
    /// of words. RIF returns false in either case. False without a handler.
    bool set_data_word(unsigned int address, std::string value, KVR_MEMORY_RADIXES radix);
    /// MIF only, else false: set_data_word(), then inserts @p comment at index @p address of the data
    /// comments, moving those from there on up by one.
    bool set_data_word_with_comments(unsigned int address, std::string value, const std::string& comment,
                                     KVR_MEMORY_RADIXES radix);
    /// MIF only, else false and @p comments untouched: replaces @p comments by the data comments; true
    /// when there are any. The caller owns @p comments; a null pointer gives false.
    bool get_data_comments(std::deque<std::string>* comments);
    /// MIF only, else false: replaces the data comments by @p comments; true when there are any.
    bool set_data_comments(std::deque<std::string>* comments);
    /// MIF only, else false and @p comments untouched: replaces @p comments by header comment list
    /// @p index (0 before the first header keyword, 1 to 4 after width, depth, address radix and data
    /// radix, 5 after the content); true when it is not empty. Another index empties @p comments.
    bool get_comment_deque(int index, std::deque<std::string>* comments);
    /// MIF only, else false: replaces header comment list @p index by @p comments; true when it is not
    /// empty afterwards. Another index changes nothing and gives false.
    bool set_comment_deque(int index, std::deque<std::string>* comments);

    /// True when there is an active handler, its file name is not empty and names something that exists.
    [[nodiscard]] bool can_proceed_with_read() const;
    /// True when the active handler has all that its format needs: a file name, words, a data radix, and,
    /// except for Intel HEX, a word size and an address radix.
    [[nodiscard]] bool can_proceed_with_write() const;
    /// Reads the file into the active handler. False at once, without a message, when
    /// can_proceed_with_read() is false. True when the file was read; RIF returns true even when it was
    /// not: check get_file_not_found(), get_error_state() and the error messages.
    ///
    /// A read adds to what is held: words that the file does not set keep their texts, also those of an
    /// earlier read and those that a failed one stored; the comments of a MIF are added to the existing
    /// ones, and an Intel HEX read begins with the address offset that the last one ended with. Use a new
    /// object for each file.
    ///
    /// A line of a MIF may have 511 characters and one of Intel HEX 599, the line end not counted; a longer
    /// one is an invalid line (Intel HEX: unless it is no record, which is skipped). Lines of RIF have no
    /// limit.
    [[nodiscard]] bool read_file();
    /// Writes the active handler's words to its file. False at once, without a message, when
    /// can_proceed_with_write() is false; false with a message when the file cannot be opened, or (MIF,
    /// Intel HEX) cannot be written to the end. RIF is true as soon as the file is open: check the
    /// messages.
    ///
    /// The file is overwritten in place: its old contents are gone as soon as it is open, also when the write
    /// then fails or throws, which leaves what was written so far. To keep the old file until the new one is
    /// complete, write to another name and rename that.
    [[nodiscard]] bool write_file();

    /// @name Messages
    /// Three independent lists with the same functions. To read one: has_…, reset_…, then get_next_… until it
    /// returns "". Messages stay until the object is destroyed; reading does not consume them.
    /// @{

    /// Appends a message.
    void add_error_message(const std::string& message);
    /// Appends a message.
    void add_warning_message(const std::string& message);
    /// Appends a message.
    void add_info_message(const std::string& message);
    /// True when the list holds a message, read or not.
    bool has_error_messages();
    /// True when the list holds a message, read or not.
    bool has_warning_messages();
    /// True when the list holds a message, read or not.
    bool has_info_messages();
    /// Makes the first message the next one.
    void reset_error_message_list();
    /// Makes the first message the next one.
    void reset_warning_message_list();
    /// Makes the first message the next one.
    void reset_info_message_list();
    /// The next message; "" after the last one.
    std::string get_next_error_message();
    /// The next message; "" after the last one.
    std::string get_next_warning_message();
    /// The next message; "" after the last one.
    std::string get_next_info_message();
    /// @}

private:
    /// The state of the active handler; none when there is no such handler.
    [[nodiscard]] kvr::memory_state* active() const;

    KVR_FILE_TYPES file_type = FILE_TYPE_UNSET;
    // Destroyed from the last to the first: the handlers before the messages that they report to.
    std::unique_ptr<kvr::message_queue> error_messages;
    std::unique_ptr<kvr::message_queue> warning_messages;
    std::unique_ptr<kvr::message_queue> info_messages;
    std::unique_ptr<KVR_MEMORY_RIF_FILE> rif_file;
    std::unique_ptr<KVR_MEMORY_MIF_FILE> mif_file;
    std::unique_ptr<KVR_MEMORY_HEX_FILE> hex_file;
};
