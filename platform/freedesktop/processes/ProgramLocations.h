#pragma once

#include <filesystem>
#include <string>

namespace platform::freedesktop {

// Where the programs of this installation are, told from where this one is: in the bin and libexec folders,
// as the build was configured, below one prefix, which may be any.
class ProgramLocations {
  public:
    // Reads where this process's own executable file is; where the build is to be installed when it cannot.
    ProgramLocations();
    explicit ProgramLocations(std::filesystem::path self) : self_(std::move(self)) {}

    // The path of the program of that name; whether it is there shows when it is started.
    [[nodiscard]] std::string libexecProgram(const std::string& name) const;

    // The path of the command that the user types.
    [[nodiscard]] std::filesystem::path command() const;

  private:
    [[nodiscard]] std::filesystem::path prefix() const;

    std::filesystem::path self_;
};

}  // namespace platform::freedesktop
