#include "benchmarks/TaggedSpaces.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

namespace benchmark {

using desktop_test::PrivateDesktop;

namespace {

void write(const std::filesystem::path& file, const nlohmann::json& content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << content;
}

void writeTags(const PrivateDesktop& desktop, const std::vector<std::size_t>& spacesToTag) {
    const auto dump = desktop.run({PrivateDesktop::program("orvello"), "dump"});
    const auto spaces = nlohmann::json::parse(dump.standardOutput);
    auto tags = nlohmann::json::array();
    for (const auto space : spacesToTag)
        tags.push_back({{"id", fmt::format("{:08}-1111-4111-8111-111111111111", tags.size())},
                        {"label", fmt::format("Tag {}", tags.size())},
                        {"colorHex", "#3B82F6"},
                        {"spaceUUID", spaces.at(space % spaces.size()).at("uuid")}});
    write(desktop.dataFolder() / "orvello/tags.json", tags);
}

}  // namespace

void tagSpaces(const PrivateDesktop& desktop, std::size_t count) {
    std::vector<std::size_t> spaces;
    for (std::size_t i = 0; i < count; ++i) spaces.push_back(i);
    writeTags(desktop, spaces);
}

void tagSpace(const PrivateDesktop& desktop, std::uint32_t space) {
    writeTags(desktop, {space});
}

void hideDuringWork(const PrivateDesktop& desktop) {
    desktop.writeSettings({{"visibilityMode", "hiddenDuringWork"}});
}

void recordQuickSwitcherKey(const PrivateDesktop& desktop) {
    desktop.writeSettings(
        {{"KeyboardShortcuts_quickSwitcher", R"({"carbonKeyCode":38,"carbonModifiers":6400})"}});
}

void awaitClients(PrivateDesktop& desktop, std::size_t count) {
    if (!desktop_test::waitUntil([&] { return desktop.x().clients().size() >= count; }))
        throw std::runtime_error("the windows do not come up");
}

void awaitNoClients(PrivateDesktop& desktop) {
    if (!desktop_test::waitUntil([&] { return desktop.x().clients().empty(); }))
        throw std::runtime_error("the windows do not go away");
}

}  // namespace benchmark
