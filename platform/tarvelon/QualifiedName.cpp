#include "platform/tarvelon/QualifiedName.h"

#include <vector>

#include "boundary/k7q/Primitives.h"
#include "boundary/tarvelon/Foundation.h"
#include "platform/tarvelon/ClassData.h"
#include "platform/tarvelon/ClassMethods.h"
#include "platform/tarvelon/Instance.h"

namespace Tarvelon::metamodel::native {

namespace {

const ClassData& namedElements() {
  return static_cast<const ClassMethods&>(foundation::NamedElement::Interface::sIntrospectiveMethods).data();
}

}  // namespace

std::uint8_t nameSlot(const ClassData& cls) {
  static const ClassData& named = namedElements();
  static const unsigned id = named.findProperty("Name")->id();
  return cls.isKindOf(named.ordinal) ? cls.placeOf(named, id).slot : ClassData::kNoSlot;
}

bool hasName(const ClassData& cls) { return nameSlot(cls) != ClassData::kNoSlot; }

std::u16string_view ownName(const Instance& object) {
  const std::uint8_t slot = nameSlot(object.cls());
  const Word* word = slot == ClassData::kNoSlot ? nullptr : object.find(slot);
  return word && word->text ? word->text->view() : std::u16string_view();
}

std::string qualifiedName(const Instance& object) {
  std::vector<const Instance*> segments;
  for (const Instance* each = &object; each; each = each->owner()) {
    if (hasName(each->cls())) segments.push_back(each);
  }
  std::string name;
  for (auto each = segments.rbegin(); each != segments.rend(); ++each) {
    name.append("/").append(K7Q::String::to_string(ownName(**each)));
  }
  return name;
}

std::string_view shortName(const ClassData& cls) noexcept {
  const std::string_view name = cls.methods->className().name;
  const std::size_t last = name.rfind('.');
  const std::size_t before = last == 0 ? last : name.rfind('.', last - 1);
  return before == std::string_view::npos ? name : name.substr(before + 1);
}

}  // namespace Tarvelon::metamodel::native
