#include "kvr/util/string_order.h"

#include "kvr/util/letter_case.h"

bool LESS_C_STRING::operator()(const std::string& left, const std::string& right) const {
    const char* one = left.c_str();
    const char* other = right.c_str();
    while (*one != '\0' && kvr::fold_case(*one) == kvr::fold_case(*other)) {
        ++one;
        ++other;
    }
    return kvr::fold_case(*one) < kvr::fold_case(*other);
}
