#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <pybind11/pybind11.h>
#include <utility>

namespace kvr_python {

namespace py = pybind11;

/// Calls @p work without the interpreter lock.
template <class Work>
auto without_interpreter_lock(Work&& work) {
    const py::gil_scoped_release other_threads_run;
    return work();
}

/// A memory image that several threads of Python may have, each operation on it as a whole: what takes long
/// gives the interpreter lock away. Nobody waits for the lock of an image with that of the interpreter in
/// hand.
class shared_image {
public:
    explicit shared_image(kvrimage::memory_image&& of) : word_width(of.width()), image(std::move(of)) {}

    /// Bits of a word, which never change.
    [[nodiscard]] std::uint32_t width() const noexcept { return word_width; }

    /// Calls @p work with the image, without the interpreter lock.
    template <class Work>
    auto at_length(Work&& work) {
        const py::gil_scoped_release other_threads_run;
        const std::scoped_lock only(mutex);
        return work(image);
    }

    /// The same with the interpreter lock, for short work. @p work must not call Python or make objects of
    /// it: that may run code of the user, which may use this image, and the lock is not recursive.
    template <class Work>
    auto at_once(Work&& work) {
        std::unique_lock only(mutex, std::try_to_lock);
        if (!only.owns_lock()) {
            const py::gil_scoped_release other_threads_run;
            only.lock();
        }
        return work(image);
    }

    /// Calls @p work with two images without the interpreter lock. They must be different objects.
    template <class Work>
    static auto of_both(shared_image& left, shared_image& right, Work&& work) {
        const py::gil_scoped_release other_threads_run;
        const std::scoped_lock only(left.mutex, right.mutex);
        return work(left.image, right.image);
    }

    /// Another object with the same words.
    [[nodiscard]] kvrimage::memory_image copy() {
        return at_length([](const kvrimage::memory_image& of) { return of; });
    }

private:
    const std::uint32_t word_width;
    std::mutex mutex;
    kvrimage::memory_image image;
};

using image_pointer = std::unique_ptr<shared_image>;

[[nodiscard]] inline image_pointer shared(kvrimage::memory_image&& image) {
    return std::make_unique<shared_image>(std::move(image));
}

} // namespace kvr_python
