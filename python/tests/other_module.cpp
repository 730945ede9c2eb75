#include <pybind11/pybind11.h>
#include <system_error>

// An extension module that has nothing to do with the package but shares the registries of pybind11 with it.

PYBIND11_MODULE(kvr_tests_other_module, module) {
    module.def("fail", [] {
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory), "of its own");
    });
}
