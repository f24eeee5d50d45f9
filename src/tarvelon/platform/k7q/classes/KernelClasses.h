#pragma once

#include <array>
#include <span>

#include "tarvelon/binding/MethodRows.h"
#include "tarvelon/platform/k7q/classes/Companions.h"

/// The tables of the classes of the host package K7Q.
namespace K7Q::mi {

/// A class with its methods and superclasses. Unused places of `superClasses` are null.
struct KernelClass {
  const char* name;
  const char* description;
  std::array<const char*, 2> superClasses;
  std::span<const MethodRow> methods;
};

/// A sequence or iterator class of the package.
struct KernelCompanion {
  const CompanionKind* kind;
  const char* name;
  const char* element;
  const char* iterator;
  const char* description;
};

/// The tables are in order of registration.
std::span<const KernelClass> kernelClasses();
std::span<const KernelCompanion> kernelCompanions();

}  // namespace K7Q::mi
