/*
 * How the host builds kernel objects: a struct whose first member is the table of words the
 * library indexes, followed by the host's own state. `self<T>(object)` gets the state back.
 *
 *   struct Pool : KernelObject<8> { ... };
 *   pool.words[3] = fn_word(&pool_alloc);
 */
#pragma once

#include <array>
#include <cstddef>

namespace vxhost {

template <std::size_t N>
struct KernelObject {
    std::array<void*, N> words{};  // must stay the first member: the library reads it as void**
};

template <class Fn>
void* fn_word(Fn* fn) {
    return reinterpret_cast<void*>(fn);
}

template <class T>
T& self(void* object) {
    return *static_cast<T*>(object);
}

}  // namespace vxhost
