#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/formats/edit.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "parts.h"
#include "words.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <pybind11/stl.h>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace kvr_python {

using kvrimage::diagnostic;
using kvrimage::diagnostic_class;
using kvrimage::format;
using kvrimage::memory_image;
using kvrimage::read_options;
using kvrimage::read_result;

namespace {

// ---- Options: a dictionary, whose keys are names of fields ----

template <class Value>
std::optional<Value> optional_value(const py::dict& options, const char* name) {
    if (!options.contains(name) || options[name].is_none()) {
        return std::nullopt;
    }
    return options[name].cast<Value>();
}

const format* format_called(const std::string& name) {
    const format* const found = kvrimage::format_of_name(name);
    if (found == nullptr) {
        throw py::value_error("there is no format \"" + name + "\": see kvr.formats()");
    }
    return found;
}

/// Of the options that reading and writing share.
template <class Options>
void take_common(const py::dict& options, Options& to) {
    if (const auto name = optional_value<std::string>(options, "format")) {
        to.as = format_called(*name);
    }
    if (const auto endian = optional_value<std::string>(options, "endian")) {
        to.order = order_of(*endian);
    }
    to.file_name = optional_value<std::string>(options, "file_name").value_or("");
    using pairs = std::vector<std::pair<std::string, std::string>>;
    for (auto& [name, value] : optional_value<pairs>(options, "choices").value_or(pairs())) {
        to.choices.push_back({std::move(name), std::move(value)});
    }
}

read_options read_options_of(const py::dict& options) {
    read_options made;
    take_common(options, made);
    made.width = optional_value<std::uint32_t>(options, "width");
    made.depth = optional_value<std::uint64_t>(options, "depth");
    made.base = optional_value<std::uint64_t>(options, "base");
    made.pad = optional_value<std::uint8_t>(options, "pad");
    if (const auto unit = optional_value<std::string>(options, "unit")) {
        if (*unit != "word" && *unit != "byte") {
            throw py::value_error("unit is \"word\" or \"byte\", not \"" + *unit + "\"");
        }
        made.unit = *unit == "word" ? kvrimage::address_unit::word : kvrimage::address_unit::byte;
    }
    return made;
}

kvrimage::write_options write_options_of(const py::dict& options) {
    kvrimage::write_options made;
    take_common(options, made);
    if (const auto name = optional_value<std::string>(options, "address_radix")) {
        made.address_radix = radix_called(*name);
    }
    if (const auto name = optional_value<std::string>(options, "data_radix")) {
        made.data_radix = radix_called(*name);
    }
    made.runs = optional_value<bool>(options, "runs").value_or(true);
    return made;
}

// ---- Diagnostics ----

/// Texts quote files, which may have any bytes.
py::str str_of(std::string_view text) {
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "backslashreplace"));
}

const char* name_of(diagnostic_class level) {
    switch (level) {
    case diagnostic_class::broken:
        return "broken";
    case diagnostic_class::consumer:
        return "consumer";
    case diagnostic_class::suspect:
        break;
    }
    return "suspect";
}

py::list edits_of(std::span<const kvrimage::text_edit> edits) {
    py::list made;
    for (const kvrimage::text_edit& each : edits) {
        made.append(py::make_tuple(each.offset, each.length, py::bytes(each.replacement)));
    }
    return made;
}

/// The fields of kvr.Diagnostic, in their order.
py::tuple tuple_of(const diagnostic& found, const std::string& file_name) {
    const kvrimage::diagnostic_kind& kind = about(found.id);
    std::string text = diagnostic_text(found, file_name.empty() ? "<contents>" : file_name, "");
    text.erase(text.find_last_not_of('\n') + 1);
    return py::make_tuple(kind.code, kind.level == diagnostic_class::suspect ? "warning" : "error",
                          found.where.line, found.where.column, found.where.length, str_of(found.message),
                          str_of(found.hint), py::tuple(edits_of(found.fix)), found.where.offset,
                          name_of(kind.level), str_of(found.consumer), found.count, found.address,
                          str_of(found.repair), str_of(text));
}

py::list diagnostics_of(const std::vector<diagnostic>& all, const std::string& file_name) {
    py::list made;
    for (const diagnostic& each : all) {
        made.append(tuple_of(each, file_name));
    }
    return made;
}

// ---- Reading and checking ----

const char* name_of(kvrimage::address_unit unit) {
    return unit == kvrimage::address_unit::byte ? "byte" : "word";
}

/// What the file says beside its words, as texts by name.
py::dict facts_of(const kvrimage::file_facts& facts) {
    py::dict made;
    if (facts.address_radix) {
        made["address radix"] = title_of(*facts.address_radix);
    }
    if (facts.data_radix) {
        made["data radix"] = title_of(*facts.data_radix);
    }
    if (facts.unit) {
        made["address unit"] = name_of(*facts.unit);
    }
    for (const kvrimage::named_fact& fact : facts.more) {
        made[str_of(fact.name)] = str_of(fact.value);
    }
    return made;
}

