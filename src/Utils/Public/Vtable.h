#pragma once

#include <cstring>
#include <memory>
#include <type_traits>

namespace Vell {

/// The table of virtual functions of an object, which tells its class: objects of one class share their
/// table, and objects of no other class have it, derived ones included.
///
///     const void* const ownTable = getVtable(Own());              // once
///     if (getVtable(other) == ownTable) static_cast<const Own&>(other).look();
///
/// For objects of which typeid and dynamic_cast must not be used: the classes of a client that is built with
/// -fno-rtti have no type information, and looking for it crashes. Every polymorphic object begins with the
/// address of its table; so says the Itanium C++ ABI, which every compiler for Linux follows. `T` and `Own`
/// must begin at the same address, as a class and its first polymorphic base do.
template <class T>
const void* getVtable(const T& object) noexcept {
    static_assert(std::is_polymorphic_v<T>, "only polymorphic objects have a table");
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(std::addressof(object)), sizeof(table));
    return table;
}

} // namespace Vell
