#include <functional>
#include <string_view>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/platform/k7q/sequences/HostList.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

namespace {

using Generic::Ref;
using NSInterface::ObjectIntf;
using NSInterface::StringIntf;
using ruvo::InternedName;

constexpr const char* kWhere = "sequence element";

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
bool isKindOf(const IntrospectiveMethods& methods, const InternedName& name) {
  if (methods.name(false) == name || methods.name(true) == name) return true;
  for (const auto* base : methods.bases()) {
    if (isKindOf(*base, name)) return true;
  }
  return false;
}

bool conforms(const ObjectIntf& object, Deviant deviant, const InternedName& elementClass) {
  if (object.getRuvoName(false) == elementClass || object.getRuvoName(true) == elementClass) return true;
  const ImmutableType type = object.getMetaType(deviant);
  const auto* cls = dynamic_cast<const NSInterface::ClassIntf*>(type.getInterface());
  return cls && isKindOf(cls->methods(), elementClass);
}

void requireSome(const Ref& ref, std::string_view expected) {
  if (!ref.value()) throw WrongValue(text::mismatch(kWhere, expected, "an empty value"));
}

[[noreturn]] void refuse(const ObjectIntf& object, const InternedName& elementClass,
                         std::string_view expected, std::string_view came) {
  throw WrongValue(text::mismatch(kWhere, std::string(elementClass.view()).append(expected),
                                  text::shown(object).append(came)));
}

void requireOfModel(ObjectIntf& object, Deviant deviant, const InternedName& elementClass,
                    const ImmutableModel& model) {
  if (model.isNull()) return;
  const auto* inModel =
      static_cast<const NSInterface::ClassObjectIntf*>(object.cast(tagsOf<NSInterface::ClassObjectIntf>()));
  if (!inModel || inModel->getModel(deviant) == model) return;
  refuse(object, elementClass, " of the model that the sequence was made for", " of another model");
}

void requireObject(const Ref& ref, const InternedName& elementClass, const ImmutableModel& model) {
  requireSome(ref, elementClass.view());
  auto& object = *static_cast<ObjectIntf*>(ref.value());
  const Deviant deviant{ref.second()};
  if (!object.isValid(deviant)) {
    refuse(object, elementClass, " that is valid", " that was destroyed or whose model is closed");
  }
  if (!conforms(object, deviant, elementClass)) {
    throw WrongType(text::mismatch(kWhere, elementClass.view(), text::shown(object)));
  }
  requireOfModel(object, deviant, elementClass, model);
}

void requireAny(const Ref& ref, const InternedName& /*elementClass*/, const ImmutableModel& /*model*/) {
  requireSome(ref, "an object");
}
void requireText(const Ref& ref, const InternedName& /*elementClass*/, const ImmutableModel& /*model*/) {
  requireSome(ref, "char vector");
}

std::size_t hashPointer(const void* value) noexcept { return std::hash<const void*>()(value); }
bool isSamePointer(const void* left, const void* right) noexcept { return left == right; }

std::u16string_view textOf(const void* value) noexcept {
  return static_cast<const StringIntf*>(value)->view();
}
std::size_t hashText(const void* value) noexcept { return std::hash<std::u16string_view>()(textOf(value)); }
bool isSameText(const void* left, const void* right) noexcept { return textOf(left) == textOf(right); }

bool isAliveObject(const Ref& ref) {
  return static_cast<const ObjectIntf*>(ref.value())->isValid(Deviant{ref.second()});
}

}  // namespace

constinit const ElementKind kObjectElements{&requireObject, &hashPointer, &isSamePointer, &isAliveObject};
constinit const ElementKind kTextElements{&requireText, &hashText, &isSameText, nullptr};
constinit const ElementKind kAnyElements{&requireAny, &hashPointer, &isSamePointer, nullptr};

}  // namespace K7Q
