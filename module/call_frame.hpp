#pragma once

// The frame around one implementation function, made from its signature: conversion of the
// arguments, the call, the result. An implementation takes any of the types that parameter<> knows
// and returns any that to_result takes, or void; a result of type outputs<N> counts as N leading
// parameters.

#include "store/python.hpp"

#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "module/call_failure.hpp"
#include "module/parameter.hpp"
#include "module/result.hpp"

namespace mox {

template <typename Result> inline constexpr std::size_t output_count = 0;
template <std::size_t Count> inline constexpr std::size_t output_count<outputs<Count>> = Count;

template <auto Implementation, typename Signature = decltype(Implementation)> struct call_frame;

template <auto Implementation, typename Result, typename... Parameters>
struct call_frame<Implementation, Result (*)(Parameters...)> {
    static constexpr std::size_t argument_count = sizeof...(Parameters);

    /// True when every argument can be converted; converts none. False with an exception pending
    /// when a check raised one. `arguments` has argument_count elements.
    static bool accepts(PyObject* const* arguments) noexcept {
        return accepts_each(arguments, std::index_sequence_for<Parameters...>{});
    }

    /// Converts the arguments in order, calls the implementation and packs its result; null with a
    /// Python exception pending on failure.
    static PyObject* call(const call_site& site, PyObject* const* arguments) noexcept {
        try {
            return call_converted(site, arguments, std::index_sequence_for<Parameters...>{});
        } catch (...) {
            return raise_caught_exception();
        }
    }

    /// The parameter list as messages spell it, in parentheses.
    static std::string prototype() {
        std::string text;
        for (std::size_t i = 0; i < output_count<Result>; ++i)
            text += "PyObject *&,";
        ((text += parameter<Parameters>::spelling, text += ','), ...);
        if (!text.empty())
            text.pop_back();
        return "(" + text + ")";
    }

  private:
    template <std::size_t... Index>
    static bool accepts_each(PyObject* const* arguments, std::index_sequence<Index...>) noexcept {
        (void)arguments;
        return (parameter<Parameters>::fits(arguments[Index]) && ...);
    }

    template <typename Parameter>
    using converted = decltype(parameter<Parameter>::convert(nullptr, {}));

    template <std::size_t... Index>
    static PyObject* call_converted(const call_site& site, PyObject* const* arguments,
                                    std::index_sequence<Index...>) {
        (void)site;
        (void)arguments;
        // Braces: the elements of the list are evaluated in order, so the first bad argument is the
        // one reported.
        std::tuple<converted<Parameters>...> values{parameter<Parameters>::convert(
            arguments[Index], {site, static_cast<int>(output_count<Result> + Index) + 1,
                               parameter<Parameters>::spelling})...};
        if constexpr (std::is_void_v<Result>) {
            Implementation(std::forward<Parameters>(std::get<Index>(values))...);
            Py_RETURN_NONE;
        } else {
            return to_result(Implementation(std::forward<Parameters>(std::get<Index>(values))...))
                .release();
        }
    }
};

} // namespace mox
