#pragma once

#include <cstring>
#include <memory>
#include <type_traits>

namespace Vell {

/// The address of an object's vtable, which identifies its class: all objects of a class share one vtable,
/// and no object of any other class has it, not even of a derived class.
///
///     const void* const ownTable = getVtable(Own());              // once
///     if (getVtable(other) == ownTable) static_cast<const Own&>(other).look();
///
/// Use this where typeid and dynamic_cast are not safe: the classes of a client that is built with -fno-rtti
/// have no type information, and looking for it crashes. In the Itanium C++ ABI, which every compiler for
/// Linux follows, a polymorphic object begins with the address of its vtable. `T` and `Own` must begin at the
/// same address, as a class and its first polymorphic base do.
template <class T>
const void* getVtable(const T& object) noexcept {
    static_assert(std::is_polymorphic_v<T>, "only polymorphic objects have a vtable");
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(std::addressof(object)), sizeof(table));
    return table;
}

} // namespace Vell
