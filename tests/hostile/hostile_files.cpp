// Writes hostile files: hostile_files FOLDER single|inputs|bytes
//
// FOLDER/single gets one memory file for each idea below, FOLDER/inputs one file for each idea about other
// inputs of commands, FOLDER/bytes one file for each byte value in each field of each format.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t large = 250000;
constexpr std::size_t many = large / 4;

std::string repeated(std::string_view text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t index = 0; index < count; ++index) {
        all.append(text);
    }
    return all;
}

/// The results of @p text for every number below @p count, concatenated.
template <class Text>
std::string for_each_below(unsigned count, Text text) {
    std::string all;
    for (unsigned number = 0; number < count; ++number) {
        all += text(number);
    }
    return all;
}

std::string hexadecimal(std::uint64_t number, int digits = 1) {
    std::array<char, 24> text{};
    static_cast<void>(
        std::snprintf(text.data(), text.size(), "%0*llX", digits, static_cast<unsigned long long>(number)));
    return text.data();
}

constexpr std::string_view deepest = "WIDTH=8;\nDEPTH=2147483647;\nCONTENT BEGIN\n";
constexpr std::string_view small = "WIDTH=8;\nDEPTH=4096;\nCONTENT BEGIN\n";

std::string mif(std::string_view header, const std::string& content) {
    return std::string(header) + content + "END;\n";
}

/// @p count words of a few digits and a million bits.
std::string wide_words(unsigned count) {
    return mif("WIDTH=1048576;\nDEPTH=900;\nCONTENT BEGIN\n", for_each_below(count, [](unsigned number) {
                   return hexadecimal(number) + " : " + hexadecimal(number) + ";\n";
               }));
}

/// The record of @p type with @p data, in hexadecimal digits.
std::string record(unsigned address, unsigned type, const std::string& data) {
    const std::string bytes =
        hexadecimal(data.size() / 2, 2) + hexadecimal(address, 4) + hexadecimal(type, 2) + data;
    unsigned sum = 0;
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        sum += static_cast<unsigned>(std::stoul(bytes.substr(index, 2), nullptr, 16));
    }
    return ":" + bytes + hexadecimal((0x100U - sum % 0x100U) % 0x100U, 2) + "\n";
}

std::string hex(const std::string& records) {
    return records + ":00000001FF\n";
}

/// An S-record of @p type with the bytes that @p data encodes in hexadecimal digits.
std::string srec(unsigned type, std::uint64_t address, const std::string& data) {
    const unsigned address_bytes = type == 0 || type == 1 || type == 9 ? 2 : (type == 2 || type == 8 ? 3 : 4);
    const std::string bytes = hexadecimal(address_bytes + data.size() / 2 + 1, 2) +
                              hexadecimal(address, static_cast<int>(2 * address_bytes)) + data;
    unsigned sum = 0;
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        sum += static_cast<unsigned>(std::stoul(bytes.substr(index, 2), nullptr, 16));
    }
    return "S" + std::to_string(type) + bytes + hexadecimal(0xFFU - sum % 0x100U, 2) + "\n";
}

/// A number of @p bytes bytes, the lowest one first.
std::string little_endian(std::uint64_t value, unsigned bytes) {
    std::string text;
    for (unsigned index = 0; index < bytes; ++index) {
        text += static_cast<char>(value >> (8 * index));
    }
    return text;
}

struct elf_segment {
    std::uint64_t offset;
    std::uint64_t address;
    std::uint64_t size; ///< in the file
};

/// The header of a 32-bit ELF file that claims @p segments segments at @p segments_at and @p sections
/// sections at @p sections_at.
std::string elf_head(std::uint64_t segments_at, std::uint64_t segments, std::uint64_t sections_at,
                     std::uint64_t sections) {
    return std::string("\x7F"
                       "ELF\1\1\1") +
           std::string(9, '\0') + little_endian(2, 2) + little_endian(243, 2) + little_endian(1, 4) +
           little_endian(0, 4) + little_endian(segments_at, 4) + little_endian(sections_at, 4) +
           little_endian(0, 4) + little_endian(52, 2) + little_endian(32, 2) + little_endian(segments, 2) +
           little_endian(40, 2) + little_endian(sections, 2) + little_endian(0, 2);
}

std::string segment_of_elf(const elf_segment& one) {
    return little_endian(1, 4) + little_endian(one.offset, 4) + little_endian(one.address, 4) +
           little_endian(one.address, 4) + little_endian(one.size, 4) + little_endian(one.size, 4) +
           little_endian(7, 4) + little_endian(1, 4);
}

