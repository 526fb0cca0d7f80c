#include "orvellos/base/TextCase.h"

#include <utf8proc.h>

#include <cstdlib>
#include <memory>

namespace orvellos {

namespace {

// The text in the normal form that `form` names, each code point changed by `change` (if any) before.
std::string mapped(std::string_view text, utf8proc_option_t form, utf8proc_custom_func change) {
    utf8proc_uint8_t* result = nullptr;
    const auto length = utf8proc_map_custom(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                            static_cast<utf8proc_ssize_t>(text.size()), &result,
                                            utf8proc_option_t(form | UTF8PROC_STABLE), change, nullptr);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(result, std::free);
    return length < 0 ? std::string() : std::string(result, result + length);
}

}  // namespace

std::string lowerCased(std::string_view text) {
    const auto toLower = [](utf8proc_int32_t point, void*) { return utf8proc_tolower(point); };
    // Decomposed first, so that a letter like dotted capital I keeps its mark.
    return mapped(mapped(text, UTF8PROC_DECOMPOSE, nullptr), UTF8PROC_COMPOSE, toLower);
}

}  // namespace orvellos
