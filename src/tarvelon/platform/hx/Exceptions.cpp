#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"

// All libraries use these exception classes and depend on this library, so the virtual tables are defined
// here.

namespace bedrock::core::except {

bad_alloc::~bad_alloc() = default;

const char* bad_alloc::what() const noexcept { return "memory is exhausted"; }

}  // namespace bedrock::core::except

namespace K7Q {

Exception::Exception(const std::string& message) : std::runtime_error(message) {}
Exception::~Exception() = default;
WrongType::~WrongType() = default;
OutOfRange::~OutOfRange() = default;
WrongValue::~WrongValue() = default;
UnknownName::~UnknownName() = default;

}  // namespace K7Q
