#include "kvr/memory/mif/mif_content.h"

#include "kvr/numeric/scanned_number.h"

#include <algorithm>

namespace kvr {

namespace {

text_fault fault_at(fault_code code, const text_span& span) {
    return {code, span.begin, span.end - span.begin};
}

text_fault whole_text(fault_code code, const mif_content& content) {
    return {code, 0, content.text.size()};
}

/// Parses @p token as an address. Returns true if it is below the depth.
bool read_address(const mif_memory& memory, std::string_view token, std::uint32_t& address) {
    const scanned_number number = scan_number(token, radix_base(memory.address_radix));
    address = number.magnitude;
    return number.is_address() && address < memory.number_of_words;
}

/// Finds the first ":" and the first value after it. Returns false if one is missing.
bool find_data(mif_content& content, std::size_t& colon) {
    colon = content.text.find(':');
    if (colon == std::string_view::npos) {
        return false;
    }
    content.data = find_token(content.text, colon + 1).begin;
    return content.data != std::string_view::npos;
}

/// Finds the parts of "[<first>..<last>] : <values>". Returns true if all are present in this order.
bool find_range_parts(mif_content& content) {
    const std::string_view text = content.text;
    content.first_address = find_token(text, 0);
    if (!content.first_address.found() || content.first_address.begin == 0) {
        return false;
    }
    const std::size_t dot = text.find('.', content.first_address.end);
    if (dot == std::string_view::npos) {
        return false;
    }
    content.last_address = find_token(text, dot + 1);
    const std::size_t bracket = text.find(']');
    std::size_t colon = 0;
    // The position of a part that is missing is the highest of all.
    return find_data(content, colon) && content.last_address.end <= bracket && bracket < colon;
}

} // namespace

line_place mif_content::place(std::size_t offset) const {
    const auto after = std::find_if(pieces.begin(), pieces.end(),
                                    [offset](const line_piece& piece) { return piece.offset > offset; });
    const line_piece& piece = *(after - 1);
    return {piece.line, static_cast<std::uint32_t>(offset - piece.offset + 1)};
}

std::optional<text_fault> parse_content_line(mif_memory& memory, mif_content& content) {
    return content.text.find('[') != std::string_view::npos ? parse_range(memory, content)
                                                            : parse_single_address(memory, content);
}

std::optional<text_fault> parse_single_address(mif_memory& memory, mif_content& content) {
    content.first_address = find_token(content.text, 0);
    content.last_address = {};
    std::size_t colon = 0;
    if (!content.first_address.found() || !find_data(content, colon) || content.first_address.end > colon) {
        return whole_text(fault_code::content_syntax, content);
    }
    if (!read_address(memory, content.first_address.in(content.text), content.first)) {
        return fault_at(fault_code::address_out_of_range, content.first_address);
    }
    const std::uint64_t last =
        std::uint64_t{content.first} + count_tokens(content.text.substr(content.data)) - 1;
    if (last >= memory.number_of_words) {
        return fault_at(fault_code::address_out_of_range, content.first_address);
    }
    content.last = static_cast<std::uint32_t>(last);
    return fill_addresses(memory, content);
}

std::optional<text_fault> parse_range(mif_memory& memory, mif_content& content) {
    if (!find_range_parts(content)) {
        return whole_text(fault_code::range_syntax, content);
    }
    if (!read_address(memory, content.first_address.in(content.text), content.first)) {
        return fault_at(fault_code::address_out_of_range, content.first_address);
    }
    if (!read_address(memory, content.last_address.in(content.text), content.last)) {
        return fault_at(fault_code::address_out_of_range, content.last_address);
    }
    if (content.first >= content.last) {
        return text_fault{fault_code::range_not_ascending, content.first_address.begin,
                          content.last_address.end - content.first_address.begin};
    }
    return fill_addresses(memory, content);
}

std::optional<text_fault> fill_addresses(mif_memory& memory, mif_content& content) {
    split_values(content.text.substr(content.data), content.values);
    if (content.values.empty()) {
        return whole_text(fault_code::content_syntax, content);
    }
    std::uint64_t last = content.last;
    if (content.first == content.last) {
        last += content.values.size() - 1;
        if (last == content.first && !memory.address_set.insert(content.first)) {
            return whole_text(fault_code::address_set_twice, content);
        }
    }
    if (last >= memory.number_of_words) {
        return whole_text(fault_code::address_out_of_range, content);
    }
    content.last = static_cast<std::uint32_t>(last);
    if (content.first == content.last) {
        memory.data_words.set(content.first, content.values.front());
    } else if (content.first < content.last) {
        memory.data_words.fill(content.first, content.last, content.values);
    }
    return std::nullopt;
}

} // namespace kvr
