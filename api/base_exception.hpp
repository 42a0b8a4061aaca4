#pragma once

#include <exception>

/// Root of the fatal errors of ORVANTE's programs.
///
/// Carries no message of its own: whoever finds the fatal condition writes its specific message to
/// `std::cerr` first and then throws a default-constructed object.
class BaseException : public std::exception {
public:
    /// Always "... unfortunately ORVANTE is killed!".
    [[nodiscard]] const char* what() const noexcept override {
        return "... unfortunately ORVANTE is killed!";
    }
};
