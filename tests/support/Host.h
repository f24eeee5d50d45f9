#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

/// Short functions for tests: values, objects and calls by name.
namespace host {

using ruvo::HostResult;
using ruvo::HostValue;
using ruvo::RVOInterfacePtr;

/// Loads the module like a host and initialises it. Idempotent.
void openModule();

/// A class of the metamodel by its name relative to the package, any other class by its full name.
ruvo::Class& cls(const std::string& name);

inline HostValue text(std::u16string_view characters) { return HostValue::ofText(characters); }
inline HostValue number(double value) { return HostValue::ofDouble(value); }
inline HostValue integer(std::int64_t value) { return HostValue::ofInteger(value); }
inline HostValue logical(bool value) { return HostValue::ofLogical(value); }
inline HostValue object(const RVOInterfacePtr& value) { return HostValue::ofObject(value); }
inline HostValue nothing() { return {}; }

RVOInterfacePtr newModel();
RVOInterfacePtr make(const std::string& className, std::initializer_list<HostValue> arguments);
HostResult call(const RVOInterfacePtr& self, const char* method,
                std::initializer_list<HostValue> arguments = {});
HostResult callStatic(const std::string& className, const char* method,
                      std::initializer_list<HostValue> arguments = {});
/// The object that a call returns; null if the result is empty.
RVOInterfacePtr callObject(const RVOInterfacePtr& self, const char* method,
                           std::initializer_list<HostValue> arguments = {});
HostResult get(const RVOInterfacePtr& self, const char* property);
RVOInterfacePtr getObject(const RVOInterfacePtr& self, const char* property);
std::string getText(const RVOInterfacePtr& self, const char* property);
void set(const RVOInterfacePtr& self, const char* property, const HostValue& value);
std::string textOf(const HostResult& result);
/// The full name of an object's class.
std::string className(const RVOInterfacePtr& object);

/// The text of the exception that `action` raises; "nothing was raised" if there is none.
template <class Action>
std::string raised(Action action) {
  try {
    action();
  } catch (const std::exception& exception) {
    return exception.what();
  }
  return "nothing was raised";
}

}  // namespace host
