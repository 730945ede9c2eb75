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

/// Reads, stores, edits and writes a memory initialization file.
///
/// The object owns at most one handler for each format. set_file_type() creates a handler, which keeps its
/// words and settings until the object is destroyed. Every call is forwarded to the handler of the current
/// type, the *active* one; without a handler it does nothing and returns its default. Setters write to every
/// handler that exists at that time, so choose the type before setting the properties.
///
/// The formats need different settings for a read. MIF needs the file name only. Intel HEX also needs the
/// word size, which is not in the file and defaults to 8. RIF needs the word size and the number of words;
/// both default to 0.
///
/// Invalid input never throws. Only errors of the standard containers can escape (std::out_of_range for an
/// empty signed-decimal word, std::length_error, std::bad_alloc). An object must not be used from several
/// threads at the same time.
class KVR_API KVR_MEMORY_FILE {
public:
    KVR_MEMORY_FILE();
    ~KVR_MEMORY_FILE();
    KVR_MEMORY_FILE(const KVR_MEMORY_FILE&) = delete;
    KVR_MEMORY_FILE& operator=(const KVR_MEMORY_FILE&) = delete;

    /// Makes @p type the current type and creates its handler if it does not exist yet. A value that is no
    /// format creates nothing and leaves the object without an active handler. If std::bad_alloc is thrown,
    /// @p type is the current type without a handler; the call may be repeated.
    void set_file_type(KVR_FILE_TYPES type);
    /// Returns the current type; FILE_TYPE_UNSET before the first set_file_type().
    [[nodiscard]] KVR_FILE_TYPES get_file_type() const;

    /// Returns the depth in words; 0 without a handler.
    [[nodiscard]] unsigned int get_number_of_words() const;
    /// Returns the word width in bits; 0 without a handler.
    [[nodiscard]] unsigned int get_word_size() const;
    /// Returns the radix in which the words are stored and written; RADIX_NONE without a handler.
    [[nodiscard]] KVR_MEMORY_RADIXES get_memory_radix() const;
    /// Returns the radix of the addresses in the file. It is always RADIX_HEX for Intel HEX; RADIX_NONE
    /// without a handler.
    [[nodiscard]] KVR_MEMORY_RADIXES get_address_radix() const;
    /// True if the last read or write failed; also true without a handler.
    [[nodiscard]] bool get_error_occurred() const;
    /// True if the last read or write could not open its file; also true without a handler.
    [[nodiscard]] bool get_file_not_found() const;
    /// Returns the line at which the last read stopped, not counting continuation lines, or 0 if there is
    /// none.
    [[nodiscard]] int get_invalid_line_number() const;
    /// Returns the path of the file; "" without a handler.
    [[nodiscard]] std::string get_file_name() const;
    /// Returns the reason of the last failed read. A later successful read does not reset it.
    [[nodiscard]] KVR_ERROR_STATES get_error_state() const;
    /// Intel HEX: returns the smallest address field of the last read. Other types: 0.
    [[nodiscard]] unsigned int get_lowest_address() const;
    /// Intel HEX: returns the largest word address of the last read, without page offsets. MIF and RIF:
    /// returns the number of words itself, not one less; callers rely on it.
    [[nodiscard]] unsigned int get_highest_address() const;

    /// Sets the word width in bits. Existing words do not change. Reading MIF replaces it by the value in the
    /// file; reading Intel HEX or RIF uses it.
    void set_word_size(unsigned int word_size);
    /// Sets the radix in which words are stored and written. Existing words are not converted.
    void set_memory_radix(KVR_MEMORY_RADIXES radix);
    /// Sets the radix of addresses. MIF only; the other formats always use RADIX_HEX.
    void set_address_radix(KVR_MEMORY_RADIXES radix);
    /// Sets the path of the file for the next read or write. Its bytes are passed to the operating system
    /// unchanged, up to the first NUL. On POSIX systems any encoding is valid. On Windows the bytes are
    /// characters of the active code page of the process, which is UTF-8 only if the manifest of the program
    /// requests it.
    void set_file_name(std::string file_name);
    /// Sets the text of words that are created later, initially "0". MIF and Intel HEX only.
    void set_memory_initialize_value(const std::string& value);
    /// MIF only: true makes the writer put every address on a line of its own.
    void set_dont_consolidate_data(bool dont_consolidate);
    /// Resizes the words of every handler. Remaining words keep their texts, new words get the initialize
    /// value (RIF: ""), and surplus words at the high end are dropped.
    void set_number_of_words(unsigned int number_of_words);

