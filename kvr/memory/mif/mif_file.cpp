#include "kvr/memory/mif/mif_file.h"

#include "kvr/memory/mif/mif_content.h"
#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvr/memory/mif/mif_writer.h"
#include "kvr/numeric/radix_conversion.h"

#include <algorithm>

KVR_MEMORY_MIF_FILE::KVR_MEMORY_MIF_FILE(KVR_MEMORY_FILE* memory_file)
    : memory(std::make_unique<kvr::mif_memory>(memory_file)) {
    read_radix_information();
}

KVR_MEMORY_MIF_FILE::~KVR_MEMORY_MIF_FILE() = default;

void KVR_MEMORY_MIF_FILE::set_number_of_words(unsigned int count) {
    memory->resize_words(count);
}

std::string KVR_MEMORY_MIF_FILE::get_mif_data_word(unsigned int address, KVR_MEMORY_RADIXES radix) {
    if (address >= memory->number_of_words) {
        memory->report_invalid_address(address);
        return {};
    }
    return memory->word_in_radix(address, radix);
}

bool KVR_MEMORY_MIF_FILE::set_mif_data_word(unsigned int address, const std::string& value,
                                            KVR_MEMORY_RADIXES radix) {
    if (address >= memory->number_of_words) {
        memory->report_invalid_address(address);
        return false;
    }
    memory->set_word_from_memory_radix(address, value, radix);
    return true;
}

/// The comment is inserted and replaces none; callers rely on it.
bool KVR_MEMORY_MIF_FILE::set_mif_data_word_with_comments(unsigned int address, const std::string& value,
                                                          const std::string& comment,
                                                          KVR_MEMORY_RADIXES radix) {
    if (!set_mif_data_word(address, value, radix)) {
        return false;
    }
    kvr::comment_store& comments = memory->data_comments;
    if (comments.empty() || comments.size() < address) {
        comments.append_empty_up_to(memory->number_of_words);
    }
    comments.insert(address, comment);
    return true;
}

bool KVR_MEMORY_MIF_FILE::get_mif_data_comments(std::deque<std::string>* comments) {
    if (comments == nullptr) {
        return false;
    }
    comments->clear();
    memory->data_comments.copy_to(*comments);
    return !comments->empty();
}

bool KVR_MEMORY_MIF_FILE::set_mif_data_comments(std::deque<std::string>* comments) {
    if (comments == nullptr) {
        return false;
    }
    memory->data_comments.assign(*comments);
    return !comments->empty();
}

bool KVR_MEMORY_MIF_FILE::get_comment_deque(int index, std::deque<std::string>* comments) {
    if (comments == nullptr) {
        return false;
    }
    comments->clear();
    if (index >= 0 && static_cast<std::size_t>(index) < memory->header_comments.size()) {
        *comments = memory->header_comments[static_cast<std::size_t>(index)].lines;
    }
    return !comments->empty();
}

bool KVR_MEMORY_MIF_FILE::set_comment_deque(int index, std::deque<std::string>* comments) {
    if (comments == nullptr || index < 0 ||
        static_cast<std::size_t>(index) >= memory->header_comments.size()) {
        return false;
    }
    memory->header_comments[static_cast<std::size_t>(index)].lines = *comments;
    return !comments->empty();
}

bool KVR_MEMORY_MIF_FILE::can_proceed_with_read() const {
    return memory->can_proceed_with_read();
}

bool KVR_MEMORY_MIF_FILE::can_proceed_with_write() const {
    return !memory->file_name.empty() && memory->number_of_words > 0 && memory->word_size > 0 &&
           memory->address_radix != RADIX_NONE && memory->memory_radix != RADIX_NONE;
}

bool KVR_MEMORY_MIF_FILE::read_in_mif_file() {
    return kvr::mif_reader(*memory).read();
}

bool KVR_MEMORY_MIF_FILE::write_out_mif_file() {
    return kvr::write_mif_file(*memory);
}

void KVR_MEMORY_MIF_FILE::read_radix_information() {
    kvr::fill_radix_names(*memory);
}

