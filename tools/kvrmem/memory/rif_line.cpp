#include "tools/kvrmem/memory/rif_line.h"

#include "tools/kvrmem/memory/word_text.h"

namespace kvrmem {

rif_address_line split_rif_address(std::string_view line) {
    rif_address_line address;
    address.text.begin = line.find_first_not_of(' ');
    address.text.text = line.substr(address.text.begin, line.find_last_not_of(' ') + 1 - address.text.begin);
    address.digits = address.text.text.substr(1);
    address.is_proper = address.text.text.front() == '@' && !address.digits.empty() &&
                        address.digits.find_first_not_of(hex_digits) == std::string_view::npos;
    return address;
}

} // namespace kvrmem