/// An ELF file of @p count segments and a hundred bytes of contents. @p make generates a segment from its
/// number.
template <class Make>
std::string elf(unsigned count, Make make) {
    return elf_head(52, count, 0, 0) +
           for_each_below(count, [make](unsigned number) { return segment_of_elf(make(number)); }) +
           std::string(100, 'x');
}

std::string noise(unsigned seed, std::size_t size) {
    std::mt19937 random(seed);
    std::string text(size, '\0');
    for (char& character : text) {
        character = static_cast<char>(random());
    }
    return text;
}

std::string coe(const std::string& words) {
    return "memory_initialization_radix=16;\nmemory_initialization_vector=\n" + words;
}

std::string memheader(std::string_view digits, std::string_view depth, std::string_view width,
                      const std::string& rows) {
    return "#Format=" + std::string(digits) + "\n#Depth=" + std::string(depth) +
           "\n#Width=" + std::string(width) + "\n#AddrRadix=3\n#DataRadix=3\n#Data\n" + rows;
}

struct hostile_file {
    const char* name;
    std::string (*make)();
};

constexpr hostile_file files[] = {
    // Sizes, addresses and ranges larger than the file.
    {"huge_depth.mif", [] { return mif(deepest, ""); }},
    {"depth_beyond_all.mif",
     [] { return mif("WIDTH=8;\nDEPTH=99999999999999999999;\nCONTENT BEGIN\n", "0 : 1;\n"); }},
    {"huge_width.mif",
     [] { return mif("WIDTH=2147483647;\nDEPTH=2147483647;\nCONTENT BEGIN\n", "0 : 1;\n"); }},
    {"wide_words.mif",
     [] { return mif("WIDTH=1048576;\nDEPTH=100000;\nCONTENT BEGIN\n", "[0..99999] : 1 2 3;\n"); }},
    {"many_short_wide_words.mif", [] { return wide_words(900); }},
    {"some_short_wide_words.mif", [] { return wide_words(128); }},
    {"negative_sizes.mif", [] { return mif("WIDTH=-1;\nDEPTH=-2147483648;\nCONTENT BEGIN\n", "0 : 1;\n"); }},
    {"no_sizes.mif", [] { return mif("WIDTH=0;\nDEPTH=0;\nCONTENT BEGIN\n", "0 : 1;\n"); }},
    {"all_addresses.mif", [] { return mif(deepest, "[0..7FFFFFFE] : 5;\n"); }},
    {"cycle_of_two.mif", [] { return mif(deepest, "[0..7FFFFFFE] : 1 2;\n"); }},
    {"cycle_of_three.mif", [] { return mif(deepest, "[0..7FFFFFFE] : 1 2 3;\n"); }},
    {"cycle_of_240.mif", [] { return mif(deepest, "[0..7FFFFFFE] :" + repeated(" 1", 239) + " 2;\n"); }},
    {"cycle_broken_often.mif",
     [] {
         return mif(deepest, "[0..7FFFFFFE] : 1 2 3;\n" + for_each_below(800, [](unsigned number) {
                                 return hexadecimal(number * 2500009U) + " : FF;\n";
                             }));
     }},
    {"the_same_range_again.mif",
     [] {
         return mif(deepest, for_each_below(5000, [](unsigned number) {
                        return "[0..7FFFFFFE] : " + hexadecimal(number % 256) + " 1;\n";
                    }));
     }},
    {"ranges_in_ranges.mif",
     [] {
         return mif(deepest, for_each_below(2000, [](unsigned number) {
                        return "[" + hexadecimal(number) + ".." + hexadecimal(0x7FFFFFFEU - number) +
                               "] : 1 2;\n";
                    }));
     }},
    {"scattered_addresses.mif",
     [] {
         return mif(deepest, for_each_below(3000, [](unsigned number) {
                        return hexadecimal(number * 714000ULL) + " : 1;\n";
                    }));
     }},
    {"addresses_of_64_bits.mif",
     [] { return mif(deepest, "FFFFFFFFFFFFFFFF : 1;\n[0..FFFFFFFFFFFFFFFF] : 1;\n80000000 : 1;\n"); }},
    {"range_backwards.mif", [] { return mif(deepest, "[7FFFFFFE..0] : 1;\n"); }},
    {"address_of_many_digits.mif", [] { return mif(small, std::string(large, '1') + " : 1;\n"); }},
    {"value_of_many_digits.mif", [] { return mif(small, "0 : " + std::string(large, '1') + ";\n"); }},
    {"range_of_many_digits.mif", [] { return mif(small, "[0.." + std::string(large, '1') + "] : 1;\n"); }},
    // Endless lines and statements.
    {"value_over_many_lines.mif", [] { return mif(small, "0 :\n" + repeated("1\n", 2 * many) + ";\n"); }},
    {"empty_continuations.mif", [] { return mif(small, "0\n" + repeated("\n", many) + ": 1;\n"); }},
    {"statement_without_end.mif",
     [] { return std::string(small) + "0 : " + repeated("1 2 3 4\n", many / 2); }},
    {"many_values.mif",
     [] {
         return mif("WIDTH=8;\nDEPTH=2000000;\nCONTENT BEGIN\n",
                    "0 :\n" + repeated(" 1 2 3 4 5 6 7 8\n", 40000) + ";\n");
     }},
    {"line_without_end.mif", [] { return std::string(small) + std::string(4 * large, '1'); }},
    {"header_without_end.mif", [] { return "WIDTH=" + std::string(4 * large, ' ') + "8;"; }},
    {"many_leading_comments.mif", [] { return repeated("-- x\n", large) + mif(small, "0 : 1;\n"); }},
    {"many_comments_in_the_content.mif", [] { return mif(small, repeated("-- x\n", many) + "0 : 1;\n"); }},
    {"many_percent_comments.mif", [] { return mif(small, repeated("% x %\n", many) + "0 : 1;\n"); }},
    {"comment_without_end.mif", [] { return std::string(small) + "% " + repeated("x\n", many); }},
    {"many_percent_signs.mif", [] { return mif(small, repeated("%%%%\n", many / 4)); }},
    {"many_semicolons.mif", [] { return mif(small, repeated(";\n", many)); }},
    {"many_brackets.mif", [] { return mif(small, repeated("[[[[\n", many / 4)); }},
    {"many_inner_statements.mif", [] { return mif(deepest, "0:" + repeated("1]:\n", many) + "1;\n"); }},
    {"many_stray_characters.mif", [] { return mif(deepest, "0 : " + repeated("1$\n", many) + ";\n"); }},
    {"many_words_of_no_header.mif",
     [] { return repeated(std::string(490, 'A') + "=1;\n", 4000) + mif(small, "0 : 1;\n"); }},
    {"many_keywords_without_equals.mif",
     [] { return repeated("DATA_RADIX BIN;\n", many / 2) + mif(small, "0 : 1;\n"); }},
    {"many_empty_lines.mif", [] { return repeated("\n", many) + mif(small, "0 : 1;\n"); }},
    {"carriage_returns_only.mif", [] { return std::string(large, '\r'); }},
    {"many_headers.mif",
     [] { return repeated("WIDTH=8;\nDEPTH=4096;\nDATA_RADIX=HEX;\n", 50000) + mif(small, ""); }},
    {"many_ends.mif", [] { return mif(small, repeated("END;\n", many)); }},
    {"nul_bytes.mif", [] { return std::string(large, '\0'); }},
    {"nul_in_a_value.mif", [] { return mif(small, std::string("0 : 1") + '\0' + "2;\n"); }},
    {"noise.mif", [] { return noise(1, large); }},
    {"noise_in_the_content.mif", [] { return mif(small, noise(2, large)); }},
    {"empty.mif", [] { return std::string(); }},
    {"one_newline.mif", [] { return std::string("\n"); }},
    // Intel HEX
    {"line_without_end.hex", [] { return ":" + std::string(4 * large, '0'); }},
    {"text_without_end.hex", [] { return std::string(4 * large, 'x'); }},
    {"blanks_without_end.hex", [] { return std::string(4 * large, ' ') + hex(record(0, 0, "01")); }},
    {"many_text_lines.hex", [] { return repeated("no record\n", many) + hex(record(0, 0, "01")); }},
    {"many_end_records.hex", [] { return record(0, 0, "01") + repeated(":00000001FF\n", many); }},
    {"empty_records.hex", [] { return hex(repeated(":0000000000\n", many)); }},
    {"first_and_last_address.hex",
     [] { return hex(record(0, 0, "01") + record(0, 4, "FFFF") + record(0xFFFE, 0, "02")); }},
    {"pages_back_and_forth.hex",
     [] {
         return hex(for_each_below(20000, [](unsigned number) {
             return record(0, 4, number % 2 == 0 ? "0000" : "7FFF") + record(number % 0x10000, 0, "05");
         }));
     }},
    {"pages_everywhere.hex",
     [] {
         return hex(for_each_below(20000, [](unsigned number) {
             return record(0, 4, hexadecimal(number * 40503U % 0x8000U, 4)) + record(number, 0, "05");
         }));
     }},
    {"records_backwards.hex",
     [] {
         return hex(for_each_below(60000, [](unsigned number) { return record(60000 - number, 0, "05"); }));
     }},
    {"records_over_each_other.hex",
     [] {
         return hex(
             for_each_below(20000, [](unsigned number) { return record(number, 0, "0102030405060708"); }));
     }},
    {"over_the_end_of_a_page.hex", [] { return hex(record(0xFFFF, 0, repeated("5A", 255))); }},
    {"over_the_last_address.hex",
     [] { return hex(record(0, 4, "FFFF") + record(0xFFFF, 0, repeated("5A", 255))); }},
    {"segments.hex",
     [] {
         return hex(for_each_below(20000, [](unsigned number) {
             return record(0, 2, hexadecimal(0xFFFF - number, 4)) + record(0xFFFF, 0, "05");
         }));
     }},
    {"nul_bytes.hex", [] { return std::string(large, '\0') + hex(record(0, 0, "01")); }},
    {"noise.hex", [] { return ":" + noise(3, large); }},
    {"empty.hex", [] { return std::string(); }},
    // RIF
    {"word_of_most_digits.rif", [] { return "@0\n" + std::string(4 * large, 'A') + " \n"; }},
    {"widest_word.rif", [] { return "@0\n" + std::string(262144, 'A') + " 1 \n"; }},
    {"blanks_without_end.rif", [] { return "@0\n" + std::string(4 * large, ' ') + "1"; }},
    {"many_words.rif", [] { return "@0\n" + repeated("1 2 ", many / 2); }},
    {"many_addresses.rif",
     [] {
         return for_each_below(many, [](unsigned number) { return "@" + hexadecimal(number) + "\n"; }) + "1 ";
     }},
    {"addresses_back_and_forth.rif",
     [] {
         return for_each_below(50000, [](unsigned number) {
             return (number % 2 == 0 ? "@0\n" : "@FFFFFFF0\n") + hexadecimal(number) + " \n";
         });
     }},
    {"addresses_everywhere.rif",
     [] {
         return for_each_below(
             20000, [](unsigned number) { return "@" + hexadecimal(number * 1070000ULL) + "\n5 \n"; });
     }},
    {"addresses_of_64_bits.rif",
     [] { return std::string("@FFFFFFFFFFFFFFFFFF\n1 \n@-5\n2 \n@7FFFFFFFFFFFFFFF\n3 \n"); }},
    {"address_of_many_digits.rif", [] { return "@" + std::string(large, '1') + "\n1 \n"; }},
    {"at_signs.rif", [] { return std::string(large, '@'); }},
    {"nul_bytes.rif", [] { return "@0\n" + std::string(large, '\0'); }},
    {"noise.rif", [] { return "@0\n" + noise(4, large); }},
    {"empty.rif", [] { return std::string(); }},
    // Lists of words for simulators
    {"last_address_of_64_bits.vmem", [] { return std::string("@FFFFFFFFFFFFFFFF 12 34\n"); }},
    {"addresses_everywhere.vmem",
     [] {
         return for_each_below(
             20000, [](unsigned number) { return "@" + hexadecimal(number * 107000ULL) + " 5\n"; });
     }},
    {"word_of_most_digits.vmem", [] { return std::string(4 * large, 'A') + "\n"; }},
    {"widest_word.vmem", [] { return std::string(262144, 'A') + " 1 2 3\n"; }},
    {"comment_without_end.vmem", [] { return "01 /*" + repeated(" * ", many); }},
    {"many_comments.vmem", [] { return "01\n" + repeated("/**/", many) + "02\n"; }},
    {"underscores.vmem", [] { return "1" + std::string(large, '_') + "2\n"; }},
    {"noise.vmem", [] { return "01 02\n" + noise(5, large); }},
    // The same in binary digits.
    {"widest_word.memb", [] { return std::string(1048576, '1') + " 1 0\n"; }},
    {"word_of_most_digits.memb", [] { return std::string(8 * large, 'x') + "\n"; }},
    {"last_address_of_64_bits.memb", [] { return std::string("@FFFFFFFFFFFFFFFF 1 0\n"); }},
    {"noise.memb", [] { return "01 10\n" + noise(15, large); }},
    // COE
    {"many_commas.coe", [] { return coe(std::string(large, ',') + ";\n"); }},
    {"many_words.coe", [] { return coe(repeated("1,2\n", many / 2) + ";\n"); }},
    {"decimal_of_many_digits.coe",
     [] {
         return "memory_initialization_radix=10;\nmemory_initialization_vector=" + std::string(large, '9') +
                ";\n";
     }},
    {"vector_again_and_again.coe", [] { return repeated(coe("1;\n"), many / 16); }},
    {"noise.coe", [] { return coe(noise(6, large)); }},
    // S-records
    {"first_and_last_address.srec", [] { return srec(3, 0, "01") + srec(3, 0xFFFFFFFF, "02"); }},
    {"beyond_the_last_address.srec", [] { return srec(3, 0xFFFFFFFF, "0102"); }},
    {"records_everywhere.srec",
     [] { return for_each_below(20000, [](unsigned number) { return srec(3, number * 107000ULL, "05"); }); }},
    {"records_over_each_other.srec",
     [] {
         return for_each_below(20000, [](unsigned number) { return srec(3, number, "0102030405060708"); });
     }},
    {"records_backwards.srec",
     [] { return for_each_below(60000, [](unsigned number) { return srec(3, 60000 - number, "05"); }); }},
    {"many_headers.srec", [] { return repeated(srec(0, 0, "41"), many / 4); }},
    {"line_without_end.srec", [] { return "S1" + std::string(4 * large, '0'); }},
    {"noise.srec", [] { return srec(1, 0, "01") + noise(7, large); }},
    // Intel HEX of bytes
    {"first_and_last_address.ihx",
     [] { return hex(record(0, 0, "01") + record(0, 4, "FFFF") + record(0xFFFF, 0, "02")); }},
    {"over_the_last_address.ihx",
     [] { return hex(record(0, 4, "FFFF") + record(0xFFFF, 0, repeated("5A", 255))); }},
    {"pages_everywhere.ihx",
     [] {
         return hex(for_each_below(20000, [](unsigned number) {
             return record(0, 4, hexadecimal(number * 40503U % 0x10000U, 4)) + record(number, 0, "05");
         }));
     }},
    {"segments_that_wrap.ihx",
     [] {
         return hex(for_each_below(20000, [](unsigned number) {
             return record(0, 2, hexadecimal(number, 4)) + record(0xFFFF, 0, "0506");
         }));
     }},
    {"records_over_each_other.ihx",
     [] {
         return hex(
             for_each_below(20000, [](unsigned number) { return record(number, 0, "0102030405060708"); }));
     }},
    {"many_start_addresses.ihx", [] { return hex(repeated(record(0, 5, "12345678"), many / 4)); }},
    {"noise.ihx", [] { return record(0, 0, "01") + noise(14, large); }},
    // TI-TXT
    {"first_and_last_address.txt", [] { return std::string("@0\n01\n@FFFFFFFF\n02\nq\n"); }},
    {"over_the_last_address.txt", [] { return "@FFFFFFF0\n" + repeated("5A ", 255) + "\nq\n"; }},
    {"addresses_everywhere.txt",
     [] {
         return for_each_below(
                    20000, [](unsigned number) { return "@" + hexadecimal(number * 107000ULL) + "\n05\n"; }) +
                "q\n";
     }},
    {"at_signs.txt", [] { return "@0\n" + std::string(large, '@') + "\nq\n"; }},
    {"line_without_end.txt", [] { return "@0\n" + repeated("01 ", many) + "\nq\n"; }},
    {"noise.txt", [] { return "@0\n01\n" + noise(13, large); }},
    // Raw binary
    {"nul_bytes.bin", [] { return std::string(large, '\0'); }},
    {"noise.bin", [] { return noise(8, large); }},
    {"empty.bin", [] { return std::string(); }},
    // ELF
    {"tables_beyond_the_file.elf", [] { return elf_head(0xFFFFFFF0, 0xFFFE, 0xFFFFFFF0, 0xFFFE); }},
    {"count_in_a_section_that_is_not_there.elf", [] { return elf_head(52, 0xFFFF, 0xFFFFFF00, 0); }},
    {"header_alone.elf", [] { return elf_head(0, 0, 0, 0); }},
    {"contents_beyond_the_file.elf",
     [] { return elf(1, [](unsigned) {
              return elf_segment{0xFFFFFF00, 0, 0xFFFFFF00};
          }); }},
    {"contents_over_the_last_address.elf",
     [] { return elf(1, [](unsigned) {
              return elf_segment{84, 0xFFFFFFFF, 100};
          }); }},
    {"segments_that_overlap.elf",
     [] { return elf(60000, [](unsigned number) {
              return elf_segment{52, number, 100};
          }); }},
    {"one_place_again_and_again.elf",
     [] { return elf(60000, [](unsigned) {
              return elf_segment{0, 0, 1900000};
          }); }},
    {"segments_everywhere.elf",
     [] { return elf(40000, [](unsigned number) {
              return elf_segment{52, number * 107000ULL, 1};
          }); }},
    {"noise.elf", [] { return elf_head(52, 30000, 52, 30000) + noise(9, large); }},
    // CSV
    {"fifty_thousand_columns.csv",
     [] { return repeated("1,", many / 5) + "1\n" + repeated("2,", many / 5) + "2\n"; }},
    {"columns_without_end.csv", [] { return std::string(large, ','); }},
    {"column_of_a_name_without_end.csv", [] { return "address," + std::string(large, 'v') + "\n0,1\n"; }},
    {"quote_without_end.csv", [] { return "address,value\n0,\"" + repeated("1\n", many); }},
    {"value_of_many_digits.csv", [] { return "address,value\n0," + std::string(large, '9') + "\n"; }},
    {"addresses_everywhere.csv",
     [] {
         return "address,value\n" + for_each_below(20000, [](unsigned number) {
                    return "0x" + hexadecimal(number * 107000ULL) + ",5\n";
                });
     }},
    {"last_address_of_64_bits.csv", [] { return std::string("address,value\n0xFFFFFFFFFFFFFFFF,1\n"); }},
    {"noise.csv", [] { return "address,value\n" + noise(10, large); }},
    // Logisim
    {"run_of_four_billion.logisim", [] { return std::string("v2.0 raw\n4294967295*00\n"); }},
    {"runs_of_four_billion.logisim", [] { return "v2.0 raw\n" + repeated("4294967295*1 ", 1000) + "\n"; }},
    {"run_of_64_bits.logisim", [] { return std::string("v2.0 raw\n18446744073709551615*1 1\n"); }},
    {"run_of_wide_words.logisim", [] { return "v2.0 raw\n4000000000*" + std::string(262144, 'A') + "\n"; }},
    {"last_address.logisim",
     [] { return std::string("v3.0 hex words addressed\nffffffffffffffff: 1 2\n0: 3\n"); }},
    {"bytes_everywhere.logisim",
     [] {
         return "v3.0 hex bytes addressed little-endian\n" + for_each_below(20000, [](unsigned number) {
                    return hexadecimal(number * 107000ULL) + ": 05\n";
                });
     }},
    {"noise.logisim", [] { return "v3.0 hex words plain\n" + noise(11, large); }},
    // MEM with header
    {"deepest.mem", [] { return memheader("Hex", "4294967296", "8", "1 2 3\n"); }},
    {"depth_beyond_all.mem", [] { return memheader("Hex", "99999999999999999999", "8", "1\n"); }},
    {"widest.mem", [] { return memheader("Bin", "4294967296", "1048576", "1 0 1\n"); }},
    {"wide_words.mem",
     [] { return memheader("AddrHex", "4294967296", "1048576", repeated("0: 1\nFFFFFFFF: 2\n", 9000)); }},
    {"settings_again_and_again.mem", [] { return repeated("#Depth=16\n", many / 4) + "#Data\n1\n"; }},
    {"noise.mem", [] { return memheader("Hex", "16", "8", noise(12, large)); }},
};

