#pragma once

#include <new>

#include "tarvelon/boundary/Export.h"

namespace bedrock::core::except {

/// Reports that an allocation failed. Tarvelon's own allocators throw this type; standard containers inside
/// the libraries throw std::bad_alloc. A handler for std::bad_alloc catches both.
///
/// Unless a function says otherwise, a call that throws this exception has changed nothing. A program may
/// free memory and repeat the call.
///
/// Example:
///   try {
///     brakes.get<"PackagedElement">().add(wheels);
///   } catch (const std::bad_alloc&) {
///     releaseCaches();
///   }
class TARVELON_API bad_alloc : public std::bad_alloc {
 public:
  bad_alloc() noexcept = default;
  bad_alloc(const bad_alloc&) noexcept = default;
  bad_alloc& operator=(const bad_alloc&) noexcept = default;
  ~bad_alloc() override;
  /// Returns a constant text, without an allocation.
  const char* what() const noexcept override;
};

}  // namespace bedrock::core::except
