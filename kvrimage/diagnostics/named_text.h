#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kvrimage {

/// Text or a number to insert into a message. Text is quoted unescaped and cut after `longest` bytes.
class named_text {
public:
    static constexpr std::size_t longest = 64;

    named_text(std::string_view text);
    named_text(const char* text) : named_text(std::string_view(text)) {}
    named_text(const std::string& text) : named_text(std::string_view(text)) {}
    named_text(std::integral auto number) : shown(std::to_string(number)) {}

    [[nodiscard]] const std::string& text() const noexcept { return shown; }

private:
    std::string shown;
};

/// Text of the program itself, such as the {advice} of a hint. Never cut.
class whole_text {
public:
    whole_text(std::string_view text) : shown(text) {}
    whole_text(const char* text) : shown(text) {}
    whole_text(std::string text) : shown(std::move(text)) {}

    [[nodiscard]] const std::string& text() const noexcept { return shown; }

private:
    std::string shown;
};

} // namespace kvrimage
