#include "platform/freedesktop/bus/SystemdLibrary.h"

#include <dlfcn.h>

namespace platform::freedesktop {

namespace {

template <typename Function>
bool resolve(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

}  // namespace

void SystemdLibrary::load() {
    void* library = dlopen(name_.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!library) return;
    SystemdFunctions found;
    bool complete = true;
#define PLATFORM_RESOLVE_FUNCTION(name) complete = resolve(library, #name, found.name) && complete;
    PLATFORM_SYSTEMD_FUNCTIONS(PLATFORM_RESOLVE_FUNCTION)
#undef PLATFORM_RESOLVE_FUNCTION
    if (complete) functions_ = found;
}

const SystemdFunctions* SystemdLibrary::functions() {
    std::call_once(loaded_, [this] { load(); });
    return functions_ ? &*functions_ : nullptr;
}

}  // namespace platform::freedesktop
