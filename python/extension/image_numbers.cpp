#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/image/numbers.h"
#include "parts.h"
#include "words.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace kvr_python {

using kvrimage::byte_order;
using kvrimage::memory_image;

namespace {

std::uint64_t depth_of(shared_image& self) {
    return self.at_once([](const memory_image& image) { return image.depth(); });
}

/// An array with one element a word, which @p copy sets. The array is allocated without the lock of the
/// image, so another thread may resize the image before the copy; then the next array has the new size.
template <class Element, class Copy>
py::array array_of(shared_image& self, Copy&& copy) {
    while (true) {
        py::array_t<Element> elements(static_cast<py::ssize_t>(depth_of(self)));
        const std::span<Element> out(elements.mutable_data(), static_cast<std::size_t>(elements.size()));
        const bool is_copied = self.at_length([&](const memory_image& image) {
            if (image.depth() != out.size()) {
                return false;
            }
            copy(image, out);
            return true;
        });
        if (is_copied) {
            return elements;
        }
    }
}

template <class Number>
py::array numbers_of_type(shared_image& self, std::uint64_t unset) {
    return array_of<Number>(self, [unset](const memory_image& image, std::span<Number> out) {
        copy_numbers(image, image.base(), out, unset);
    });
}

/// The words, of up to 64 bits, as an array of the smallest unsigned integers that hold them.
py::array numbers(shared_image& self, std::uint64_t unset) {
    const std::uint32_t width = self.width();
    if (width <= 8) {
        return numbers_of_type<std::uint8_t>(self, unset);
    }
    if (width <= 16) {
        return numbers_of_type<std::uint16_t>(self, unset);
    }
    return width <= 32 ? numbers_of_type<std::uint32_t>(self, unset)
                       : numbers_of_type<std::uint64_t>(self, unset);
}

/// An array that refers to the memory's own bytes, which outlive it; nothing where there are none, or where
/// their order is not that of the machine.
std::optional<py::array> view(shared_image& self) {
    auto found = self.at_once([](const memory_image& image) { return kvrimage::numbers_in_place(image); });
    const bool is_little = py::module_::import("sys").attr("byteorder").cast<std::string>() == "little";
    if (!found || (found->bytes > 1 && (found->order == byte_order::little) != is_little)) {
        return std::nullopt;
    }
    using keeper_pointer = std::shared_ptr<const void>;
    auto keeper = std::make_unique<keeper_pointer>(std::move(found->keeper));
    const py::capsule owner(keeper.get(), [](void* held) { delete static_cast<keeper_pointer*>(held); });
    static_cast<void>(keeper.release());
    py::array numbers(py::dtype("u" + std::to_string(found->bytes)), {static_cast<py::ssize_t>(found->count)},
                      {}, found->numbers, owner);
    numbers.attr("setflags")(py::arg("write") = false);
    return numbers;
}

py::array is_set(shared_image& self) {
    return array_of<bool>(self,
                          [](const memory_image& image, std::span<bool> out) { copy_is_set(image, out); });
}

py::bytes to_bytes(shared_image& self, const std::string& endian, const py::object& fill) {
    const byte_order order = order_of(endian);
    const auto unset = optional_word_of(fill, self.width());
    return self.at_length([&](const memory_image& image) { return bytes_of_image(image, order, unset); });
}

/// The bytes of an object, which cannot be resized as long as this exists.
class contiguous_bytes {
public:
    /// @throws BufferError when the bytes of @p object have gaps or another order
    explicit contiguous_bytes(const py::buffer& object) {
        if (PyObject_GetBuffer(object.ptr(), &view, PyBUF_SIMPLE) != 0) {
            throw py::error_already_set();
        }
    }
    contiguous_bytes(const contiguous_bytes&) = delete;
    contiguous_bytes& operator=(const contiguous_bytes&) = delete;
    ~contiguous_bytes() { PyBuffer_Release(&view); }

    [[nodiscard]] std::string_view all() const noexcept {
        return {static_cast<const char*>(view.buf), static_cast<std::size_t>(view.len)};
    }

private:
    Py_buffer view = {};
};

image_pointer from_bytes(const py::buffer& bytes, std::uint32_t width, const std::string& endian,
                         std::uint64_t base, std::optional<std::uint8_t> pad) {
    const kvrimage::byte_options options = {width, order_of(endian), base, pad};
    const contiguous_bytes held(bytes);
    return without_interpreter_lock([&] { return shared(kvrimage::image_of_bytes(held.all(), options)); });
}

} // namespace

void add_numbers(image_class& images) {
    images.def("numbers", numbers);
    images.def("view", view);
    images.def("is_set", is_set);
    images.def("to_bytes", to_bytes);
    images.def_static("from_bytes", from_bytes);
}

} // namespace kvr_python
