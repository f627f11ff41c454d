// Environment variables for tests, on POSIX systems.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace cabslot::testing {

/// Sets an environment variable during its lifetime.
class WithVariable {
public:
    WithVariable(const char* name, const std::string& value) : name_(name) {
        if (const char* const before = std::getenv(name))
            before_ = before;
        ::setenv(name, value.c_str(), 1);
    }
    WithVariable(const WithVariable&) = delete;
    WithVariable& operator=(const WithVariable&) = delete;
    ~WithVariable() { before_ ? ::setenv(name_, before_->c_str(), 1) : ::unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> before_;
};

} // namespace cabslot::testing
