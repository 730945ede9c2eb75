// Memories for other programs that read and write files of bytes:
//
//   image_files write FORMAT FOLDER COUNT
//     Writes random memories N = 0, 1, ... to FOLDER: N.ours in FORMAT; N.flat, the bytes of the memory
//     from the first set byte to the last, with A5 for unset ones; and N.0.part, N.1.part, ..., the
//     stretches without a gap. Prints a line for each memory: N, the address of the first byte, the
//     address of each stretch.
//   image_files read FORMAT FOLDER COUNT
//     Reads N.theirs in FORMAT, which should contain the memory N, and prints the files that do not.
//
// FORMAT is an identifier of kvrimage. "sections" is ELF with the stretches in the sections .sec1, .sec2, ...

#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/random_images.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::uint64_t address_space = std::uint64_t{1} << 32U;
constexpr char unset_byte = '\xA5';

/// Memories end near these addresses. At most of them, the form of records or offsets changes.
constexpr std::array<std::uint64_t, 7> edges = {0x400,     0x10000,    0x10200,      0x1000000,
                                                0x1010000, 0x80000000, address_space};

/// A memory, and the form of its bytes in a file.
struct sample {
    memory_image image;
    std::uint64_t first_byte; ///< address
    byte_order order;
};

std::uint32_t width_of(std::string_view format_name, unsigned number, std::mt19937& random) {
    constexpr std::array<std::uint32_t, 4> usual = {8, 16, 32, 64};
    if (format_name == "readmemh") { // the other programs do not read wider words
        return usual[number % 3];
    }
    const bool is_any = number % 5 == 4;
    return is_any ? 1 + static_cast<std::uint32_t>(random() % 300) : usual[number % usual.size()];
}

/// @p low, followed by @p high after @p way unset words.
memory_image joined(const memory_image& low, const memory_image& high, std::uint64_t way) {
    memory_image all(low.width(), low.depth() + way + high.depth());
    const auto add = [&all](const memory_image& part, std::uint64_t to) {
        for (const run& each : part.runs()) {
            if (each.value) {
                all.fill({to + each.addresses.first, to + each.addresses.last}, std::vector{*each.value});
            }
        }
    };
    add(low, 0);
    add(high, low.depth() + way);
    return all;
}

/// Removes unset words at both ends, which files do not contain.
memory_image without_ends(const memory_image& image) {
    const address_range all = image.bounds().value_or(address_range{0, 0});
    memory_image cut(image.width(), all.last - all.first + 1);
    for (const run& each : image.runs(all)) {
        if (each.value) {
            cut.fill({each.addresses.first - all.first, each.addresses.last - all.first},
                     std::vector{*each.value});
        }
    }
    return cut;
}

memory_image at(const memory_image& image, std::uint64_t base) {
    memory_image placed(image.width(), image.depth(), base);
    for (const run& each : image.runs()) {
        if (each.value) {
            placed.fill({base + each.addresses.first, base + each.addresses.last}, std::vector{*each.value});
        }
    }
    return placed;
}

sample make_sample(std::string_view format_name, unsigned number) {
    std::mt19937 random(1000 + number);
    const std::uint32_t width = width_of(format_name, number, random);
    const std::uint64_t bytes = (width + 7) / 8;
    const kvrimage_tests::image_traits traits{.gaps = format_name != "binary"};
    memory_image image = kvrimage_tests::random_image(random, width, 60, traits);
    if (traits.gaps && number % 10 == 0) {
        const std::uint64_t way = 70000 / bytes;
        image = joined(image, kvrimage_tests::random_image(random, width, 60, traits), way);
    }
    image = without_ends(image);
    std::uint64_t base = 0;
    if (traits.gaps) {
        const std::uint64_t edge = edges[number % edges.size()];
        const std::uint64_t end =
            edge == address_space ? edge : edge + random() % (image.depth() * bytes + 1);
        base = end / bytes - std::min(end / bytes, image.depth());
    }
    const byte_order order =
        format_name == "readmemh" || random() % 2 == 0 ? byte_order::big : byte_order::little;
    return {at(image, base), base * bytes, order};
}

