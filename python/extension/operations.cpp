#include "kvrimage/compare/compare.h"
#include "kvrimage/operations/checksum/checksum.h"
#include "kvrimage/operations/merge.h"
#include "kvrimage/operations/reshape.h"
#include "kvrimage/operations/split.h"
#include "kvrimage/picture/picture.h"
#include "parts.h"
#include "words.h"

#include <cstdint>
#include <map>
#include <optional>
#include <pybind11/stl.h>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kvr_python {

using kvrimage::memory_image;

namespace {

using address_pairs = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

/// What @p names has for @p name.
/// @throws ValueError when it has nothing
template <class Value>
Value value_called(const std::map<std::string, Value>& names, const std::string& what,
                   const std::string& name) {
    const auto found = names.find(name);
    if (found == names.end()) {
        std::string known;
        for (const auto& [each, value] : names) {
            known += known.empty() ? "" : ", ";
            known += "\"" + each + "\"";
        }
        throw py::value_error(what + " is one of " + known + ", not \"" + name + "\"");
    }
    return found->second;
}

py::list images_of(std::vector<memory_image>&& images) {
    py::list made;
    for (memory_image& each : images) {
        made.append(py::cast(shared(std::move(each))));
    }
    return made;
}

/// Copies of images, which may be one object several times.
std::vector<memory_image> copies_of(const py::list& images) {
    std::vector<memory_image> copies;
    for (const py::handle each : images) {
        copies.push_back(each.cast<shared_image&>().copy());
    }
    return copies;
}

image_pointer reshape(shared_image& self, std::uint32_t width, const std::string& order,
                      const py::object& pad) {
    using kvrimage::bit_order;
    static const std::map<std::string, bit_order> orders = {{"low-first", bit_order::low_first},
                                                            {"high-first", bit_order::high_first}};
    const bit_order by = value_called(orders, "order", order);
    const auto pad_word = optional_word_of(pad, width);
    return shared(
        self.at_length([&](const memory_image& image) { return reshaped(image, width, by, pad_word); }));
}

using split_function = std::vector<memory_image> (*)(const memory_image&, std::uint64_t);

std::vector<memory_image> split_lanes(const memory_image& image, std::uint64_t bits) {
    return kvrimage::split_lanes(image, static_cast<std::uint32_t>(bits));
}

py::list split(shared_image& self, const std::string& how, std::uint32_t number) {
    static const std::map<std::string, split_function> ways = {
        {"lanes", split_lanes}, {"banks", kvrimage::split_banks}, {"blocks", kvrimage::split_blocks}};
    const split_function splits = value_called(ways, "the way to split", how);
    return images_of(self.at_length([&](const memory_image& image) { return splits(image, number); }));
}

image_pointer join(const py::list& parts, const std::string& how) {
    using join_function = memory_image (*)(std::span<const memory_image>);
    static const std::map<std::string, join_function> ways = {
        {"lanes", kvrimage::join_lanes}, {"banks", kvrimage::join_banks}, {"blocks", kvrimage::join_blocks}};
    const join_function joins = value_called(ways, "the way to join", how);
    const std::vector<memory_image> copies = copies_of(parts);
    return shared(without_interpreter_lock([&] { return joins(copies); }));
}

/// (image, None), or (None, (first address, last address, number of one memory, number of the other)) where
/// the rule does not allow an overlap.
py::tuple merge(const py::list& parts, const std::string& overlap) {
    using kvrimage::overlap_rule;
    static const std::map<std::string, overlap_rule> rules = {{"refuse", overlap_rule::refuse},
                                                              {"same", overlap_rule::same},
                                                              {"first", overlap_rule::first},
                                                              {"last", overlap_rule::last}};
    const overlap_rule rule = value_called(rules, "overlap", overlap);
    const std::vector<memory_image> copies = copies_of(parts);
    kvrimage::merge_result result = without_interpreter_lock([&] { return merged(copies, rule); });
    if (result.image) {
        return py::make_tuple(py::cast(shared(*std::move(result.image))), py::none());
    }
    for (const kvrimage::merge_overlap& each : result.overlaps) {
        if (rule == overlap_rule::refuse || each.difference) {
            return py::make_tuple(
                py::none(), py::make_tuple(each.addresses.first, each.addresses.last, each.kept, each.other));
        }
    }
    return py::make_tuple(py::none(), py::none()); // the overlap at fault is beyond those that are kept
}

py::object checksum(shared_image& self, const std::string& name, const address_pairs& ranges,
                    const std::string& endian, const py::object& unset) {
    const auto kind = kvrimage::checksum_of_name(name);
    if (!kind) {
        throw py::value_error("there is no checksum \"" + name + "\": see kvr.checksums()");
    }
    kvrimage::checksum_options options = {{}, order_of(endian), std::nullopt};
    for (const auto& [first, last] : ranges) {
        options.ranges.push_back({first, last});
    }
    options.unset = optional_word_of(unset, self.width());
    return object_of(
        self.at_length([&](const memory_image& image) { return checksum_of(image, *kind, options); }));
}

py::list checksums() {
    py::list names;
    for (const kvrimage::named_checksum& each : kvrimage::named_checksums()) {
        names.append(each.name);
    }
    return names;
}

/// (first address, last address, word of the left one, word of the right one) for each difference
py::list differences(shared_image& left, shared_image& right) {
    std::vector<kvrimage::difference> found;
    if (&left != &right) {
        shared_image::of_both(left, right, [&found](const auto& one, const auto& other) {
            for_each_difference(one, other, [&found](const auto& each) { found.push_back(each); });
        });
    }
    py::list made;
    for (const kvrimage::difference& each : found) {
        made.append(py::make_tuple(each.addresses.first, each.addresses.last, object_of(each.left),
                                   object_of(each.right)));
    }
    return made;
}

using address_pair = std::optional<std::pair<std::uint64_t, std::uint64_t>>;

std::optional<kvrimage::address_range> range_of(const address_pair& range) {
    return range ? std::optional(kvrimage::address_range{range->first, range->second}) : std::nullopt;
}

std::string draw(shared_image& self, const address_pair& range, bool is_signed, const std::string& name,
                 const std::string& format_title) {
    kvrimage::picture_options options;
    options.range = range_of(range);
    options.is_signed = is_signed;
    options.name = name;
    options.format_title = format_title;
    return self.at_length([&](const memory_image& image) { return draw_svg(image, options); });
}

/// The differences of two memories; @p names and @p format_titles are those of both.
std::string draw_both(shared_image& left, shared_image& right, const address_pair& range,
                      const std::pair<std::string, std::string>& names,
                      const std::pair<std::string, std::string>& format_titles) {
    const kvrimage::difference_options options{
        range_of(range), {names.first, format_titles.first}, {names.second, format_titles.second}};
    if (&left == &right) {
        return left.at_length(
            [&](const memory_image& image) { return draw_difference_svg(image, image, options); });
    }
    std::string drawn;
    shared_image::of_both(left, right, [&](const auto& one, const auto& other) {
        drawn = draw_difference_svg(one, other, options);
    });
    return drawn;
}

} // namespace

void add_operations(py::module_& module) {
    module.def("reshape", reshape);
    module.def("split", split);
    module.def("join", join);
    module.def("merge", merge);
    module.def("checksum", checksum);
    module.def("checksums", checksums);
    module.def("differences", differences);
    module.def("draw", draw);
    module.def("draw_both", draw_both);
}

} // namespace kvr_python
