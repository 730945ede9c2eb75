#include "declaration.h"
#include "interfaces.h"
#include "kvr/kvr.h"

#include <string>

void numeric_interface() {
    using text = const std::string&;
    using radix = KVR_MEMORY_RADIXES;

    declared<bool (*)(text)>(&kvr_is_integer_value);
    declared<bool (*)(text)>(&kvr_is_float_value);
    declared<bool (*)(text, int)>(&kvr_is_hex_value);
    declared<bool (*)(text, int)>(&kvr_is_binary_value);
    declared<void (*)(int, char*, int)>(&kvr_itoa);
    declared<void (*)(unsigned int, char*, int)>(&kvr_ultoa);
    declared<std::string (*)(unsigned int, int)>(&kvr_long_to_string);
    declared<std::string (*)(int)>(&kvr_int_to_string);

    declared<bool (*)(text, std::string*, radix, radix, unsigned int)>(&kvr_radix_conversion);
    declared<std::string (*)(text, int)>(&convert_to_binary_string);
    declared<std::string (*)(text, int)>(&convert_from_binary_string);
}
