#pragma once

#include <optional>
#include <string>

#include "platform/runtime/PlatformError.h"

namespace tallymar::test {

// The failure that an action ends in, none when it ends well.
std::optional<PlatformError> ErrorOf(const auto& action) {
    try {
        action();
        return {};
    } catch (const PlatformError& error) {
        return error;
    }
}
std::optional<Failure> FailureOf(const auto& action) {
    const auto error = ErrorOf(action);
    return error ? std::optional(error->Code()) : std::nullopt;
}
int NumberOf(const auto& action) {
    const auto error = ErrorOf(action);
    return error ? error->Number() : 0;
}
std::string TextOf(const auto& action) {
    const auto error = ErrorOf(action);
    return error ? error->what() : "";
}

}  // namespace tallymar::test
