#include "declaration.h"
#include "interfaces.h"
#include "kvr/kvr.h"

#include <string>

void fixed_point_interface() {
    using text = const std::string&;
    using radix = KVR_MEMORY_RADIXES;

    declared<bool (*)(text, std::string*, radix, radix, text)>(&kvr_radix_conversion_fixed_point);
    declared<bool (*)(text, std::string&)>(&kvr_convert_numeric_string_to_binary_format);
}