/// (image or None, name of the format or None, facts, diagnostics)
py::tuple tuple_of(read_result&& result, const std::string& file_name) {
    py::object image = py::none();
    if (result.image) {
        image = py::cast(shared(*std::move(result.image)));
    }
    py::object format_name = py::none();
    if (result.facts.as != nullptr) {
        format_name = py::str(result.facts.as->id.data(), result.facts.as->id.size());
    }
    return py::make_tuple(image, format_name, facts_of(result.facts),
                          diagnostics_of(result.diagnostics, file_name));
}

py::tuple read_file(const std::string& path, const py::dict& options) {
    const read_options read = read_options_of(options);
    return tuple_of(without_interpreter_lock([&] { return kvrimage::read(path, read); }), read.file_name);
}

/// @param contents stay as they are as long as there is a reference: bytes never change
py::tuple parse(const py::bytes& contents, const py::dict& options) {
    const read_options read = read_options_of(options);
    const auto text = contents.cast<std::string_view>();
    return tuple_of(without_interpreter_lock([&] { return kvrimage::parse(text, read); }), read.file_name);
}

py::tuple check(const py::bytes& contents, const py::dict& options, std::vector<std::string> consumers) {
    const kvrimage::check_options with = {read_options_of(options), std::move(consumers)};
    const auto text = contents.cast<std::string_view>();
    return tuple_of(without_interpreter_lock([&] { return kvrimage::check(text, with); }),
                    with.read.file_name);
}

// ---- Writing and editing ----

/// What is in the way of writing; none where @p write was called.
template <class Write>
py::list write_if_possible(shared_image& self, const py::dict& options, Write&& write) {
    const kvrimage::write_options with = write_options_of(options);
    const auto obstacles = self.at_length([&](const memory_image& image) {
        std::vector<diagnostic> found = can_write(image, with);
        if (found.empty()) {
            write(image, with);
        }
        return found;
    });
    return diagnostics_of(obstacles, with.file_name);
}

py::list write_file(shared_image& self, const std::string& path, const py::dict& options) {
    return write_if_possible(self, options, [&path](const memory_image& image, const auto& with) {
        kvrimage::write(image, path, with);
    });
}

py::tuple to_text(shared_image& self, const py::dict& options) {
    std::string text;
    const py::list obstacles =
        write_if_possible(self, options, [&text](const memory_image& image, const auto& with) {
            text = kvrimage::to_text(image, with);
        });
    return py::make_tuple(py::bytes(text), obstacles);
}

/// Words for addresses, as Python has them.
using new_words = std::vector<std::tuple<std::uint64_t, std::uint64_t, py::list>>;

/// (contents with the new words, diagnostics of what is in the way)
py::tuple edit(const py::bytes& contents, const new_words& words, std::uint32_t width,
               const py::dict& options) {
    std::vector<kvrimage::assignment> assignments;
    for (const auto& [first, last, pattern] : words) {
        assignments.push_back({{first, last}, words_of(pattern, width)});
    }
    const read_options read = read_options_of(options);
    const auto old = contents.cast<std::string>();
    std::vector<diagnostic> obstacles;
    const std::string edited = without_interpreter_lock([&] {
        kvrimage::edit_result result = kvrimage::edit(old, assignments, read);
        obstacles = std::move(result.diagnostics);
        return with_edits(old, result.edits);
    });
    return py::make_tuple(py::bytes(edited), diagnostics_of(obstacles, read.file_name));
}

// ---- The registry ----

py::list choices_of(std::span<const kvrimage::choice_kind> kinds) {
    py::list made;
    for (const kvrimage::choice_kind& kind : kinds) {
        made.append(py::make_tuple(kind.name, kind.operand, kind.values, kind.description));
    }
    return made;
}

/// The fields of kvr.Format, in their order.
py::list formats() {
    py::list made;
    for (const format* each : kvrimage::formats()) {
        py::list extensions;
        for (const std::string_view extension : each->extensions) {
            extensions.append(extension);
        }
        made.append(py::make_tuple(each->id, each->title, py::tuple(extensions), each->read != nullptr,
                                   each->write != nullptr, each->edit != nullptr, each->states_width,
                                   each->holds_unset, each->holds_dont_care, choices_of(each->read_choices),
                                   choices_of(each->write_choices)));
    }
    return made;
}

/// The name of the format that is written under the name @p path; None when its extension says none.
std::optional<std::string_view> format_of_path(const std::string& path) {
    const format* const found = kvrimage::format_of_path(path);
    return found != nullptr ? std::optional(found->id) : std::nullopt;
}

} // namespace

void add_files(py::module_& module) {
    module.def("read", read_file);
    module.def("parse", parse);
    module.def("check", check);
    module.def("write", write_file);
    module.def("to_text", to_text);
    module.def("edit", edit);
    module.def("write_contents", [](const py::bytes& contents, const std::string& path) {
        const auto text = contents.cast<std::string_view>();
        without_interpreter_lock([&] { kvrimage::write_contents(text, path); });
    });
    module.def("formats", formats);
    module.def("format_of_path", format_of_path);
}

} // namespace kvr_python
