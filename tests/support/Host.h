#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

/// What tests say in one word: values, objects and calls by name.
namespace host {

using ruvo::HostResult;
using ruvo::HostValue;
using ruvo::RVOInterfacePtr;

/// Opens the module like a host and initialises it; once per process.
void openModule();

/// A class of the metamodel by its package-relative name, any class by its full one.
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
/// The object of a call's result; null for an empty one.
RVOInterfacePtr callObject(const RVOInterfacePtr& self, const char* method,
                           std::initializer_list<HostValue> arguments = {});
HostResult get(const RVOInterfacePtr& self, const char* property);
RVOInterfacePtr getObject(const RVOInterfacePtr& self, const char* property);
std::string getText(const RVOInterfacePtr& self, const char* property);
void set(const RVOInterfacePtr& self, const char* property, const HostValue& value);
std::string textOf(const HostResult& result);
/// The full name of an object's class.
std::string className(const RVOInterfacePtr& object);

/// The text of the exception that `action` raises; "nothing was raised" if none.
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
