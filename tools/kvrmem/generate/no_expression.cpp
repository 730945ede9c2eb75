#include "tools/kvrmem/generate/expression.h"

// A build without the interpreter: no expression is valid.

struct lua_State {};

namespace kvrmem {

void expression::closer::operator()(lua_State* /*state*/) const noexcept {}

expression::expression(const std::string& /*text*/, std::uint64_t /*depth*/, std::uint32_t /*width*/) {
    throw expression_error("this kvrmem was built without Lua, which computes formulas");
}

expression::~expression() = default;

kvrimage::generated_number expression::value_at(std::uint64_t /*address*/) {
    return std::int64_t{0};
}

} // namespace kvrmem
