#pragma once

#include <stdexcept>
#include <string>

#include "tarvelon/boundary/Export.h"

namespace K7Q {

/// Base of all errors that Tarvelon reports, except for exhausted memory (bedrock::core::except::bad_alloc).
///
/// The text of an error names the object or argument, the expected value, the given value, and a remedy. The
/// types below let a program react to the kind of error. Unless a function says otherwise, a call that throws
/// one of them has changed nothing.
///
/// Example:
///   try {
///     values.get<"SysConstValue">()[0].asView(model.frozen()).set<"Value">(6.0);
///   } catch (const K7Q::Exception& refused) {
///     std::cout << refused.what() << '\n';
///   }
class TARVELON_API Exception : public std::runtime_error {
 public:
  explicit Exception(const std::string& message);
  Exception(const Exception&) noexcept = default;
  Exception& operator=(const Exception&) noexcept = default;
  ~Exception() override;
};

/// A value or an argument list has the wrong type: a text for a number, an object of another class, a call
/// that fits no overload, a constructor call of an abstract class.
class TARVELON_API WrongType : public Exception {
 public:
  using Exception::Exception;
  ~WrongType() override;
};

/// A number does not fit its type: too large, or not whole for an Integer; a number that is no literal of the
/// enumeration.
class TARVELON_API OutOfRange : public Exception {
 public:
  using Exception::Exception;
  ~OutOfRange() override;
};

/// A value has the right type but is not allowed here: an object of another model, a destroyed object, an
/// object that would contain itself, an empty value for a required property, a URI that is already in use.
class TARVELON_API WrongValue : public Exception {
 public:
  using Exception::Exception;
  ~WrongValue() override;
};

/// No package, class, property, method or enumeration literal has the given name. The text suggests a similar
/// name if there is one.
class TARVELON_API UnknownName : public Exception {
 public:
  using Exception::Exception;
  ~UnknownName() override;
};

}  // namespace K7Q
