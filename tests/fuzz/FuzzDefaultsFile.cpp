#include <cstdlib>
#include <nlohmann/json.hpp>

#include "platform/freedesktop/files/JsonDefaultsStore.h"
#include "platform/simulated/SimulatedFiles.h"
#include "platform/simulated/SimulatedRunLoop.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

// Whatever the file holds, it is either read or kept aside as it was, and after an assignment the next run
// reads that and everything else as before.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size) {
    using platform::freedesktop::JsonDefaultsStore;
    const std::filesystem::path file = "/orvello/defaults.json";
    const std::string text(bytes, bytes + size);
    const platform::simulated::SimulatedRunLoop clock;
    platform::simulated::SimulatedFileSystem files;
    files.put(file, text);
    bool reported = false;
    const auto report = [&](auto) { reported = true; };

    JsonDefaultsStore store(files, clock, file, report);
    require(reported ? files.files.size() == 1 && files.files.begin()->second == text
                     : files.files[file] == text);
    store.set("new key", true);
    const auto members = nlohmann::json::parse(files.files[file]);
    reported = false;
    const JsonDefaultsStore next(files, clock, file, report);
    require(!reported && next.value("new key") == platform::DefaultsValue(true));
    for (const auto& [key, member] : members.items()) require(next.value(key) == store.value(key));
    return 0;
}
