#pragma once

#include "shared_image.h"

#include <pybind11/pybind11.h>

namespace kvr_python {

using image_class = py::class_<shared_image, image_pointer>;

// What the module has, one subject each. The functions have the types that _kvr.pyi says.

void add_words(image_class& images);
void add_numbers(image_class& images);
void add_state(image_class& images);
void add_files(py::module_& module);
void add_operations(py::module_& module);
void add_values(py::module_& module);
void add_classic(py::module_& module);

} // namespace kvr_python
