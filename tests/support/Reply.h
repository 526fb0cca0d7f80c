#pragma once

#include <cstdlib>
#include <memory>

namespace desktop_test {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

// An X reply or event, freed with its owner.
template <typename T>
using Reply = std::unique_ptr<T, FreeReply>;

}  // namespace desktop_test
