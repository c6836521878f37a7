#pragma once

#include <stdexcept>
#include <string>

/// Input that the program refuses. The message is one line that names the file, the part where
/// there is one, and the cause.
class hst_Error : public std::runtime_error {
  public:
    explicit hst_Error(const std::string& message) : std::runtime_error(message) {}
    /// "FILE: CAUSE".
    hst_Error(const std::string& file, const std::string& cause) : hst_Error(file + ": " + cause) {}
    /// "FILE: part 'PART': CAUSE".
    hst_Error(const std::string& file, const std::string& part, const std::string& cause)
        : hst_Error(file + ": part '" + part + "': " + cause) {}
};