/// A chunk of a RIFF file with @p size in its header.
std::string chunk(const std::string& name, std::uint64_t size, const std::string& bytes) {
    return name + little_endian(size, 4) + bytes;
}

/// A file of samples with any values in its header.
std::string wave(unsigned channels, unsigned bits, std::uint64_t size, const std::string& samples) {
    const unsigned frame = channels * ((bits + 7) / 8);
    const std::string head = little_endian(1, 2) + little_endian(channels, 2) + little_endian(8000, 4) +
                             little_endian(0, 4) + little_endian(frame, 2) + little_endian(bits, 2);
    return chunk("RIFF", 0xFFFFFFFF, "WAVE") + chunk("fmt ", head.size(), head) +
           chunk("data", size, samples);
}

/// A bitmap of 24 bits per pixel with @p pixels after the header.
std::string bitmap(std::uint64_t columns, std::uint64_t rows, std::uint64_t begin,
                   const std::string& pixels) {
    return "BM" + little_endian(0xFFFFFFFF, 4) + little_endian(0, 4) + little_endian(begin, 4) +
           little_endian(40, 4) + little_endian(columns, 4) + little_endian(rows, 4) + little_endian(1, 2) +
           little_endian(24, 2) + std::string(24, '\0') + pixels;
}

/// A PNG file of one byte per pixel with @p data as compressed data.
std::string png(const std::string& size, const std::string& data) {
    const auto piece = [](const std::string& name, const std::string& bytes) {
        return std::string{'\0', static_cast<char>(bytes.size() >> 16U),
                           static_cast<char>(bytes.size() >> 8U), static_cast<char>(bytes.size())} +
               name + bytes + std::string(4, '\0');
    };
    return "\x89PNG\r\n\x1A\n" + piece("IHDR", size + std::string("\x08\0\0\0\0", 5)) + piece("IDAT", data) +
           piece("IEND", "");
}

