#include "tools/kvrmem/split/manifest.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/word.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::string_view manifest_schema = "kvrmem-split-1";

/// In the order of split_plan::kind.
constexpr std::array<std::string_view, 3> plan_kinds = {"lanes", "banks", "blocks"};

/// In the order of address_unit.
constexpr std::array<std::string_view, 2> unit_names = {"word", "byte"};

/// In the order of byte_order.
constexpr std::array<std::string_view, 2> order_names = {"little", "big"};

std::filesystem::path folder_of(const std::string& path) {
    return path == "-" ? std::filesystem::path() : kvrimage::platform::path_of(path).parent_path();
}

/// The text of @p path with the slash that every system takes.
std::string text_with_slashes(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

[[noreturn]] void refuse_manifest(const std::string& path, std::string_view what) {
    throw tool_error(exit_code::bad_input,
                     fmt::format("{}: error: {}", kvrimage::title_of_input(path), what));
}

/// Reads the members of a document. Each must exist and have the right type.
class manifest_reader {
public:
    manifest_reader(const json_value& read, const std::string& path) : document(read), file(path) {}

    [[nodiscard]] manifest take() const {
        if (!document.is_object() || text("schema") != manifest_schema) {
            refuse_manifest(file, fmt::format("it is not a {}", manifest_schema));
        }
        const auto width = static_cast<std::uint32_t>(number("width", kvrimage::widest_word));
        const std::uint64_t depth = number("depth", kvrimage::deepest_memory);
        const split_plan plan = {kind(), number("n", kvrimage::deepest_memory)};
        manifest found = {plan,
                          width,
                          depth,
                          format(),
                          files(),
                          name_of<kvrimage::address_unit>("address_unit", unit_names),
                          name_of<kvrimage::byte_order>("endian", order_names)};
        const std::uint64_t divided = plan.how == split_plan::kind::lanes ? width : depth;
        if (divided % plan.number != 0) {
            refuse_manifest(file, fmt::format("\"n\": {} is not a divisor of {}", plan.number, divided));
        }
        if (found.files.size() != plan.part_count(width)) {
            refuse_manifest(file, fmt::format("\"files\" has {}, but {} are needed",
                                              counted(found.files.size(), "name"), plan.part_count(width)));
        }
        return found;
    }

private:
    [[nodiscard]] const json_value& member(const char* name) const {
        const auto found = document.find(name);
        if (found == document.end()) {
            refuse_manifest(file, fmt::format("\"{}\" is missing", name));
        }
        return *found;
    }
    [[nodiscard]] std::string text(const char* name) const {
        const json_value& found = member(name);
        return found.is_string() ? found.get<std::string>() : std::string();
    }
    [[nodiscard]] std::uint64_t number(const char* name, std::uint64_t largest) const {
        const json_value& found = member(name);
        const std::uint64_t value = found.is_number_unsigned() ? found.get<std::uint64_t>() : 0;
        if (value == 0 || value > largest) {
            refuse_manifest(file, fmt::format("\"{}\" is not a number from 1 to {}", name, largest));
        }
        return value;
    }
    [[nodiscard]] split_plan::kind kind() const {
        const auto found = std::ranges::find(plan_kinds, text("kind"));
        if (found == plan_kinds.end()) {
            refuse_manifest(file, "\"kind\" is not lanes, banks or blocks");
        }
        return static_cast<split_plan::kind>(found - plan_kinds.begin());
    }
    /// Returns the value of @p Kind with its name in @p names; nothing if the member is missing.
    template <class Kind>
    [[nodiscard]] std::optional<Kind> name_of(const char* name,
                                              const std::array<std::string_view, 2>& names) const {
        if (!document.contains(name)) {
            return std::nullopt;
        }
        const auto found = std::ranges::find(names, text(name));
        if (found == names.end()) {
            refuse_manifest(file, fmt::format("\"{}\" is neither {} nor {}", name, names[0], names[1]));
        }
        return static_cast<Kind>(found - names.begin());
    }
    [[nodiscard]] std::string format() const {
        std::string id = text("format");
        if (kvrimage::format_of_name(id) == nullptr) {
            refuse_manifest(file, "\"format\" is not listed by kvrmem formats");
        }
        return id;
    }
    [[nodiscard]] std::vector<std::string> files() const {
        const json_value& names = member("files");
        std::vector<std::string> paths;
        for (const json_value& name : names) {
            if (!names.is_array() || !name.is_string() || name.get_ref<const std::string&>().empty()) {
                refuse_manifest(file, "\"files\" is not a list of names");
            }
            paths.push_back(
                text_with_slashes(folder_of(file) / kvrimage::platform::path_of(name.get<std::string>())));
        }
        return paths;
    }

    const json_value& document;
    const std::string& file;
};

} // namespace

std::string manifest_text(const manifest& what, const std::string& path) {
    constexpr int indentation = 2;
    json_value names = json_value::array();
    for (const std::string& file : what.files) {
        const std::string name =
            text_with_slashes(kvrimage::platform::path_of(file).lexically_proximate(folder_of(path)));
        if (json_name(name) != name) {
            usage_error(fmt::format("--manifest: the name {} is not UTF-8", kvrimage::title_of_output(name)));
        }
        names.push_back(name);
    }
    json_value document = {
        {"schema", manifest_schema}, {"kind", plan_kinds[static_cast<std::size_t>(what.plan.how)]},
        {"n", what.plan.number},     {"width", what.width},
        {"depth", what.depth},       {"format", what.format}};
    if (what.unit) {
        document["address_unit"] = unit_names[static_cast<std::size_t>(*what.unit)];
    }
    if (what.order) {
        document["endian"] = order_names[static_cast<std::size_t>(*what.order)];
    }
    document["files"] = names;
    return document.dump(indentation) + "\n";
}

manifest read_manifest(const std::string& path) {
    const kvrimage::input_file file(path);
    const json_value document = json_value::parse(file.contents(), nullptr, false);
    return manifest_reader(document, path).take();
}

} // namespace kvrmem
