#pragma once

/// Checks that a program is compiled in a way that is compatible with the installed libraries.
///
/// A program that includes the headers of Tarvelon must use the same language version, the same standard
/// library and the same ABI options as the libraries. Otherwise the program does not link, or the program and
/// the libraries disagree about the layout of objects in memory. Each condition below stops the compilation
/// with a message that names the option to change.
///
/// Every header of `boundary/` includes this file through Export.h; a program needs no include of its own.
#include <version>

#if __cplusplus < 202002L
#error "Tarvelon is written in C++20: compile with -std=c++20 or later."
#endif
#ifndef __cpp_rtti
#error "Tarvelon asks objects for their types: compile without -fno-rtti."
#endif
#ifndef __cpp_exceptions
#error "Tarvelon throws exceptions: compile without -fno-exceptions."
#endif
#ifdef _LIBCPP_VERSION
#error "Tarvelon's libraries are built with libstdc++: compile without -stdlib=libc++."
#endif
#ifdef _GLIBCXX_DEBUG
#error "-D_GLIBCXX_DEBUG changes std::vector, which Tarvelon's functions return: use -D_GLIBCXX_ASSERTIONS."
#endif
#if defined(_GLIBCXX_USE_CXX11_ABI) && !_GLIBCXX_USE_CXX11_ABI
#error "Tarvelon takes std::string of the C++11 ABI: compile without -D_GLIBCXX_USE_CXX11_ABI=0."
#endif
