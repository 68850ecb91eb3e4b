#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace Vell {

template <class Signature>
class CallableRef;

/// Refers to a callable without owning it. Takes two words and allocates nothing. Use it for parameters only:
/// the callable must outlive the call that the reference is passed to.
///
///     void forEach(const CallableRef<void(int)>& visit);
///     forEach([&](int value) { sum += value; });
template <class R, class... Args>
class CallableRef<R(Args...)> {
public:
    template <class F, class = std::enable_if_t<!std::is_same_v<std::decay_t<F>, CallableRef> &&
                                                std::is_invocable_r_v<R, F&, Args...>>>
    CallableRef(F&& callable) noexcept // NOLINT(bugprone-forwarding-reference-overload): excluded above
        : _target(toTarget(callable))
        , _invoke(&invoke<std::remove_reference_t<F>>) {}

    R operator()(Args... args) const { return _invoke(_target, std::forward<Args>(args)...); }

private:
    union Target {
        const void* object;
        void (*function)();
    };

    template <class F>
    static Target toTarget(F& callable) noexcept {
        Target target;
        if constexpr (std::is_function_v<F>) {
            target.function = reinterpret_cast<void (*)()>(&callable);
        } else {
            target.object = std::addressof(callable);
        }
        return target;
    }

    template <class F>
    static R invoke(Target target, Args... args) {
        if constexpr (std::is_function_v<F>) {
            return static_cast<R>(reinterpret_cast<F*>(target.function)(std::forward<Args>(args)...));
        } else {
            F& callable = *static_cast<F*>(const_cast<void*>(target.object));
            return static_cast<R>(callable(std::forward<Args>(args)...));
        }
    }

    Target _target;
    R (*_invoke)(Target, Args...);
};

} // namespace Vell
