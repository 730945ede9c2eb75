#include "tools/kvrmem/generate/expression.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <lua.hpp>
#include <new>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::size_t most_bytes = std::size_t{16} << 20U;
/// Limits the bytes that an operator copies or compares in one step. Expressions need no long strings.
constexpr std::size_t most_bytes_of_text = std::size_t{1} << 10U;

constexpr std::uint64_t steps_of_all_words = 64'000'000;
constexpr std::uint64_t steps_of_each_word = 200;
/// Steps between two calls of the counting hook.
constexpr int hook_interval = 1000;
/// A single step may copy memory in proportion to the memory in use, such as the arguments of a call. It
/// counts once more for each such block.
constexpr std::size_t bytes_that_slow_steps = std::size_t{256} << 10U;
/// Allocated bytes that count as one step.
constexpr std::size_t bytes_of_step = 8;

constexpr const char* chunk_name = "=expression";
constexpr std::string_view place_of_fault = "expression:1: ";

/// Returns whether the interpreter may have a block of @p size bytes, of which it already has @p before.
/// @p kind is the kind of a new object.
bool may_allocate(expression_limits& limits, std::size_t before, std::size_t size, std::size_t kind) {
    if (size <= before) {
        return true; // Lua requires that shrinking succeeds
    }
    const bool is_long_text = kind == LUA_TSTRING && size > most_bytes_of_text;
    return !is_long_text && limits.used_bytes - before + size <= most_bytes &&
           limits.spend(size / bytes_of_step);
}

/// The allocator of the interpreter. @p context points to its limits. Returns null at a limit.
void* allocate(void* context, void* old, std::size_t old_size, std::size_t size) {
    auto& limits = *static_cast<expression_limits*>(context);
    const std::size_t before = old != nullptr ? old_size : 0; // else old_size is a kind of object
    if (size == 0) {
        std::free(old); // NOLINT(cppcoreguidelines-no-malloc): required by a C interpreter
        limits.used_bytes -= before;
        return nullptr;
    }
    if (!may_allocate(limits, before, size, old != nullptr ? LUA_TNIL : old_size)) {
        return nullptr;
    }
    void* const found = std::realloc(old, size); // NOLINT(cppcoreguidelines-no-malloc)
    if (found != nullptr) {
        limits.used_bytes = limits.used_bytes - before + size;
    }
    return found;
}

void count_steps(lua_State* state, lua_Debug* /*where*/) {
    void* context = nullptr;
    lua_getallocf(state, &context);
    auto& limits = *static_cast<expression_limits*>(context);
    if (!limits.spend(hook_interval * (1 + limits.used_bytes / bytes_that_slow_steps))) {
        luaL_error(state, "no steps are left");
    }
}

/// A function missing from Lua's library.
struct added_function {
    const char* name;
    double (*value)(double);
};

constexpr std::array<added_function, 8> added_functions = {{
    {"round", [](double x) { return std::round(x); }},
    {"trunc", [](double x) { return std::trunc(x); }},
    {"cbrt", [](double x) { return std::cbrt(x); }},
    {"log2", [](double x) { return std::log2(x); }},
    {"log10", [](double x) { return std::log10(x); }},
    {"sinh", [](double x) { return std::sinh(x); }},
    {"cosh", [](double x) { return std::cosh(x); }},
    {"tanh", [](double x) { return std::tanh(x); }},
}};

/// The functions and constants of `math` that depend on their arguments alone.
constexpr std::array<const char*, 21> library_names = {
    "abs", "acos", "asin", "atan", "ceil", "cos", "deg",  "exp", "floor",     "fmod", "huge",
    "log", "max",  "min",  "pi",   "rad",  "sin", "sqrt", "tan", "tointeger", "ult"};

int call_added(lua_State* state) {
    const auto index = static_cast<std::size_t>(lua_tointeger(state, lua_upvalueindex(1)));
    lua_pushnumber(state, added_functions[index].value(luaL_checknumber(state, 1)));
    return 1;
}

/// Defines the names for expressions. The arguments are the numbers of words and of bits.
int set_up(lua_State* state) {
    luaL_requiref(state, LUA_MATHLIBNAME, luaopen_math, 0);
    lua_createtable(state, 0, 0);
    for (const char* name : library_names) {
        lua_getfield(state, -2, name);
        lua_setfield(state, -2, name);
    }
    for (std::size_t index = 0; index < added_functions.size(); ++index) {
        lua_pushinteger(state, static_cast<lua_Integer>(index));
        lua_pushcclosure(state, call_added, 1);
        lua_setfield(state, -2, added_functions[index].name);
    }
    lua_pushvalue(state, 1);
    lua_setfield(state, -2, "n");
    lua_pushvalue(state, 2);
    lua_setfield(state, -2, "w");
    lua_rawseti(state, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
    return 0;
}

/// Throws the reason of a failure: the step limit, or the message at the top of the interpreter's stack.
[[noreturn]] void fail(lua_State* state, const expression_limits& limits) {
    if (limits.steps_left == 0) {
        throw expression_error(fmt::format("takes more than {} steps", limits.most_steps));
    }
    const char* const text = lua_tostring(state, -1);
    const std::string_view said = text != nullptr ? text : "no reason is known";
    throw expression_error(
        std::string(said.starts_with(place_of_fault) ? said.substr(place_of_fault.size()) : said));
}

} // namespace

void expression::closer::operator()(lua_State* opened) const noexcept {
    lua_close(opened);
}

expression::expression(const std::string& text, std::uint64_t depth, std::uint32_t width)
    : limits{steps_of_all_words + steps_of_each_word * depth},
      state(lua_newstate(allocate, &limits)) {
    if (!state) {
        throw std::bad_alloc();
    }
    lua_pushcfunction(state.get(), set_up);
    lua_pushinteger(state.get(), static_cast<lua_Integer>(depth));
    lua_pushinteger(state.get(), width);
    if (lua_pcall(state.get(), 2, 0, 0) != LUA_OK) {
        fail(state.get(), limits);
    }
    const std::string chunk = "local a = ... return " + text;
    if (luaL_loadbufferx(state.get(), chunk.data(), chunk.size(), chunk_name, "t") != LUA_OK) {
        fail(state.get(), limits);
    }
    lua_sethook(state.get(), count_steps, LUA_MASKCOUNT, hook_interval); // counts across words
}

expression::~expression() = default;

kvrimage::generated_number expression::value_at(std::uint64_t address) {
    lua_State* const lua = state.get();
    lua_settop(lua, 1);
    lua_pushvalue(lua, 1);
    lua_pushinteger(lua, static_cast<lua_Integer>(address));
    if (lua_pcall(lua, 1, LUA_MULTRET, 0) != LUA_OK) {
        fail(lua, limits);
    }
    const int count = lua_gettop(lua) - 1;
    if (count != 1) {
        throw expression_error(fmt::format("gives {} values, not one", count));
    }
    if (lua_isinteger(lua, -1) != 0) {
        return std::int64_t{lua_tointeger(lua, -1)};
    }
    const int kind = lua_type(lua, -1);
    if (kind == LUA_TBOOLEAN) {
        return std::int64_t{lua_toboolean(lua, -1)};
    }
    if (kind != LUA_TNUMBER) {
        throw expression_error(fmt::format("gives a {}, not a number", lua_typename(lua, kind)));
    }
    return lua_tonumber(lua, -1);
}

} // namespace kvrmem
