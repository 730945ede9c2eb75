#include "kvrimage/image/image_part.h"
#include "parts.h"
#include "words.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace kvr_python {

using kvrimage::address_range;
using kvrimage::memory_image;

namespace {

[[noreturn]] void throw_index_error(py::handle index, const address_range& addresses) {
    PyErr_SetObject(PyExc_IndexError, py::str("index {}: the memory has the addresses {} to {}")
                                          .format(index, addresses.first, addresses.last)
                                          .ptr());
    throw py::error_already_set();
}

/// An index of Python: an address, or the place of a word counted from the end.
struct index_number {
    bool is_from_end;
    std::uint64_t number; ///< the address; or 0 for the last word, 1 for the one before it
};

/// Nothing for a number that no memory has as an index.
std::optional<index_number> number_of(py::handle index) {
    const auto number = py::reinterpret_steal<py::int_>(PyNumber_Index(index.ptr()));
    if (!number) {
        throw py::error_already_set();
    }
    int is_beyond = 0;
    const long long small = PyLong_AsLongLongAndOverflow(number.ptr(), &is_beyond);
    if (is_beyond == 0) {
        return small < 0 ? index_number{true, static_cast<std::uint64_t>(-(small + 1))}
                         : index_number{false, static_cast<std::uint64_t>(small)};
    }
    const std::uint64_t address = is_beyond > 0 ? PyLong_AsUnsignedLongLong(number.ptr()) : 0;
    if (is_beyond < 0 || PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        return std::nullopt;
    }
    return index_number{false, address};
}

/// Nothing for an address that @p image does not have.
std::optional<std::uint64_t> address_of(const index_number& index, const memory_image& image) {
    if (index.is_from_end) {
        return index.number < image.depth() ? std::optional(image.last_address() - index.number)
                                            : std::nullopt;
    }
    return index.number >= image.base() && index.number <= image.last_address() ? std::optional(index.number)
                                                                                : std::nullopt;
}

/// Calls @p work with the image and the address that @p number means.
/// @throws IndexError, with @p index, when the image has no such address
template <class Work>
void at_address(shared_image& self, py::handle index, const std::optional<index_number>& number,
                Work&& work) {
    // The text of the error is made without the lock: it may call the __format__ of the index.
    const auto addresses = self.at_once([&](memory_image& image) -> std::optional<address_range> {
        const auto address = number ? address_of(*number, image) : std::nullopt;
        if (!address) {
            return address_range{image.base(), image.last_address()};
        }
        work(image, *address);
        return std::nullopt;
    });
    if (addresses) {
        throw_index_error(index, *addresses);
    }
}

py::object get(shared_image& self, const py::object& index) {
    std::optional<kvrimage::word> found;
    at_address(self, index, number_of(index),
               [&](const memory_image& image, std::uint64_t address) { found = image[address]; });
    return object_of(found);
}

void set(shared_image& self, const py::object& index, const py::object& value) {
    const auto number = number_of(index);
    const auto word = optional_word_of(value, self.width());
    at_address(self, index, number, [&](memory_image& image, std::uint64_t address) {
        if (word) {
            image.set(address, *word);
        } else {
            image.unset({address, address});
        }
    });
}

void fill(shared_image& self, std::uint64_t first, std::uint64_t last, const py::list& pattern) {
    const auto words = words_of(pattern, self.width());
    self.at_length([&](memory_image& image) { image.fill({first, last}, words); });
}

/// The words of some addresses as a list.
py::list words_between(shared_image& self, std::uint64_t first, std::uint64_t last) {
    const auto runs = self.at_once([&](const memory_image& image) {
        std::vector<kvrimage::run> found;
        for (const kvrimage::run& each : image.runs({first, last})) {
            found.push_back(each);
        }
        return found;
    });
    py::list words;
    for (const kvrimage::run& each : runs) {
        const py::object word = object_of(each.value);
        for (std::uint64_t left = each.addresses.last - each.addresses.first + 1; left != 0; --left) {
            words.append(word);
        }
    }
    return words;
}

py::tuple run_at(shared_image& self, std::uint64_t address) {
    const kvrimage::run found = self.at_once([&](const memory_image& image) {
        return *image.runs({address, image.last_address()}).begin();
    });
    return py::make_tuple(found.addresses.last, object_of(found.value));
}

bool equal(shared_image& left, shared_image& right) {
    return &left == &right || shared_image::of_both(left, right, [](const auto& one, const auto& other) {
        return one == other;
    });
}

/// Gives the addresses of @p part its words; those that it does not set are not set afterwards. Other threads
/// see all of it or nothing.
/// @throws ValueError, IndexError as overlay(), with the words unchanged
void replace(shared_image& self, shared_image& part) {
    if (&self == &part) {
        return;
    }
    shared_image::of_both(self, part, [](memory_image& image, const memory_image& words) {
        overlay(image, words); // checks width and addresses before it changes a word
        if (words.count_set() == words.depth()) {
            return;
        }
        for (const kvrimage::run& each : words.runs()) {
            if (!each.value) {
                image.unset(each.addresses);
            }
        }
    });
}

} // namespace

void add_words(image_class& images) {
    images.def(py::init([](std::uint32_t width, std::uint64_t depth, std::uint64_t base) {
        return shared(memory_image(width, depth, base));
    }));
    const auto constant = [&images](const char* name, auto member) {
        images.def_property_readonly(name, [member](shared_image& self) {
            return self.at_once([member](const memory_image& image) { return (image.*member)(); });
        });
    };
    images.def_property_readonly("width", &shared_image::width);
    constant("depth", &memory_image::depth);
    constant("base", &memory_image::base);
    images.def("get", get);
    images.def("set", set);
    images.def("fill", fill);
    images.def("words", words_between);
    images.def("run_at", run_at);
    images.def("equals", equal);
    images.def("copy", [](shared_image& self) { return shared(self.copy()); });
    images.def("replace", replace);
    images.def("unset", [](shared_image& self, std::uint64_t first, std::uint64_t last) {
        self.at_length([&](memory_image& image) { image.unset({first, last}); });
    });
    images.def("cut_out", [](shared_image& self, std::uint64_t first, std::uint64_t last) {
        return shared(self.at_length([&](const memory_image& image) {
            return kvrimage::cut_out(image, {first, last});
        }));
    });
    images.def("count_set", [](shared_image& self) {
        return self.at_length([](const memory_image& image) { return image.count_set(); });
    });
    images.def("resize", [](shared_image& self, std::uint64_t depth) {
        self.at_length([&](memory_image& image) { image.resize(depth); });
    });
}

} // namespace kvr_python
