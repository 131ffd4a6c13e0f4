// SPDX-License-Identifier: MIT
#ifndef VESK_TOVEXCEPTION_H
#define VESK_TOVEXCEPTION_H

#include <exception>

// The exception classes are defined in their headers and keep default
// visibility, so that a C++ host catches by class what the shared library
// throws.
#if defined(__GNUC__) && !defined(_WIN32)
#define VESK_EXCEPTION __attribute__((visibility("default")))
#else
#define VESK_EXCEPTION
#endif

namespace Vesk {

// The base class of every exception that this library defines.
// Thrown by value, caught by reference.
class VESK_EXCEPTION TovException : public std::exception {};

}  // namespace Vesk

#endif
