#pragma once

#include <filesystem>
#include <string>

namespace platform {

// The application as the system knows it.
struct ApplicationBundle {
    std::string identifier;      // empty when the system does not say
    std::filesystem::path path;  // what the user starts it by
};

}  // namespace platform
