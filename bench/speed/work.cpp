#include "bench/speed/work.h"

#include "kvr/kvr.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace speed {

namespace {

constexpr std::size_t block_size = std::size_t{256} * 1024;
constexpr std::size_t page_size = 4096;

[[noreturn]] void fail(const std::string& path) {
    std::perror(path.c_str());
    std::exit(1);
}

void read_blocks(const std::string& path) {
    const auto block = std::make_unique<char[]>(block_size);
    const int file = open(path.c_str(), O_RDONLY);
    ssize_t count = 1;
    while (file >= 0 && count > 0) {
        count = read(file, block.get(), block_size);
    }
    if (file < 0 || count < 0 || close(file) != 0) {
        fail(path);
    }
}

/// Writes once to each page of a fresh mapping: the cost of using memory for the first time.
void touch_pages(unsigned long long bytes) {
    void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        fail("memory");
    }
    madvise(memory, bytes, MADV_NOHUGEPAGE);
    for (unsigned long long at = 0; at < bytes; at += page_size) {
        static_cast<volatile char*>(memory)[at] = 1;
    }
}

KVR_FILE_TYPES type_of(std::string_view path) {
    const std::string_view extension = path.substr(path.rfind('.'));
    return extension == ".mif" ? FILE_TYPE_MIF : extension == ".hex" ? FILE_TYPE_HEX : FILE_TYPE_RIF;
}

int read_file(const std::string& path, unsigned bits) {
    // The process ends without freeing the words, because that is not part of reading them.
    auto* file = new KVR_MEMORY_FILE;
    file->set_file_type(type_of(path));
    file->set_file_name(path);
    file->set_word_size(bits);
    if (type_of(path) == FILE_TYPE_RIF) {
        file->set_number_of_words(1U << 20);
    }
    std::_Exit(file->read_file() && !file->has_error_messages() ? 0 : 1);
}

} // namespace

void write_blocks(const std::string& path, unsigned long long bytes) {
    const auto block = std::make_unique<char[]>(block_size);
    std::fill_n(block.get(), block_size, '0');
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    bool whole = file >= 0;
    while (whole && bytes > 0) {
        const std::size_t count = static_cast<std::size_t>(std::min<unsigned long long>(bytes, block_size));
        whole = write(file, block.get(), count) == static_cast<ssize_t>(count);
        bytes -= count;
    }
    if (!whole || close(file) != 0) {
        fail(path);
    }
}

int run_work(std::span<char*> words) {
    const std::string_view work = words[0];
    if (work == "floor-read" && words.size() == 3) {
        read_blocks(words[1]);
        touch_pages(std::strtoull(words[2], nullptr, 10));
        return 0;
    }
    if (work == "floor-convert" && words.size() == 4) {
        read_blocks(words[1]);
        write_blocks(words[3], std::strtoull(words[2], nullptr, 10));
        return 0;
    }
    if (work == "read" && words.size() == 3) {
        return read_file(words[1], static_cast<unsigned>(std::strtoul(words[2], nullptr, 10)));
    }
    return -1;
}

} // namespace speed
