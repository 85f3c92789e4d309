#pragma once

#include <optional>
#include <string>

namespace TestSupport {

/// Sets a variable of the process's environment, and puts back what was there at the end.
class EnvironmentVariable {
public:
    /// Absent: the variable is removed.
    EnvironmentVariable(std::string name, const std::optional<std::string>& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace TestSupport
