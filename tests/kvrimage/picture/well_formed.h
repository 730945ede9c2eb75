#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What makes @p xml ill-formed, as far as drawings use XML: elements, attributes in double quotes, and text.
/// Nothing: it is well-formed.
std::optional<std::string> fault_of_xml(std::string_view xml);

/// The values of @p attribute in the elements of @p xml with class @p style, in order.
std::vector<std::string> attributes_of(std::string_view xml, std::string_view style,
                                       std::string_view attribute);

/// The only one of them, "" for none.
std::string attribute_of(std::string_view xml, std::string_view style, std::string_view attribute);

/// The texts of the elements "text" with class @p style, in order.
std::vector<std::string> texts_of(std::string_view xml, std::string_view style);

} // namespace kvrimage
