#pragma once

/// A program that includes these headers must be compiled as the libraries were. What differs would end in an
/// error of the linker at best, and at worst in memory that the two sides read in different ways.
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
