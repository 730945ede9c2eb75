#include "kvr/memory/memory_file.h"
#include "kvr/memory/memory_types.h"
#include "kvr/numeric/radix_conversion.h"
#include "parts.h"

#include <deque>
#include <pybind11/stl.h>
#include <string>
#include <utility>
#include <vector>

namespace kvr_python {

namespace {

std::pair<bool, std::string> radix_conversion(const std::string& input, unsigned from, unsigned to,
                                              unsigned width) {
    std::string output;
    const bool known = kvr_radix_conversion(input, &output, static_cast<KVR_MEMORY_RADIXES>(from),
                                            static_cast<KVR_MEMORY_RADIXES>(to), width);
    return {known, output};
}

using file_class = py::class_<KVR_MEMORY_FILE>;

/// Takes an enumeration of the library as the int that it is.
template <class Enumeration, class Function>
auto with_number(Function member) {
    return
        [member](KVR_MEMORY_FILE& file, unsigned value) { (file.*member)(static_cast<Enumeration>(value)); };
}

template <class Function>
auto as_number(Function member) {
    return [member](const KVR_MEMORY_FILE& file) { return static_cast<unsigned>((file.*member)()); };
}

std::vector<std::string> error_messages(KVR_MEMORY_FILE& file) {
    std::vector<std::string> messages;
    file.reset_error_message_list();
    for (std::string next = file.get_next_error_message(); !next.empty();
         next = file.get_next_error_message()) {
        messages.push_back(std::move(next));
    }
    return messages;
}

void add_settings(file_class& files) {
    using file = KVR_MEMORY_FILE;
    files.def("set_file_type", with_number<KVR_FILE_TYPES>(&file::set_file_type));
    files.def("get_file_type", as_number(&file::get_file_type));
    files.def("set_file_name", &file::set_file_name);
    files.def("get_file_name", &file::get_file_name);
    files.def("set_word_size", &file::set_word_size);
    files.def("get_word_size", &file::get_word_size);
    files.def("set_number_of_words", &file::set_number_of_words);
    files.def("get_number_of_words", &file::get_number_of_words);
    files.def("set_memory_radix", with_number<KVR_MEMORY_RADIXES>(&file::set_memory_radix));
    files.def("get_memory_radix", as_number(&file::get_memory_radix));
    files.def("set_address_radix", with_number<KVR_MEMORY_RADIXES>(&file::set_address_radix));
    files.def("get_address_radix", as_number(&file::get_address_radix));
    files.def("set_memory_initialize_value", &file::set_memory_initialize_value);
    files.def("set_dont_consolidate_data", &file::set_dont_consolidate_data);
}

void add_contents(file_class& files) {
    using file = KVR_MEMORY_FILE;
    files.def("get_data_word", [](file& self, unsigned address, unsigned radix) {
        return self.get_data_word(address, static_cast<KVR_MEMORY_RADIXES>(radix));
    });
    files.def("set_data_word", [](file& self, unsigned address, const std::string& value, unsigned radix) {
        return self.set_data_word(address, value, static_cast<KVR_MEMORY_RADIXES>(radix));
    });
    files.def("can_proceed_with_read", &file::can_proceed_with_read);
    files.def("can_proceed_with_write", &file::can_proceed_with_write);
    files.def("read_file", &file::read_file);
    files.def("write_file", &file::write_file);
    files.def("get_error_occurred", &file::get_error_occurred);
    files.def("get_file_not_found", &file::get_file_not_found);
    files.def("get_invalid_line_number", &file::get_invalid_line_number);
    files.def("get_error_state", as_number(&file::get_error_state));
    files.def("get_lowest_address", &file::get_lowest_address);
    files.def("get_highest_address", &file::get_highest_address);
    files.def("error_messages", error_messages);
}

} // namespace

void add_classic(py::module_& module) {
    module.def("radix_conversion", radix_conversion);
    file_class files(module, "MemoryFile");
    files.def(py::init<>());
    add_settings(files);
    add_contents(files);
}

} // namespace kvr_python
