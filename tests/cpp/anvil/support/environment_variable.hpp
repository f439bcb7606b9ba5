#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace anvil_test {

/// Sets or removes an environment variable and puts its former value back.
class environment_variable {
  public:
    environment_variable(const std::string& name, const std::optional<std::string>& value)
        : name_{name} {
        if (const char* former = std::getenv(name.c_str()))
            former_ = former;
        assign(value);
    }
    environment_variable(const environment_variable&) = delete;
    environment_variable& operator=(const environment_variable&) = delete;
    ~environment_variable() { assign(former_); }

  private:
    void assign(const std::optional<std::string>& value) {
        if (value)
            ::setenv(name_.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> former_;
};

} // namespace anvil_test
