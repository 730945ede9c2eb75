// The kernels on blocks of characters, as functions for the proof. They compile to straight-line code: each
// takes its inputs as numbers and pointers and writes all results through pointers.

#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_run.h"
#include "kvr/ram_rules/folded_key.h"
#include "kvrimage/formats/titxt/fast_titxt_bytes.h"
#include "kvrimage/image/hex_block.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

template <class Decoder>
void decode_double(const char* digits, char* bytes, bool* are_digits, unsigned* sum) {
    Decoder decoder;
    decoder.parse_double_block(digits, bytes);
    *are_digits = decoder.are_digits();
    *sum = decoder.sum();
}

template <class Decoder, std::size_t summed>
void decode_single(const char* digits, char* bytes, bool* are_digits, unsigned* sum) {
    Decoder decoder;
    decoder.take(digits, bytes, summed);
    *are_digits = decoder.are_digits();
    *sum = decoder.sum();
}

template <class Encoder>
void encode_block(const char* bytes, char* digits, unsigned* sum) {
    Encoder encoder;
    encoder.take(bytes, digits);
    *sum = encoder.sum();
}

} // namespace

extern "C" {

// kvr/numeric/character_block.h

std::uint64_t load_eight(const char* text) {
    return kvr::load_eight(text);
}

void store_eight(std::uint64_t eight, char* text) {
    kvr::store_eight(eight, text);
}

std::uint64_t which_are_between(std::uint64_t eight, char first, char last) {
    return kvr::which_are_between(eight, first, last);
}

void classes_of_eight(std::uint64_t eight, std::uint64_t* other, std::uint64_t* lower_case) {
    const kvr::eight_classes classes = kvr::classes_of_eight(eight);
    *other = classes.other;
    *lower_case = classes.lower_case;
}

bool are_decimal(std::uint64_t eight) {
    return kvr::are_decimal(eight);
}

std::uint64_t in_upper_case(std::uint64_t eight) {
    return kvr::in_upper_case(eight, kvr::classes_of_eight(eight));
}

std::uint64_t fold_eight(std::uint64_t eight) {
    return kvr::fold_eight(eight);
}

std::uint64_t values_of_eight(std::uint64_t digits) {
    return kvr::values_of_eight(digits);
}

std::uint64_t four_bytes(std::uint64_t digits) {
    return kvr::four_bytes(digits);
}

std::uint32_t sum_of_four(std::uint64_t four) {
    return kvr::sum_of_four(four);
}

std::uint64_t reversed_bytes(std::uint64_t eight) {
    return kvr::reversed_bytes(eight);
}

bool read_eight(std::uint64_t digits, std::uint64_t* value) {
    return kvr::read_eight(digits, *value);
}

// The portable form of a kernel and the form for vector registers have the same claim.
#define CLASSES_OF_SIXTEEN(form)                                                                             \
    void classes_of_sixteen_##form(const char* text, std::uint64_t* other, std::uint64_t* lower_case) {      \
        const kvr::sixteen_classes classes = kvr::form::classes_of_sixteen(text);                            \
        *other = classes.other;                                                                              \
        *lower_case = classes.lower_case;                                                                    \
    }
CLASSES_OF_SIXTEEN(portable)
CLASSES_OF_SIXTEEN(sse2)

#define READ_SIXTEEN(form)                                                                                   \
    bool read_sixteen_##form(const char* text, std::uint64_t* value) {                                       \
        return kvr::form::read_sixteen(text, *value);                                                        \
    }
READ_SIXTEEN(portable)
READ_SIXTEEN(sse2)

#define SUM_OF_SIXTEEN(form, count)                                                                          \
    void sum_of_sixteen_##form##_##count(const char* text, std::uint64_t* other, std::uint32_t* sum) {       \
        const kvr::sixteen_sum result = kvr::form::sum_of_sixteen(text, count);                              \
        *other = result.other;                                                                               \
        *sum = result.sum;                                                                                   \
    }
