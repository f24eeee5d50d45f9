#include "tests/support/Host.h"

#include <dlfcn.h>

#include "tarvelon/boundary/k7q/Exception.h"

namespace host {

void openModule() {
  static const bool isOpen = [] {
    void* library = dlopen(TARVELON_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    if (!library) throw K7Q::Exception(dlerror());
    reinterpret_cast<void (*)()>(dlsym(library, "ZtInitialize_mm_arplatform_mi"))();
    return true;
  }();
  static_cast<void>(isOpen);
}

ruvo::Class& cls(const std::string& name) {
  const bool isFull = name.rfind("Tarvelon.", 0) == 0 || name.rfind("K7Q.", 0) == 0;
  return ruvo::Class::get(isFull ? name : "Tarvelon.metamodel.arplatform." + name);
}

RVOInterfacePtr newModel() { return RVOInterfacePtr(callStatic("K7Q.Model", "create").object()); }

RVOInterfacePtr make(const std::string& className, std::initializer_list<HostValue> arguments) {
  return ruvo::construct(cls(className), {arguments.begin(), arguments.size()});
}

HostResult call(const RVOInterfacePtr& self, const char* method, std::initializer_list<HostValue> arguments) {
  return ruvo::call(self, method, {arguments.begin(), arguments.size()});
}

HostResult callStatic(const std::string& className, const char* method,
                      std::initializer_list<HostValue> arguments) {
  return ruvo::callStatic(cls(className), method, {arguments.begin(), arguments.size()});
}

RVOInterfacePtr callObject(const RVOInterfacePtr& self, const char* method,
                           std::initializer_list<HostValue> arguments) {
  return RVOInterfacePtr(call(self, method, arguments).object());
}

HostResult get(const RVOInterfacePtr& self, const char* property) {
  return ruvo::getProperty(self, property);
}

RVOInterfacePtr getObject(const RVOInterfacePtr& self, const char* property) {
  return RVOInterfacePtr(get(self, property).object());
}

std::string getText(const RVOInterfacePtr& self, const char* property) { return textOf(get(self, property)); }

void set(const RVOInterfacePtr& self, const char* property, const HostValue& value) {
  ruvo::setProperty(self, property, value);
}

std::string textOf(const HostResult& result) {
  return K7Q::String::to_string(hx::hxGetText(result.slot().array()));
}

std::string className(const RVOInterfacePtr& object) { return object->getClass()->getClassName(); }

}  // namespace host
