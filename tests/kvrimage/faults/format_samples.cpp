#include "tests/kvrimage/faults/format_samples.h"

#include "kvrimage/formats/registry.h"
#ifdef KVRIMAGE_READS_ELF
#include "tests/kvrimage/formats/elf/made_elf_file.h"
#endif

namespace kvrimage_tests {

using namespace kvrimage;

namespace {

#ifdef KVRIMAGE_READS_ELF
std::string small_elf_file() {
    made_elf file;
    file.entry = 0x100;
    file.segments = {{"", 0x100, 0x100, "twelve bytes and one more", 3},
                     {"", 0x200, 0x200, "twenty bytes", 0}};
    file.sections = {{".text", 0x100, 0, "twelve bytes and one more", 0}};
    return bytes_of_elf(file);
}
#endif

std::vector<format_sample> all_samples() {
    std::vector<format_sample> all = {
        {"mif",
         "% a comment over\ntwo lines %\nWIDTH=96; -- bits\nDEPTH=40;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\n"
         "CONTENT BEGIN\n0 : 0123456789ABCDEF01234567; -- a word\n[1..10] : 1 22 333333333333333333333333;\n"
         "11 : 4 5 6;\n[12..1F] : X;\n8 : 9;\nEND;\n",
         "WIDTH=96;\nDEPTH=8\nCONTENT BEGIN\n0 : 1FG;\n1 : 5\n2 : 6;\n9 : 1;\n", 0},
        {"hex", ":020000000102FB\n:01000200FFFE\n:020008001234B0\n:00000001FF\n; a comment\n",
         ":020000000102FC\n:01000200FFFE\n:0200080012349F\n", 8},
        {"rif", "@0\n0123456789ABCDEF01234567 12 XX \n@8\n1 1 1 1 2 \n", "@0\n12 5G \n@8\n1 1", 0},
        {"readmemh", "// a comment\n@0 0123456789ABCDEF01234567 12 xz /* more */\n@8 1 1 1_1 2 // end\n",
         "@0 12 5G /* more */\n@0x8 1 1, 2\n", 0},
        {"readmemb", "// a comment\n@0 0101_1010 1x0z /* more */\n@8 1 1 11 // end\n",
         "@0 12 1b0 /* more */\n@0x8 1 1, 1\n", 0},
        {"coe",
         "; a comment\nmemory_initialization_radix=16;\nmemory_initialization_vector=\n"
         "0123456789ABCDEF01234567, 1,\n1,1, 22;\n",
         "memory_initialization_radix=16\nmemory_initialization_vector=1,2G,\n3,,4", 0},
        {"hexbytes",
         ":0C0010000123456789ABCDEF0123456754\n:020000040001F9\n:050000000506070809D8\n"
         ":0400000500001234B1\n:00000001FF\n",
         ":0C0010000123456789ABCDEF01234567E1\n:020000040001F8\n:0500000005060708096F\n", 96, true},
        {"srec",
         "S00600004844521B\nS10F00100123456789ABCDEF0123456750\nS1080040050607080994\nS5030002FA\n"
         "S9030000FC\n",
         "S10F00100123456789ABCDEF01234567FD\ns1080040050607080990\nS5030003FA\n", 16, true},
        {"binary", "these bytes are the words of a memory which are repeated, repeated, repeated", "", 96,
         true},
        {"csv", "address,value,comment\n0,0x0123456789ABCDEF01234567,first\n1,5,\"a, b\"\n8,1,\n",
         "address,value\n0,0x1G\n1,5\n1,6\nx,1\n", 96},
        {"logisim", "v3.0 hex words addressed\n00: 0123456789abcdef01234567 4*ff 12 # a comment\n10: 1 2 3\n",
         "v3.0 hex words addressed\n00: 1g 4*ff\n10 1 2 3\n", 0},
        {"titxt", "@F000\n31 40 00 03 B2 40 80 5A 20 01 01 02 03 04 05 06\n07 08\n@FFFE\n00 F0\nq\n",
         "@F000\n31 40 00 03 B2 40 80 5A 20 01 01 02 03 04 05 06 07\n@FFFE\n00 0G\n", 16, true},
        {"memheader",
         "#Format=AddrHex\n#Depth=32\n#Width=96\n#AddrRadix=3\n#DataRadix=3\n#Data\n"
         "0:0123456789ABCDEF01234567\n5:1\n6:1\n7:1\n1F:2\n",
         "#Format=AddrHex\n#Depth=32\n#Width=8\n#AddrRadix=3\n#DataRadix=3\n#Data\n0:1FF\n5:1G\n40:2\n", 0},
        {"c", "", "", 16},
        {"python", "", "", 16},
        {"verilog", "", "", 16},
        {"vhdl", "", "", 16},
    };
#ifdef KVRIMAGE_READS_ELF
    all.push_back({"elf", small_elf_file(), small_elf_file().substr(0, 90), 96, true});
#endif
    return all;
}

} // namespace

read_options format_sample::options() const {
    read_options options;
    options.as = format_of_name(format);
    if (width != 0) {
        options.width = width;
    }
    if (has_bytes) {
        options.order = byte_order::big;
        options.pad = 0xFF;
    }
    return options;
}

const std::vector<format_sample>& format_samples() {
    static const std::vector<format_sample> all = all_samples();
    return all;
}

} // namespace kvrimage_tests