/// A manifest of @p count banks, in the form that `split` writes.
std::string manifest(const std::string& count, std::string_view width, const std::string& names) {
    return R"({"schema":"kvrmem-split-1","kind":"banks","n":)" + count + R"(,"width":)" + std::string(width) +
           R"(,"depth":)" + count + R"(,"format":"mif","files":[)" + names + "]}";
}

/// The extension determines the option that gets the file.
constexpr hostile_file inputs[] = {
    {"data_beyond_the_file.wav", [] { return wave(1, 16, 0xFFFFFFFF, "1234"); }},
    {"most_channels.wav", [] { return wave(16000, 32, 192000, std::string(192000, 'x')); }},
    {"no_channels.wav", [] { return wave(0, 0, 4, "1234"); }},
    {"no_frames.wav", [] { return wave(1, 8, 0, ""); }},
    {"most_bits.wav", [] { return wave(1, 65535, large, std::string(large, 'x')); }},
    {"many_empty_chunks.wav", [] { return chunk("RIFF", 0, "WAVE") + repeated(chunk("junk", 0, ""), many); }},
    {"chunks_that_overlap.wav",
     [] { return chunk("RIFF", 0, "WAVE") + repeated(chunk("junk", 0xFFFFFFFE, ""), many); }},
    {"noise.wav", [] { return chunk("RIFF", 0, "WAVE") + noise(16, large); }},
    {"largest.bmp", [] { return bitmap(0x7FFFFFFF, 0x7FFFFFFF, 54, "123"); }},
    {"pixels_beyond_the_file.bmp", [] { return bitmap(100, 100, 0xFFFFFFF0, "123"); }},
    {"least_height.bmp", [] { return bitmap(1, 0x80000000, 54, "123"); }},
    {"cut_off.bmp", [] { return bitmap(2000, 2000, 54, std::string(100, 'x')); }},
    {"noise.bmp", [] { return bitmap(100, 100, 54, "").substr(0, 14) + noise(17, large); }},
    {"largest.png", [] { return png("\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF", noise(18, 100)); }},
    {"long_row.png", [] { return png(std::string("\x7F\xFF\xFF\xFF\0\0\0\1", 8), noise(19, large)); }},
    {"no_pixels.png", [] { return png(std::string(8, '\0'), ""); }},
    {"cut_off.png", [] { return png(std::string("\0\0\4\0\0\0\4\0", 8), "x\x9C"); }},
    {"many_pieces.png",
     [] {
         return std::string("\x89PNG\r\n\x1A\n") + repeated(std::string("\0\0\0\0IDAT\0\0\0\0", 12), many);
     }},
    {"noise.jpg", [] { return "\xFF\xD8\xFF" + noise(20, large); }},
    {"many_markers.jpg", [] { return "\xFF\xD8" + repeated(std::string("\xFF\xFE\0\2", 4), many); }},
    {"nul_bytes.bytes", [] { return std::string(large, '\0'); }},
    {"empty.bytes", [] { return std::string(); }},
    {"many.assignments",
     [] {
         return for_each_below(many,
                               [](unsigned number) { return "0x" + hexadecimal(number % 16) + "=1\n"; });
     }},
    {"quote_without_end.assignments", [] { return "0=\"" + std::string(large, 'x'); }},
    {"number_of_many_digits.assignments", [] { return "0=" + std::string(large, '9') + "\n"; }},
    {"far_addresses.assignments",
     [] { return std::string("0xFFFFFFFFFFFFFFFF=1\n99999999999999999999=1\n"); }},
    {"bits_beyond_all.assignments", [] { return std::string("0[4294967295:0]=1\n0[-1]=1\n"); }},
    {"noise.assignments", [] { return noise(21, large); }},
    {"deep.json", [] { return std::string(large, '['); }},
    {"parts_without_end.json", [] { return manifest("62500", "8", repeated("\"a\",", many - 1) + "\"a\""); }},
    {"parts_that_are_not_there.json", [] { return manifest("4294967296", "8", "\"a\""); }},
    {"widest_parts.json", [] { return manifest("2", "1048576", "\"../tame.mif\",\"../tame.mif\""); }},
    {"numbers_beyond_all.json", [] { return manifest(std::string(large, '9'), "-8", "\"a\""); }},
    {"noise.json", [] { return "{" + noise(22, large); }},
    {"many.masks", [] { return repeated("FF\n", many); }},
    {"widest.masks", [] { return std::string(large, 'F') + "\n"; }},
    {"noise.masks", [] { return noise(23, large); }},
};

