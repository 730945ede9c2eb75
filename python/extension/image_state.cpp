#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/image/image_part.h"
#include "kvrimage/image/numbers.h"
#include "parts.h"
#include "words.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The state of a memory as Python objects, for pickle: (width, depth, base, pieces). A piece is (first
// address, last address, words): the words as bytes, the most significant one first, or a list that repeats.

namespace kvr_python {

using kvrimage::address_range;
using kvrimage::byte_order;
using kvrimage::memory_image;

namespace {

/// Words whose pattern takes less room than they do.
constexpr std::uint64_t fewest_repeated = 64;

struct piece {
    address_range addresses;
    std::string bytes;                                  ///< "": a pattern instead
    std::vector<std::optional<kvrimage::word>> pattern; ///< of words that are set
};

class piece_finder {
public:
    explicit piece_finder(const memory_image& of) : image(of) {}

    std::vector<piece> find() {
        if (kvrimage::numbers_in_place(image)) {
            add_words({image.base(), image.last_address()});
            return std::move(pieces);
        }
        // The last address may be the highest of 64 bits.
        for (std::uint64_t left = image.depth(), address = image.base(); left != 0;) {
            const kvrimage::repetition found = image.repetition_at(address);
            const std::uint64_t length = found.last - address + 1;
            if (!image[address]) {
                flush();
            } else if (length >= fewest_repeated && found.period <= length / 2) {
                flush();
                add_pattern({address, found.last}, found.period);
            } else {
                gathered = address_range{gathered ? gathered->first : address, found.last};
            }
            left -= length;
            address += length;
        }
        flush();
        return std::move(pieces);
    }

private:
    void flush() {
        if (gathered) {
            add_words(*gathered);
            gathered.reset();
        }
    }
    void add_words(const address_range& range) {
        try {
            pieces.push_back({range, bytes_of_image(cut_out(image, range), byte_order::big), {}});
        } catch (const std::domain_error&) { // don't-care bits
            add_pattern(range, range.last - range.first + 1);
        }
    }
    void add_pattern(const address_range& range, std::uint64_t period) {
        piece added{range, {}, {}};
        for (std::uint64_t index = 0; index < period; ++index) {
            added.pattern.push_back(image[range.first + index]);
        }
        pieces.push_back(std::move(added));
    }

    const memory_image& image;
    std::vector<piece> pieces;
    std::optional<address_range> gathered;
};

py::tuple state_of(shared_image& self) {
    const memory_image image = self.copy();
    std::vector<piece> pieces;
    {
        const py::gil_scoped_release other_threads_run;
        pieces = piece_finder(image).find();
    }
    py::list all;
    for (const piece& each : pieces) {
        py::object words = py::bytes(each.bytes);
        if (each.bytes.empty()) {
            py::list pattern;
            for (const auto& word : each.pattern) {
                pattern.append(object_of(word));
            }
            words = pattern;
        }
        all.append(py::make_tuple(each.addresses.first, each.addresses.last, words));
    }
    return py::make_tuple(image.width(), image.depth(), image.base(), all);
}

image_pointer restored(const py::tuple& state) {
    const auto width = state[0].cast<std::uint32_t>();
    memory_image image(width, state[1].cast<std::uint64_t>(), state[2].cast<std::uint64_t>());
    for (const py::handle each : state[3]) {
        const auto fields = each.cast<py::tuple>();
        const auto first = fields[0].cast<std::uint64_t>();
        if (py::isinstance<py::bytes>(fields[2])) {
            const auto bytes = fields[2].cast<std::string_view>();
            memory_image part = kvrimage::image_of_bytes(bytes, {width, byte_order::big, first});
            if (first == image.base() && part.depth() == image.depth()) {
                image = std::move(part);
            } else {
                overlay(image, part);
            }
        } else {
            image.fill({first, fields[1].cast<std::uint64_t>()}, words_of(fields[2].cast<py::list>(), width));
        }
    }
    return shared(std::move(image));
}

} // namespace

void add_state(image_class& images) {
    images.def("state", state_of);
    images.def_static("restored", restored);
}

} // namespace kvr_python
