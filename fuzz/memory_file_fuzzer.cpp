// Reads hostile bytes as a memory file of each format and writes what came of it. The first byte chooses
// the format; the rest is the file.

#include "kvr/kvr.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::array formats{FILE_TYPE_MIF, FILE_TYPE_HEX, FILE_TYPE_RIF};

/// A file of this process alone, overwritten by each input.
class scratch_file {
public:
    scratch_file()
        : path(std::filesystem::temp_directory_path() / ("kvr_fuzzer_" + std::to_string(getpid()))) {}
    ~scratch_file() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    scratch_file(const scratch_file&) = delete;
    scratch_file& operator=(const scratch_file&) = delete;

    std::string with(std::string_view bytes) const {
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }

private:
    std::filesystem::path path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    static const scratch_file scratch;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    KVR_MEMORY_FILE memory;
    memory.set_file_type(formats.at(data[0] % formats.size()));
    memory.set_file_name(scratch.with(bytes.substr(1)));
    memory.set_word_size(16);
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(64);
    if (memory.read_file() && memory.get_number_of_words() < 65536) {
        memory.write_file();
    }
    return 0;
}