void KVR_MEMORY_MIF_FILE::remove_comment_from_string(std::string& line, bool strip_blanks) {
    kvr::move_comment(line, 0, memory->data_comments);
    if (strip_blanks) {
        kvr::strip_blanks(line);
    }
}

bool KVR_MEMORY_MIF_FILE::parse_width_depth(const std::string& line) {
    return kvr::parse_size_line(*memory, line).has_value();
}

bool KVR_MEMORY_MIF_FILE::parse_address_data_radix(const std::string& line) {
    return kvr::parse_radix_line(*memory, line).has_value();
}

bool KVR_MEMORY_MIF_FILE::parse_address_data_line(const std::string& text) {
    kvr::mif_content content;
    content.text = text;
    return kvr::parse_content_line(*memory, content).has_value();
}

bool KVR_MEMORY_MIF_FILE::parse_single_address(const std::string& text) {
    kvr::mif_content content;
    content.text = text;
    return kvr::parse_single_address(*memory, content).has_value();
}

bool KVR_MEMORY_MIF_FILE::parse_multiple_addresses(const std::string& text) {
    kvr::mif_content content;
    content.text = text;
    return kvr::parse_range(*memory, content).has_value();
}

bool KVR_MEMORY_MIF_FILE::fill_given_addresses(std::uint32_t first, std::uint32_t last,
                                               const std::string& data) {
    kvr::mif_content content;
    content.text = data;
    content.first = first;
    content.last = last;
    return kvr::fill_addresses(*memory, content).has_value();
}

/// If there are fewer values than @p count, they are repeated; surplus values are kept.
std::uint32_t KVR_MEMORY_MIF_FILE::interpret_data_values(const std::string& data,
                                                         std::deque<std::string>* values,
                                                         std::uint32_t count) {
    std::vector<std::string_view> found;
    kvr::split_values(data, found);
    values->assign(found.begin(), found.end());
    for (std::size_t index = 0; !found.empty() && values->size() < count; ++index) {
        values->emplace_back(found[index % found.size()]);
    }
    return static_cast<std::uint32_t>(values->size());
}

bool KVR_MEMORY_MIF_FILE::check_if_address_already_set(int address) {
    return !memory->address_set.insert(static_cast<std::uint32_t>(address));
}

void KVR_MEMORY_MIF_FILE::clear_comment_strings() {
    memory->header_comments.fill({});
}

bool KVR_MEMORY_MIF_FILE::check_if_memory_value_is_legal(const std::string& value) const {
    return check_if_cell_value_is_valid(value) && check_string_length_against_word_size(value);
}

bool KVR_MEMORY_MIF_FILE::check_if_cell_value_is_valid(const std::string& value) const {
    return std::all_of(value.begin(), value.end(), kvr::is_value_character);
}

bool KVR_MEMORY_MIF_FILE::check_string_length_against_word_size(const std::string& value) const {
    return convert_to_binary_string(value, static_cast<int>(memory->memory_radix)).size() <=
           memory->word_size;
}

std::string KVR_MEMORY_MIF_FILE::generate_width_string() const {
    return kvr::width_line(*memory);
}

std::string KVR_MEMORY_MIF_FILE::generate_depth_string() const {
    return kvr::depth_line(*memory);
}

std::string KVR_MEMORY_MIF_FILE::generate_address_radix_string() const {
    return kvr::address_radix_line(*memory);
}

std::string KVR_MEMORY_MIF_FILE::generate_data_radix_string() const {
    return kvr::data_radix_line(*memory);
}

std::string KVR_MEMORY_MIF_FILE::convert_number_into_address_radix(std::uint32_t number,
                                                                   std::uint32_t width) const {
    std::string text;
    kvr::append_address(text, number, memory->address_radix, width);
    return text;
}

std::string KVR_MEMORY_MIF_FILE::generate_address_data_string(std::uint32_t first, std::uint32_t last,
                                                              const std::string& data,
                                                              std::uint32_t address_width,
                                                              const std::string& comment) const {
    std::string line;
    kvr::append_content_line(line, first, last, data, memory->address_radix, address_width, comment);
    return line;
}

bool KVR_MEMORY_MIF_FILE::output_comments_to_file(std::uint32_t index, kvr::output_file& output) const {
    return kvr::write_header_comments(*memory, index, output);
}
