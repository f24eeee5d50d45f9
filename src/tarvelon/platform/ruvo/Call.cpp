#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/ruvo/Conversion.h"
#include "tarvelon/platform/ruvo/HostObject.h"
#include "tarvelon/platform/ruvo/Matching.h"
#include "tarvelon/platform/ruvo/Registry.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace ruvo {

HostResult invoke(const Choice& choice, RVOInterface* self, std::span<const HostValue> arguments) {
  const RVOMethodSignature& signature = *choice.signature;
  Slots slots(signature);
  if (choice.takesSelf) slots.addObject(self);
  for (const HostValue& argument : arguments) slots.add(argument);

  std::uint32_t resultCount = 0;
  RVOValue result;
  choice.record->invoke(ObjectSystem::client(), resultCount, &result, slots.count(), slots.data());
  if (resultCount == 0 || signature.result().kind() == internal::TypeKind::Void) return HostResult();
  return HostResult(result, signature.result());
}

HostResult callOverloads(Class& cls, const OverloadSet& overloads, RVOInterface* self,
                         std::span<const HostValue> arguments) {
  const CallSite site{cls.getFullName().view(), overloads.name.view()};
  return invoke(choose(site, overloads.candidates, self, arguments), self, arguments);
}

HostResult call(RVOInterface* self, std::string_view method, std::span<const HostValue> arguments) {
  Class& cls = classOf(*self);
  const OverloadSet* overloads = cls.findMethods(method);
  if (!overloads) throwUnknownMember(cls, "method", method);
  return callOverloads(cls, *overloads, self, arguments);
}

HostResult callStatic(Class& cls, std::string_view method, std::span<const HostValue> arguments) {
  const OverloadSet* overloads = cls.findMethods(method);
  if (!overloads) throwUnknownMember(cls, "method", method);
  return callOverloads(cls, *overloads, nullptr, arguments);
}

HostResult callFunction(Package& package, std::string_view function, std::span<const HostValue> arguments) {
  const auto functions = package.findFunctions(function);
  if (functions.empty()) {
    std::vector<std::string_view> names;
    for (const auto* known : package.functions()) names.push_back(known->getName().view());
    throw K7Q::UnknownName("package '" + std::string(package.getFullName().view()) + "' has no function " +
                           quotedName(function) + didYouMean(function, names));
  }
  const std::vector<const RVOMethodInfo*> candidates(functions.begin(), functions.end());
  const CallSite site{package.getFullName().view(), function, false};
  return invoke(choose(site, candidates, nullptr, arguments), nullptr, arguments);
}

RVOInterfacePtr construct(Class& cls, std::span<const HostValue> arguments) {
  const OverloadSet* constructors = cls.constructors();
  const std::string_view name = cls.getFullName().view();
  if (!constructors) throwAbstract(cls);
  const Choice choice = choose(CallSite{name, {}}, constructors->candidates, nullptr, arguments);
  Slots slots(*choice.signature);
  for (const HostValue& argument : arguments) slots.add(argument);

  RVOInterfacePtr object(HostObject::create(cls));
  const hx::ArrayPtr box(boxInterface(object, cls.getFullName()));
  std::uint32_t resultCount = 0;
  RVOValue result(box.get());
  choice.record->invoke(ObjectSystem::client(), resultCount, &result, slots.count(), slots.data());
  if (!object->getBoundPointer(cls.getFullName())) {
    throw K7Q::Exception(std::string(cls.shortName()) +
                         ": the constructor has not bound an object; it must bind one");
  }
  return object;
}

}  // namespace ruvo
