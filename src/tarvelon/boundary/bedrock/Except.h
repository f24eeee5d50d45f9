#pragma once

#include <new>

#include "tarvelon/boundary/Export.h"

namespace bedrock::core::except {

/// Memory is exhausted. Catching std::bad_alloc catches it too.
class TARVELON_API bad_alloc : public std::bad_alloc {
 public:
  bad_alloc() noexcept = default;
  bad_alloc(const bad_alloc&) noexcept = default;
  bad_alloc& operator=(const bad_alloc&) noexcept = default;
  ~bad_alloc() override;
  const char* what() const noexcept override;
};

}  // namespace bedrock::core::except