/// The bytes of a word from its digits.
std::string bytes_of(const word& value, byte_order order) {
    std::string digits = *value.to_text(radix::hex);
    if (digits.size() % 2 != 0) {
        digits.insert(0, 1, '0');
    }
    std::string bytes;
    for (std::size_t index = 0; index < digits.size(); index += 2) {
        bytes += static_cast<char>(std::stoul(digits.substr(index, 2), nullptr, 16));
    }
    if (order == byte_order::little) {
        std::ranges::reverse(bytes);
    }
    return bytes;
}

/// Bytes without gaps.
struct stretch {
    std::uint64_t address;
    std::string bytes;
};

std::vector<stretch> stretches_of(const sample& memory) {
    std::vector<stretch> all;
    const std::uint64_t bytes = (memory.image.width() + 7) / 8;
    bool goes_on = false;
    for (std::uint64_t address = memory.image.base(); address <= memory.image.last_address(); ++address) {
        const auto value = memory.image[address];
        if (value && !goes_on) {
            all.push_back({address * bytes, ""});
        }
        goes_on = value.has_value();
        if (value) {
            all.back().bytes += bytes_of(*value, memory.order);
        }
    }
    return all;
}

void write_file(const std::filesystem::path& path, std::string_view contents) {
    std::ofstream file(path, std::ios::binary);
    file << contents;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::string contents_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

const format& format_called(std::string_view name) {
    const format* const found = format_of_name(name == "sections" ? "elf" : name);
    if (found == nullptr) {
        throw std::invalid_argument("no format " + std::string(name));
    }
    return *found;
}

void write_sample(const std::filesystem::path& folder, std::string_view format_name, unsigned number) {
    const sample memory = make_sample(format_name, number);
    const std::string stem = std::to_string(number);
    const format& as = format_called(format_name);
    if (as.write != nullptr) {
        write_options to;
        to.as = &as;
        to.order = memory.order;
        write_file(folder / (stem + ".ours"), to_text(memory.image, to));
    }
    std::string line = stem + " " + std::to_string(memory.first_byte);
    std::string flat;
    unsigned part = 0;
    for (const stretch& each : stretches_of(memory)) {
        flat.resize(each.address - memory.first_byte, unset_byte);
        flat += each.bytes;
        write_file(folder / (stem + "." + std::to_string(part++) + ".part"), each.bytes);
        line += " " + std::to_string(each.address);
    }
    write_file(folder / (stem + ".flat"), flat);
    std::puts(line.c_str());
}

std::string fault_of(const std::filesystem::path& folder, std::string_view format_name, unsigned number) {
    const sample memory = make_sample(format_name, number);
    read_options from;
    from.as = &format_called(format_name);
    from.width = memory.image.width();
    from.depth = memory.image.depth();
    from.order = memory.order;
    if (from.as->counts == address_unit::either) {
        from.unit = address_unit::word;
    }
    if (format_name != "binary") {
        from.base = from.as->counts == address_unit::byte ? memory.first_byte : memory.image.base();
    }
    if (format_name == "sections") {
        std::string names;
        for (std::size_t count = stretches_of(memory).size(), index = 1; index <= count; ++index) {
            names += (names.empty() ? ".sec" : ",.sec") + std::to_string(index);
        }
        from.choices = {{"section", names}};
    }
    const read_result result = parse(contents_of(folder / (std::to_string(number) + ".theirs")), from);
    if (!result.image) {
        return kvrimage_tests::reasons_of(result);
    }
    return *result.image == kvrimage_tests::moved_to_zero(memory.image) ? "" : "other words\n";
}

int run_all(std::string_view what, std::string_view format_name, const std::filesystem::path& folder,
            unsigned count) {
    bool is_good = true;
    for (unsigned number = 0; number < count; ++number) {
        if (what == "write") {
            write_sample(folder, format_name, number);
            continue;
        }
        const std::string fault = fault_of(folder, format_name, number);
        if (!fault.empty()) {
            std::printf("%u: %s", number, fault.c_str());
            is_good = false;
        }
    }
    return is_good ? 0 : 1;
}

} // namespace

int main(int count, char** words) {
    if (count != 5) {
        return 4;
    }
    try {
        return run_all(words[1], words[2], words[3], static_cast<unsigned>(std::stoul(words[4])));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 4;
    }
}