    /// Returns the word at @p address in @p radix (RADIX_NONE: as stored). Returns "" with an error message
    /// if the address is not below the number of words, and "" without a handler.
    ///
    /// kvr_radix_conversion() converts a word that is stored in another radix, at the word size. In RADIX_UNS
    /// and RADIX_DEC the digits then come out *least significant first*, and RADIX_DEC is ones' complement:
    /// the HEX word "0C" becomes "21". Callers rely on it. Use RADIX_HEX or RADIX_BIN for values to compute
    /// with. A word that is stored in @p radix is returned unchanged, at any length.
    std::string get_data_word(unsigned int address, KVR_MEMORY_RADIXES radix);
    /// Stores @p value at @p address. The value is interpreted in the memory radix and converted to @p radix
    /// (RADIX_NONE: the memory radix) at the word size; normally, pass a value in the memory radix and that
    /// radix. Returns true if it was stored. Returns false with an error message if the address is not below
    /// the number of words. RIF returns false in either case. Returns false without a handler.
    bool set_data_word(unsigned int address, std::string value, KVR_MEMORY_RADIXES radix);
    /// MIF only, otherwise returns false: calls set_data_word(), then inserts @p comment at index @p address
    /// of the data comments. The comments from there on move up by one.
    bool set_data_word_with_comments(unsigned int address, std::string value, const std::string& comment,
                                     KVR_MEMORY_RADIXES radix);
    /// MIF only, otherwise returns false and leaves @p comments unchanged: replaces @p comments by the data
    /// comments. Returns true if there are any. The caller owns @p comments; a null pointer gives false.
    bool get_data_comments(std::deque<std::string>* comments);
    /// MIF only, otherwise returns false: replaces the data comments by @p comments. Returns true if there
    /// are any.
    bool set_data_comments(std::deque<std::string>* comments);
    /// MIF only, otherwise returns false and leaves @p comments unchanged: replaces @p comments by header
    /// comment list @p index. List 0 precedes the first header keyword, lists 1 to 4 follow width, depth,
    /// address radix and data radix, and list 5 follows the content. Returns true if the list is not empty.
    /// Any other index empties @p comments.
    bool get_comment_deque(int index, std::deque<std::string>* comments);
    /// MIF only, otherwise returns false: replaces header comment list @p index by @p comments. Returns true
    /// if the list is not empty afterwards. Any other index changes nothing and gives false.
    bool set_comment_deque(int index, std::deque<std::string>* comments);

    /// True if there is an active handler and its file name is not empty and names something that exists.
    [[nodiscard]] bool can_proceed_with_read() const;
    /// True if the active handler has everything its format needs: a file name, words, a data radix and,
    /// except for Intel HEX, a word size and an address radix.
    [[nodiscard]] bool can_proceed_with_write() const;
    /// Reads the file into the active handler. Returns false at once, without a message, if
    /// can_proceed_with_read() is false. Returns true if the file was read. RIF returns true even if it was
    /// not: check get_file_not_found(), get_error_state() and the error messages.
    ///
    /// A read adds to the existing contents. Words that the file does not set keep their texts, including
    /// those of an earlier or a failed read. Comments of a MIF file are added to the existing ones. An Intel
    /// HEX read begins with the address offset at which the last one ended. Use a new object for each file.
    ///
    /// A line may have 511 characters in MIF and 599 in Intel HEX, without the line end. A longer line is
    /// invalid, except in Intel HEX if it is no record; it is then skipped. Lines of RIF have no limit.
    [[nodiscard]] bool read_file();
    /// Writes the words of the active handler to its file. Returns false at once, without a message, if
    /// can_proceed_with_write() is false. Returns false with a message if the file cannot be opened or (MIF,
    /// Intel HEX) cannot be written completely. RIF returns true once the file is open: check the messages.
    ///
    /// The file is overwritten in place. Its old contents are lost as soon as it is open, even if the write
    /// then fails or throws; what was written so far remains. To keep the old file until the new one is
    /// complete, write to another name and rename that file.
    [[nodiscard]] bool write_file();

    /// @name Messages
    /// Three independent lists with the same functions. To read a list, call has_…, then reset_…, then
    /// get_next_… until it returns "". Messages stay until the object is destroyed; reading does not remove
    /// them.
    /// @{

    /// Appends a message.
    void add_error_message(const std::string& message);
    /// Appends a message.
    void add_warning_message(const std::string& message);
    /// Appends a message.
    void add_info_message(const std::string& message);
    /// True if the list has a message, read or not.
    bool has_error_messages();
    /// True if the list has a message, read or not.
    bool has_warning_messages();
    /// True if the list has a message, read or not.
    bool has_info_messages();
    /// Moves to the first message.
    void reset_error_message_list();
    /// Moves to the first message.
    void reset_warning_message_list();
    /// Moves to the first message.
    void reset_info_message_list();
    /// Returns the next message; "" after the last one.
    std::string get_next_error_message();
    /// Returns the next message; "" after the last one.
    std::string get_next_warning_message();
    /// Returns the next message; "" after the last one.
    std::string get_next_info_message();
    /// @}

private:
    /// Returns the state of the active handler, or null if there is none.
    [[nodiscard]] kvr::memory_state* active() const;

    KVR_FILE_TYPES file_type = FILE_TYPE_UNSET;
    // Destroyed in reverse order: the handlers go before the messages that they report to.
    std::unique_ptr<kvr::message_queue> error_messages;
    std::unique_ptr<kvr::message_queue> warning_messages;
    std::unique_ptr<kvr::message_queue> info_messages;
    std::unique_ptr<KVR_MEMORY_RIF_FILE> rif_file;
    std::unique_ptr<KVR_MEMORY_MIF_FILE> mif_file;
    std::unique_ptr<KVR_MEMORY_HEX_FILE> hex_file;
};
