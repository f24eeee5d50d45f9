#pragma once

#include <stdexcept>
#include <string>

#include "tarvelon/boundary/Export.h"

namespace K7Q {

/// Every failure that the platform reports. The text names the thing, what was expected, what came and the
/// cure.
class TARVELON_API Exception : public std::runtime_error {
 public:
  explicit Exception(const std::string& message);
  Exception(const Exception&) noexcept = default;
  Exception& operator=(const Exception&) noexcept = default;
  ~Exception() override;
};

/// A value or argument list of the wrong kind.
class TARVELON_API WrongType : public Exception {
 public:
  using Exception::Exception;
  ~WrongType() override;
};

/// A number that its type cannot hold.
class TARVELON_API OutOfRange : public Exception {
 public:
  using Exception::Exception;
  ~OutOfRange() override;
};

/// A value of the right kind that may not stand here: another model's object, nothing for a required
/// property.
class TARVELON_API WrongValue : public Exception {
 public:
  using Exception::Exception;
  ~WrongValue() override;
};

/// A name that nothing has.
class TARVELON_API UnknownName : public Exception {
 public:
  using Exception::Exception;
  ~UnknownName() override;
};

}  // namespace K7Q
