#include "kvrimage/formats/registry.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/binary/binary_format.h"
#include "kvrimage/formats/coe/coe_format.h"
#include "kvrimage/formats/csv/csv_format.h"
#include "kvrimage/formats/elf/elf_format.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/logisim/logisim_format.h"
#include "kvrimage/formats/memheader/memheader_format.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/rif/rif_format.h"
#include "kvrimage/formats/source/c_format.h"
#include "kvrimage/formats/source/python_format.h"
#include "kvrimage/formats/source/verilog_format.h"
#include "kvrimage/formats/source/vhdl_format.h"
#include "kvrimage/formats/srec/srec_format.h"
#include "kvrimage/formats/titxt/titxt_format.h"

#include <algorithm>
#include <iterator>

namespace kvrimage {

namespace {

/// One line for each format.
std::vector<const format*> built_in_formats() {
    return {
        &mif_format,    &hex_format,      &rif_format,   &readmemh_format,  &readmemb_format,
        &coe_format,    &hexbytes_format, &srec_format,  &binary_format,
#ifdef KVRIMAGE_READS_ELF
        &elf_format,
#endif
        &csv_format,    &logisim_format,  &titxt_format, &memheader_format, &c_format,
        &python_format, &verilog_format,  &vhdl_format,
    };
}

std::vector<const format*>& registered() {
    static std::vector<const format*> all = built_in_formats();
    return all;
}

bool has_extension(const format& one, std::string_view extension) {
    return std::ranges::any_of(one.extensions, [extension](std::string_view name) {
        return kvr::equal_ignoring_case(name, extension);
    });
}

/// Returns the text after the last dot of the file name, or "".
std::string_view extension_of(std::string_view path) {
    const std::size_t dot = path.find_last_of("./");
    if (dot != std::string_view::npos && path[dot] == '.') {
        return path.substr(dot + 1);
    }
    return {};
}

std::vector<const format*> formats_of_extension(std::string_view extension) {
    std::vector<const format*> found;
    std::ranges::copy_if(registered(), std::back_inserter(found),
                         [extension](const format* one) { return has_extension(*one, extension); });
    return found;
}

} // namespace

std::span<const format* const> formats() {
    return registered();
}

void add_format(const format& added) {
    registered().push_back(&added);
}

const format* format_of_name(std::string_view name) {
    const auto is_called_so = [name](const format* one) { return kvr::equal_ignoring_case(one->id, name); };
    const auto found = std::ranges::find_if(registered(), is_called_so);
    if (found != registered().end()) {
        return *found;
    }
    const std::vector<const format*> by_extension = formats_of_extension(name);
    return by_extension.empty() ? nullptr : by_extension.front();
}

const format* format_of_path(std::string_view path) {
    const std::vector<const format*> all = formats_of_path(path);
    return all.empty() ? nullptr : all.front();
}

std::vector<const format*> formats_of_path(std::string_view path) {
    return formats_of_extension(extension_of(path));
}

std::vector<sniffed> sniff(std::string_view head, std::string_view file_name) {
    const std::string_view extension = extension_of(file_name);
    std::vector<sniffed> found;
    for (const format* one : registered()) {
        const certainty how_sure =
            one->sniff != nullptr ? one->sniff(head.substr(0, sniffed_bytes)) : certainty::no;
        if (how_sure != certainty::no) {
            found.push_back({one, how_sure});
        }
    }
    std::ranges::stable_sort(found, [extension](const sniffed& left, const sniffed& right) {
        return left.how_sure != right.how_sure
                   ? left.how_sure > right.how_sure
                   : has_extension(*left.as, extension) && !has_extension(*right.as, extension);
    });
    return found;
}

} // namespace kvrimage
