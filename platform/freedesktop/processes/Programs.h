#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace platform::freedesktop {

// The file of the program of that name in the first of the folders from which it can be started. The folders
// are separated by colons as in PATH; an empty one, which would be the current one, is left out.
[[nodiscard]] std::optional<std::filesystem::path> findProgramInFolders(std::string_view program,
                                                                        std::string_view folders);
// The same for this process's PATH.
[[nodiscard]] std::optional<std::filesystem::path> findProgram(std::string_view program);
[[nodiscard]] inline bool isProgramInstalled(std::string_view program) {
    return findProgram(program).has_value();
}

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
