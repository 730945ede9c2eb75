#include "parts.h"

#include <cerrno>
#include <exception>
#include <system_error>

namespace {

namespace py = pybind11;

/// OSError, of the subclass that its number says. The library's own sentence stands for a reason that only it
/// has: a line that is too long.
void raise_os_error(const std::system_error& error) {
    const int number = error.code().value();
    const py::str text(number == EFBIG ? std::string(error.what()) : error.code().message());
    PyErr_SetObject(PyExc_OSError, py::make_tuple(number, text).ptr());
}

} // namespace

PYBIND11_MODULE(_kvr, module) {
    module.doc() = "What the package kvr takes from the library kvrimage. For the package alone.";
    // Other extension modules share the other kind of translators.
    py::register_local_exception_translator([](std::exception_ptr error) {
        try {
            if (error) {
                std::rethrow_exception(error);
            }
        } catch (const std::system_error& found) {
            raise_os_error(found);
        }
    });
    kvr_python::image_class images(module, "Image");
    kvr_python::add_words(images);
    kvr_python::add_numbers(images);
    kvr_python::add_state(images);
    kvr_python::add_files(module);
    kvr_python::add_operations(module);
    kvr_python::add_values(module);
    kvr_python::add_classic(module);
}
