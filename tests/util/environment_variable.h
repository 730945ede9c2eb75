#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace kvr_test {

/// Sets or unsets an environment variable for one test.
class environment_variable {
public:
    environment_variable(std::string variable, const std::optional<std::string>& value)
        : name(std::move(variable)) {
        if (const char* const current = std::getenv(name.c_str())) {
            before = current;
        }
        set(value);
    }
    environment_variable(const environment_variable&) = delete;
    environment_variable& operator=(const environment_variable&) = delete;
    ~environment_variable() { set(before); }

private:
    void set(const std::optional<std::string>& value) const {
#if defined(_WIN32)
        _putenv_s(name.c_str(), value.value_or("").c_str()); // an empty variable does not exist there
#else
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
#endif
    }

    std::string name;
    std::optional<std::string> before;
};

} // namespace kvr_test
