#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "orvellos/tags/TagJson.h"

// Whatever a tag file holds, reading it must not crash, and tags that were read are saved and read unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto tags = orvellos::decodeTags({reinterpret_cast<const char*>(data), size});
    if (!tags) return 0;
    const auto text = orvellos::encodeTags(*tags);
    if (!text || orvellos::decodeTags(text.value()) != tags) std::abort();
    return 0;
}