#define SUMS_OF_SIXTEEN(form)                                                                                \
    SUM_OF_SIXTEEN(form, 0)                                                                                  \
    SUM_OF_SIXTEEN(form, 2)                                                                                  \
    SUM_OF_SIXTEEN(form, 4)                                                                                  \
    SUM_OF_SIXTEEN(form, 6)                                                                                  \
    SUM_OF_SIXTEEN(form, 8)                                                                                  \
    SUM_OF_SIXTEEN(form, 10)                                                                                 \
    SUM_OF_SIXTEEN(form, 12)                                                                                 \
    SUM_OF_SIXTEEN(form, 14)                                                                                 \
    SUM_OF_SIXTEEN(form, 16)
SUMS_OF_SIXTEEN(portable)
SUMS_OF_SIXTEEN(sse2)

// kvr/numeric/digit_run.h and digit_blocks.h

std::uint64_t bits_before_first(std::uint64_t bits) {
    return kvr::bits_before_first(bits);
}

#define ARE_DIGITS(length)                                                                                   \
    bool are_digits_##length(const char* text, bool* has_lower_case) {                                       \
        bool has = false;                                                                                    \
        const bool are = kvr::are_digits(text, length, has);                                                 \
        *has_lower_case = has;                                                                               \
        return are;                                                                                          \
    }
ARE_DIGITS(1)
ARE_DIGITS(7)
ARE_DIGITS(8)
ARE_DIGITS(11)
ARE_DIGITS(16)
ARE_DIGITS(19)
ARE_DIGITS(24)
ARE_DIGITS(29)

void write_hex_limb(char* place, std::uint64_t limb) {
    kvr::write_hex_limb(place, limb);
}

// kvrimage/bytes/hex_block.h

std::uint32_t sum_of_limb(std::uint64_t limb) {
    return kvrimage::sum_of_limb(limb);
}

#define HEX_BLOCKS(form)                                                                                     \
    void decode_double_##form(const char* digits, char* bytes, bool* are_digits, unsigned* sum) {            \
        decode_double<kvrimage::form::digit_block_decoder>(digits, bytes, are_digits, sum);                  \
    }                                                                                                        \
    void encode_block_##form(const char* bytes, char* digits, unsigned* sum) {                               \
        encode_block<kvrimage::form::digit_block_encoder>(bytes, digits, sum);                               \
    }                                                                                                        \
    void write_limb_##form(char* place, std::uint64_t limb) {                                                \
        kvrimage::form::write_limb(limb, place);                                                             \
    }
HEX_BLOCKS(portable)
HEX_BLOCKS(sse2)

#define DECODE_SINGLE(form, summed)                                                                          \
    void decode_single_##form##_##summed(const char* digits, char* bytes, bool* are_digits, unsigned* sum) { \
        decode_single<kvrimage::form::digit_block_decoder, summed>(digits, bytes, are_digits, sum);          \
    }
#define DECODE_SINGLES(form)                                                                                 \
    DECODE_SINGLE(form, 1)                                                                                   \
    DECODE_SINGLE(form, 2)                                                                                   \
    DECODE_SINGLE(form, 3)                                                                                   \
    DECODE_SINGLE(form, 4)                                                                                   \
    DECODE_SINGLE(form, 5)                                                                                   \
    DECODE_SINGLE(form, 6)                                                                                   \
    DECODE_SINGLE(form, 7)                                                                                   \
    DECODE_SINGLE(form, 8)
DECODE_SINGLES(portable)
DECODE_SINGLES(sse2)

// kvrimage/formats/titxt/fast_titxt_bytes.h

#define TAKE_FIVE(form)                                                                                      \
    bool parse_five_titxt_bytes_##form(const char* text, char* bytes) {                                      \
        return kvrimage::form::parse_five_titxt_bytes(text, bytes);                                          \
    }
TAKE_FIVE(portable)
TAKE_FIVE(sse2)

// kvr/ram_rules/folded_key.h

#define FOLDED_KEY(size)                                                                                     \
    bool folded_key_##size(const char* left, const char* right) {                                            \
        return kvr::folded_key({left, size}) == kvr::folded_key({right, size});                              \
    }
FOLDED_KEY(1)
FOLDED_KEY(7)
FOLDED_KEY(8)
FOLDED_KEY(9)
FOLDED_KEY(15)
FOLDED_KEY(16)

} // extern "C"
