#pragma once

#include <type_traits>

/// Checks that @p function has exactly the type @p Expected, and makes the linker resolve it.
template <class Expected, class Actual>
void declared(Actual function) {
    static_assert(std::is_same_v<Actual, Expected>, "an exported declaration has changed its type");
    [[maybe_unused]] const volatile Actual address = function;
}