/// A small file of each format; each "?" is replaced with every byte value.
struct small_file {
    const char* name;
    std::string_view text;
};

constexpr small_file small_files[] = {
    {"mif", "?WIDTH=?8;?\nDEPTH=?16?;\nADDRESS_RADIX=?HEX;\nDATA_RADIX=HE?X;\nCONTENT? BEGIN?\n?0? :? "
            "1?2?;?\n[?2?..?"
            "5?] : A B;\n6 : 1; -- ?\n% ? %\n?END?;?\n"},
    {"hex", "?:?0?2?0?000?00?0?1?02?FB\n:00000001F?F?\n?"},
    {"rif", "?@?1?0?\n?0?1? ?02 \n?"},
    {"vmem", "?@?1?0\n0?1 ?0X /?*? c *?/ ?0_2 /?/?\n?"},
    {"coe", "?memory_?initialization_radix?=?16?;\nmemory_initialization_vector?=?\n1?F?,? 2?;?\n?"},
    {"srec", "?S?1?0?5?1234?A?ABB4?F?\nS503?0001FB\nS?9030000FC?\n?"},
    {"ihx", "?:?0?2?0?000?00?0?1?02?FB\n:0?2?0?0?0?0?0?2?1000EC\n:00000001F?F?\n?"},
    {"txt", "?@?F?000\n?3?1? 4?0? ?\n@?FFFE?\n0?0 F0\n?q?\n?"},
    {"csv", "?address?,?value?\n?0?,?0?x?1F?\n1?,?\"-?5?\"?\n?"},
    {"logisim", "?v?3.?0 hex words addressed?\n?0?0?:? 1?0 ?4?*?F?F? #?\n?"},
    {"mem",
     "?#?Format?=?Addr?Hex\n#Depth=?16?\n#?Width=?8\n#AddrRadix=?3\n#DataRadix=3\n#?Data?\n?0?:?1?0?\n?"},
};

