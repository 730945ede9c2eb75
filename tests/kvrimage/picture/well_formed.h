#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The fault that makes @p xml ill-formed, for the part of XML that drawings use: elements, attributes in
/// double quotes, and text. No value if it is well-formed.
std::optional<std::string> fault_of_xml(std::string_view xml);

/// The values of @p attribute in the elements of @p xml with class @p style, in order.
std::vector<std::string> attributes_of(std::string_view xml, std::string_view style,
                                       std::string_view attribute);

/// The only value of them; "" if there is none.
std::string attribute_of(std::string_view xml, std::string_view style, std::string_view attribute);

/// The texts of the elements "text" with class @p style, in order.
std::vector<std::string> texts_of(std::string_view xml, std::string_view style);

} // namespace kvrimage
