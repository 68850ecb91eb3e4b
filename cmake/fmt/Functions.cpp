// The functions of fmt, and the instances of its templates that its headers declare.

#include <fmt/format-inl.h>

FMT_BEGIN_NAMESPACE

namespace detail {

template FMT_API dragonbox::decimal_fp<float> dragonbox::to_decimal(float) noexcept;
template FMT_API dragonbox::decimal_fp<double> dragonbox::to_decimal(double) noexcept;
template FMT_API thousands_sep_result<char> thousands_sep_impl(locale_ref);
template FMT_API char decimal_point_impl(locale_ref);

} // namespace detail

FMT_END_NAMESPACE