std::string without_marks(std::string text) {
    std::erase(text, '?');
    return text;
}

void write(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

void write_all_bytes(const std::filesystem::path& folder, const small_file& file) {
    unsigned place = 0;
    for (std::size_t mark = file.text.find('?'); mark != file.text.npos;
         mark = file.text.find('?', mark + 1)) {
        const std::string before = without_marks(std::string(file.text.substr(0, mark)));
        const std::string after = without_marks(std::string(file.text.substr(mark)));
        for (unsigned byte = 0; byte < 256; ++byte) {
            const std::string name = "place" + std::to_string(place) + "_byte" + std::to_string(byte);
            write(folder / (name + "." + file.name), before + static_cast<char>(byte) + after);
        }
        ++place;
    }
}

template <std::size_t Count>
void write_all(const std::filesystem::path& folder, const hostile_file (&all)[Count]) {
    for (const hostile_file& file : all) {
        write(folder / file.name, file.make());
    }
}

} // namespace

int main(int count, char** words) {
    if (count != 3) {
        return 4;
    }
    const std::string_view which = words[2];
    const std::filesystem::path folder = std::filesystem::path(words[1]) / which;
    std::filesystem::create_directories(folder);
    if (which == "single") {
        write_all(folder, files);
    } else if (which == "inputs") {
        write_all(folder, inputs);
    } else if (which == "bytes") {
        for (const small_file& file : small_files) {
            write_all_bytes(folder, file);
        }
    } else {
        return 4;
    }
}
