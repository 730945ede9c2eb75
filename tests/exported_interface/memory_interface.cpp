#include "declaration.h"
#include "interfaces.h"
#include "kvr/kvr.h"

#include <cstdint>
#include <deque>
#include <string>
#include <type_traits>

namespace {

using file = KVR_MEMORY_FILE;
using mif = KVR_MEMORY_MIF_FILE;
using hex = KVR_MEMORY_HEX_FILE;
using rif = KVR_MEMORY_RIF_FILE;
using file_type = KVR_FILE_TYPES;
using radix = KVR_MEMORY_RADIXES;
using text = const std::string&;
using comments = std::deque<std::string>*;

template <class Enumeration>
constexpr bool is_32_bits_wide() {
    return std::is_same_v<std::underlying_type_t<Enumeration>, std::uint32_t> &&
           std::is_convertible_v<Enumeration, std::uint32_t>;
}

static_assert(is_32_bits_wide<KVR_FILE_TYPES>());
static_assert(FILE_TYPE_HEX == 0);
static_assert(FILE_TYPE_MIF == 1);
static_assert(FILE_TYPE_RIF == 3);
static_assert(FILE_TYPE_UNSET == 4);

static_assert(is_32_bits_wide<KVR_MEMORY_RADIXES>());
static_assert(RADIX_BIN == 0);
static_assert(RADIX_DEC == 1);
static_assert(RADIX_UNS == 2);
static_assert(RADIX_HEX == 3);
static_assert(RADIX_OCT == 4);
static_assert(RADIX_FIXED_POINT == 5);
static_assert(RADIX_NONE == 6);

static_assert(is_32_bits_wide<KVR_ERROR_STATES>());
static_assert(ERROR_STATE_NONE == 0);
static_assert(ERROR_STATE_INVALID_LINE == 1);
static_assert(ERROR_STATE_INVALID_WIDTH == 2);
static_assert(ERROR_STATE_INVALID_DEPTH == 3);
static_assert(ERROR_STATE_INVALID_ADDRESS_RADIX == 4);
static_assert(ERROR_STATE_INVALID_DATA_RADIX == 5);

template <class Class>
constexpr bool stays_where_it_is() {
    return !std::is_copy_constructible_v<Class> && !std::is_copy_assignable_v<Class> &&
           !std::is_move_constructible_v<Class> && !std::is_move_assignable_v<Class>;
}

static_assert(std::is_default_constructible_v<file>);
static_assert(std::is_destructible_v<file>);
static_assert(stays_where_it_is<file>());

template <class Handler>
constexpr bool is_made_for_a_file_explicitly() {
    return std::is_constructible_v<Handler, file*> && !std::is_convertible_v<file*, Handler> &&
           !std::is_default_constructible_v<Handler>;
}

static_assert(is_made_for_a_file_explicitly<mif>());
static_assert(is_made_for_a_file_explicitly<hex>());
static_assert(is_made_for_a_file_explicitly<rif>());
static_assert(std::is_destructible_v<mif> && stays_where_it_is<mif>());
static_assert(std::is_destructible_v<hex> && stays_where_it_is<hex>());
static_assert(std::is_destructible_v<rif> && stays_where_it_is<rif>());

void constructors_and_destructors() {
    file owner;
    const mif mif_handler(&owner);
    const hex hex_handler(&owner);
    const rif rif_handler(&owner);
}

void memory_file_members() {
    declared<void (file::*)(file_type)>(&file::set_file_type);
    declared<file_type (file::*)() const>(&file::get_file_type);
    declared<unsigned int (file::*)() const>(&file::get_number_of_words);
    declared<unsigned int (file::*)() const>(&file::get_word_size);
    declared<radix (file::*)() const>(&file::get_memory_radix);
    declared<radix (file::*)() const>(&file::get_address_radix);
    declared<bool (file::*)() const>(&file::get_error_occurred);
    declared<bool (file::*)() const>(&file::get_file_not_found);
    declared<int (file::*)() const>(&file::get_invalid_line_number);
    declared<std::string (file::*)() const>(&file::get_file_name);
    declared<KVR_ERROR_STATES (file::*)() const>(&file::get_error_state);
    declared<unsigned int (file::*)() const>(&file::get_lowest_address);
    declared<unsigned int (file::*)() const>(&file::get_highest_address);
    declared<void (file::*)(unsigned int)>(&file::set_word_size);
    declared<void (file::*)(radix)>(&file::set_memory_radix);
    declared<void (file::*)(radix)>(&file::set_address_radix);
    declared<void (file::*)(std::string)>(&file::set_file_name);
    declared<void (file::*)(text)>(&file::set_memory_initialize_value);
    declared<void (file::*)(bool)>(&file::set_dont_consolidate_data);
    declared<void (file::*)(unsigned int)>(&file::set_number_of_words);
    declared<std::string (file::*)(unsigned int, radix)>(&file::get_data_word);
    declared<bool (file::*)(unsigned int, std::string, radix)>(&file::set_data_word);
    declared<bool (file::*)(unsigned int, std::string, text, radix)>(&file::set_data_word_with_comments);
    declared<bool (file::*)(comments)>(&file::get_data_comments);
    declared<bool (file::*)(comments)>(&file::set_data_comments);
    declared<bool (file::*)(int, comments)>(&file::get_comment_deque);
    declared<bool (file::*)(int, comments)>(&file::set_comment_deque);
    declared<bool (file::*)() const>(&file::can_proceed_with_read);
    declared<bool (file::*)() const>(&file::can_proceed_with_write);
    declared<bool (file::*)()>(&file::read_file);
    declared<bool (file::*)()>(&file::write_file);
}

void memory_file_message_members() {
    declared<void (file::*)(text)>(&file::add_error_message);
    declared<void (file::*)(text)>(&file::add_warning_message);
    declared<void (file::*)(text)>(&file::add_info_message);
    declared<bool (file::*)()>(&file::has_error_messages);
    declared<bool (file::*)()>(&file::has_warning_messages);
    declared<bool (file::*)()>(&file::has_info_messages);
    declared<void (file::*)()>(&file::reset_error_message_list);
    declared<void (file::*)()>(&file::reset_warning_message_list);
    declared<void (file::*)()>(&file::reset_info_message_list);
    declared<std::string (file::*)()>(&file::get_next_error_message);
    declared<std::string (file::*)()>(&file::get_next_warning_message);
    declared<std::string (file::*)()>(&file::get_next_info_message);
}

void mif_file_members() {
    declared<void (mif::*)(unsigned int)>(&mif::set_number_of_words);
    declared<std::string (mif::*)(unsigned int, radix)>(&mif::get_mif_data_word);
    declared<bool (mif::*)(unsigned int, text, radix)>(&mif::set_mif_data_word);
    declared<bool (mif::*)(unsigned int, text, text, radix)>(&mif::set_mif_data_word_with_comments);
    declared<bool (mif::*)(comments)>(&mif::get_mif_data_comments);
    declared<bool (mif::*)(comments)>(&mif::set_mif_data_comments);
    declared<bool (mif::*)(int, comments)>(&mif::get_comment_deque);
    declared<bool (mif::*)(int, comments)>(&mif::set_comment_deque);
    declared<bool (mif::*)() const>(&mif::can_proceed_with_read);
    declared<bool (mif::*)() const>(&mif::can_proceed_with_write);
    declared<bool (mif::*)()>(&mif::read_in_mif_file);
    declared<bool (mif::*)()>(&mif::write_out_mif_file);
}

void hex_file_members() {
    declared<void (hex::*)(unsigned int)>(&hex::set_number_of_words);
    declared<std::string (hex::*)(unsigned int, radix)>(&hex::get_hex_data_word);
    declared<bool (hex::*)(unsigned int, text, radix)>(&hex::set_hex_data_word);
    declared<bool (hex::*)() const>(&hex::can_proceed_with_read);
    declared<bool (hex::*)() const>(&hex::can_proceed_with_write);
    declared<bool (hex::*)()>(&hex::read_in_hex_file);
    declared<bool (hex::*)()>(&hex::write_out_hex_file);
}

void rif_file_members() {
    declared<void (rif::*)(unsigned int)>(&rif::set_number_of_words);
    declared<std::string (rif::*)(unsigned int, radix)>(&rif::get_rif_data_word);
    declared<bool (rif::*)(unsigned int, text, radix)>(&rif::set_rif_data_word);
    declared<bool (rif::*)(text)>(&rif::check_if_cell_value_is_valid);
    declared<bool (rif::*)() const>(&rif::can_proceed_with_read);
    declared<bool (rif::*)() const>(&rif::can_proceed_with_write);
    declared<bool (rif::*)()>(&rif::read_in_rif_file);
    declared<bool (rif::*)()>(&rif::write_out_rif_file);
}

} // namespace

void memory_interface() {
    constructors_and_destructors();
    memory_file_members();
    memory_file_message_members();
    mif_file_members();
    hex_file_members();
    rif_file_members();
}
