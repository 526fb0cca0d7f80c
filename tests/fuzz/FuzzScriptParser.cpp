#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "orvellos/spaces/SpaceSwitcher.h"

// What is taken for a script is one to the byte: written anew it gives the same text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using orvellos::SpaceScript;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto script = orvellos::ScriptParser::parse(text);
    if (script && script->text(SpaceScript::Layout::CommandLine) != text &&
        script->text(SpaceScript::Layout::Navigation) != text)
        std::abort();
    return 0;
}
