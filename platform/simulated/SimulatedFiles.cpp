#include "platform/simulated/SimulatedFiles.h"

#include <system_error>

namespace platform::simulated {

namespace {

Error failure(const std::string& operation, std::errc code) {
    return {operation + ": " + std::make_error_code(code).message()};
}

void setKey(auto& node, const std::filesystem::path& key) {
    if constexpr (requires { node.key(); })
        node.key() = key;
    else
        node.value() = key;
}

// Gives the element that a map or a set has under a path, if any, another path.
void rename(auto& elements, const std::filesystem::path& from, const std::filesystem::path& to) {
    auto node = elements.extract(from);
    if (node.empty()) return;
    setKey(node, to);
    elements.insert(std::move(node));
}

}  // namespace

bool SimulatedFileSystem::isWritable(std::filesystem::path path) const {
    for (; !unwritable.contains(path); path = path.parent_path())
        if (path == path.parent_path()) return true;
    return false;
}

bool SimulatedFileSystem::exists(const std::filesystem::path& path) const {
    return files.contains(path) || folders.contains(path);
}

Result<std::string> SimulatedFileSystem::read(const std::filesystem::path& path) const {
    if (unreadable.contains(path)) return failure("open", std::errc::permission_denied);
    if (folders.contains(path)) return failure("read", std::errc::is_a_directory);
    const auto file = files.find(path);
    if (file == files.end()) return failure("open", std::errc::no_such_file_or_directory);
    return file->second;
}

MaybeError SimulatedFileSystem::writeAtomically(const std::filesystem::path& path, std::string_view bytes) {
    if (!nextWrites.empty()) {
        auto outcome = nextWrites.front();
        nextWrites.pop_front();
        if (outcome) return outcome;
    }
    if (folders.contains(path)) return failure("open", std::errc::is_a_directory);
    if (!folders.contains(path.parent_path())) return failure("open", std::errc::no_such_file_or_directory);
    if (!isWritable(path)) return failure("open", std::errc::permission_denied);
    files[path] = bytes;
    modificationDates[path] = now;
    writes.emplace_back(path, bytes);
    return std::nullopt;
}

MaybeError SimulatedFileSystem::writeNew(const std::filesystem::path& path, std::string_view bytes) {
    if (exists(path)) return failure("rename", std::errc::file_exists);
    return writeAtomically(path, bytes);
}

MaybeError SimulatedFileSystem::move(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (!exists(from) || !folders.contains(to.parent_path()))
        return failure("rename", std::errc::no_such_file_or_directory);
    if (exists(to)) return failure("rename", std::errc::file_exists);
    if (!isWritable(from) || !isWritable(to)) return failure("rename", std::errc::permission_denied);
    rename(files, from, to);
    rename(modificationDates, from, to);
    rename(folders, from, to);
    rename(unreadable, from, to);
    return std::nullopt;
}

MaybeError SimulatedFileSystem::createFolders(const std::filesystem::path& folder) {
    std::filesystem::path made;
    for (const auto& part : folder) {
        made /= part;
        if (part.empty() || folders.contains(made)) continue;
        if (files.contains(made)) return failure("mkdir", std::errc::not_a_directory);
        if (!isWritable(made)) return failure("mkdir", std::errc::permission_denied);
        folders.insert(made);
    }
    return std::nullopt;
}

std::optional<WallTime> SimulatedFileSystem::modificationDate(const std::filesystem::path& path) const {
    if (!files.contains(path)) return std::nullopt;
    const auto date = modificationDates.find(path);
    return date == modificationDates.end() ? WallTime() : date->second;
}

void SimulatedFileSystem::put(const std::filesystem::path& path, std::string bytes) {
    for (auto folder = path.parent_path(); folders.insert(folder).second;) folder = folder.parent_path();
    files[path] = std::move(bytes);
    modificationDates[path] = now;
}

}  // namespace platform::simulated
