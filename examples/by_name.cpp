// A part of the model of first_model.cpp, built only through the object system: the program finds classes,
// methods and properties by name, as a scripting host does. It is not compiled with the metamodel; it opens
// the module at run time, like a plug-in.
#include <dlfcn.h>
#include <iostream>
#include <string>
#include <tarvelon/boundary/k7q/Exception.h>
#include <tarvelon/boundary/k7q/Primitives.h>
#include <tarvelon/platform/ruvo/ObjectSystem.h>

namespace {

using ruvo::HostValue;

constexpr const char* kPrefix = "Tarvelon.metamodel.arplatform.";

void openModule(const char* path) {
  void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (!library) throw K7Q::Exception(std::string("the module does not load: ") + dlerror());
  reinterpret_cast<void (*)()>(dlsym(library, "ZtInitialize_mm_arplatform_mi"))();
}

HostValue text(const char16_t* characters) { return HostValue::ofText(characters); }

ruvo::RVOInterfacePtr make(const char* className, std::initializer_list<HostValue> arguments) {
  return ruvo::construct(ruvo::Class::get(std::string(kPrefix) + className),
                         {arguments.begin(), arguments.size()});
}

std::string read(ruvo::RVOInterface* object, const char* property) {
  const auto result = ruvo::getProperty(object, property);
  return K7Q::String::to_string(hx::hxGetText(result.slot().array()));
}

void add(ruvo::RVOInterface* object, const char* property, ruvo::RVOInterface* element) {
  const auto sequence = ruvo::getProperty(object, property);
  const HostValue argument = HostValue::ofObject(element);
  ruvo::call(sequence.object(), "push_back", {&argument, 1});
}

}  // namespace

int main() {
  openModule(TARVELON_MODULE_PATH);

  const auto created = ruvo::callStatic(ruvo::Class::get("K7Q.Model"), "create", {});
  const auto model = HostValue::ofObject(created.object());

  const auto root = make("common.AUTOSAR", {model});
  ruvo::setProperty(root, "Name", text(u"Vehicle"));
  const auto brakes = make("common.Package", {model, text(u"Brakes")});
  add(root, "PackagedElement", brakes);
  const auto base = make("common.ReferenceBase",
                         {model, HostValue::ofLogical(true), text(u"default"), HostValue::ofObject(brakes)});
  add(brakes, "ReferenceBase", base);
  std::cout << read(root, "Name") << "/" << read(brakes, "Name") << ", base " << read(base, "ShortLabel")
            << '\n';

  for (const char* property : {"ShortLabl", "IsDefault"}) {
    try {
      ruvo::setProperty(base, property, text(u"yes"));
    } catch (const K7Q::Exception& refused) {
      std::cout << refused.what() << '\n';
    }
  }

  ruvo::call(base, "destroy", {});
  const auto sequence = ruvo::getProperty(brakes, "ReferenceBase");
  std::cout << "bases left: " << ruvo::call(sequence.object(), "size", {}).slot().int32() << '\n';
  return 0;
}
