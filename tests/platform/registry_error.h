#pragma once

#include "platform/error.h"
#include "platform/registry.h"

namespace rvl::test {

/// The number of the error that an action raises; 0 when it raises none.
template <class Action>
std::int32_t RegistryErrorOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace rvl::test
