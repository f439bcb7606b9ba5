// {fmt}, compiled once. As headers only, its formatting of numbers is compiled again in each of our
// units, which costs three seconds of every one.
#include <fmt/format-inl.h>

FMT_BEGIN_NAMESPACE
namespace detail {

// What the headers declare and leave to the library.
template FMT_API auto thousands_sep_impl<char>(locale_ref) -> thousands_sep_result<char>;
template FMT_API auto thousands_sep_impl<wchar_t>(locale_ref) -> thousands_sep_result<wchar_t>;
template FMT_API auto decimal_point_impl(locale_ref) -> char;
template FMT_API auto decimal_point_impl(locale_ref) -> wchar_t;
template FMT_API auto dragonbox::to_decimal(float) noexcept -> dragonbox::decimal_fp<float>;
template FMT_API auto dragonbox::to_decimal(double) noexcept -> dragonbox::decimal_fp<double>;

} // namespace detail
FMT_END_NAMESPACE
