#include <fcntl.h>
#include <fmt/format.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "orvellos/tags/TagJson.h"
#include "orvellos/tags/TagStore.h"
#include "platform/freedesktop/files/PosixFileSystem.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/support/TemporaryFolder.h"

namespace benchmark {

namespace {

using desktop_test::TemporaryFolder;
using orvellos::Tag;
using orvellos::TagStore;

constexpr std::size_t kManyTags = 10000;
constexpr std::size_t kTags = 10;
constexpr mode_t kPrivateFile = 0600;

Tag numberedTag(std::size_t number) {
    return {orvellos::TagID::random(), fmt::format("Tag {}", number), "#3B82F6",
            platform::Rect{1.5 * static_cast<double>(number), 20, 210, 44},
            fmt::format("{:08}-2222-4222-8222-222222222222", number)};
}

// The store of a user with that many tags, in a folder of its own.
class Stored {
  public:
    explicit Stored(std::size_t count) {
        std::vector<Tag> tags;
        for (std::size_t i = 0; i < count; ++i) tags.push_back(numberedTag(i));
        if (const auto error = files_.writeAtomically(file(), orvellos::encodeTags(tags).value()))
            throw std::runtime_error(error->description);
    }

    [[nodiscard]] std::filesystem::path file() const { return folder_.path() / "tags.json"; }
    [[nodiscard]] TagStore load() { return {files_, clock_, folder_.path()}; }

  private:
    TemporaryFolder folder_;
    platform::freedesktop::PosixFileSystem files_;
    platform::simulated::SimulatedRunLoop clock_;
};

template <typename Action>
Milliseconds timeOf(const Action& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::steady_clock::now() - start;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string content(std::filesystem::file_size(file), '\0');
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

// What a start does with the tag file, against reading and parsing it.
Row measureLoading(const Effort& effort) {
    Stored stored(kManyTags);
    const auto load = [&] {
        return timeOf([&] { require(stored.load().tags().size() == kManyTags, "tags are lost"); });
    };
    const auto parse = [&] {
        return timeOf([&] {
            require(nlohmann::json::parse(contentOf(stored.file())).size() == kManyTags, "tags are lost");
        });
    };
    return rowOf("loading 10,000 tags / the JSON library's bare parse", compare(effort.pairs, load, parse),
                 1.5);
}

// The least that a durable save can do: the file is whole under its name, or the former one is, whenever the
// power goes.
void saveBarely(const std::filesystem::path& file, const std::string& content) {
    const auto temporary = file.string() + ".new";
    const auto folder = file.parent_path();
    const int written = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kPrivateFile);
    require(::write(written, content.data(), content.size()) == static_cast<ssize_t>(content.size()) &&
                ::fsync(written) == 0 && ::close(written) == 0 &&
                ::rename(temporary.c_str(), file.c_str()) == 0,
            "the file cannot be written");
    const int opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    require(::fsync(opened) == 0 && ::close(opened) == 0, "the folder cannot be synced");
}

Row measureSaving(const Effort& effort) {
    Stored stored(kTags);
    auto store = stored.load();
    const Stored bare(kTags);
    const auto content = contentOf(bare.file());
    return rowOf("one durable save of ten tags / write, fsync, rename, fsync",
                 compare(
                     effort.pairs, [&] { return timeOf([&] { store.update(store.tags().front()); }); },
                     [&] { return timeOf([&] { saveBarely(bare.file(), content); }); }),
                 1.3);
}

}  // namespace

std::vector<Row> measureStorage(const Effort& effort) {
    return {measureLoading(effort), measureSaving(effort)};
}

}  // namespace benchmark
