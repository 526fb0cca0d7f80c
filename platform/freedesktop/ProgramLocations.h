#pragma once

#include <filesystem>
#include <string>

namespace platform::freedesktop {

// Where the programs of this installation are, told from where this one is: the others are in libexec/orvello
// beside its bin folder, or in its own folder when it is one of them.
class ProgramLocations {
  public:
    // Reads where this process's own executable file is.
    ProgramLocations();
    explicit ProgramLocations(std::filesystem::path self) : self_(std::move(self)) {}

    // The path of the program of that name; whether it is there shows when it is started.
    [[nodiscard]] std::string libexecProgram(const std::string& name) const;

    // The path of the command that the user types, seen from one of the programs in libexec/orvello.
    [[nodiscard]] std::filesystem::path command() const;

  private:
    std::filesystem::path self_;
};

}  // namespace platform::freedesktop
