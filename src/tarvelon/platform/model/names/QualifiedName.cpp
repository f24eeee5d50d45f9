#include "tarvelon/platform/model/names/QualifiedName.h"

#include <vector>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/objects/Instance.h"

namespace Tarvelon::metamodel::native {

bool hasName(const ClassData& cls) noexcept { return cls.nameSlot != ClassData::kNoSlot; }

std::u16string_view ownName(const Instance& object) noexcept {
  const std::uint8_t slot = object.cls().nameSlot;
  const Word* word = slot == ClassData::kNoSlot ? nullptr : object.find(slot);
  return word && word->text ? word->text->view() : std::u16string_view();
}

// An empty text is stored as a null text.
bool isNamed(const Instance& object) noexcept {
  const std::uint8_t slot = object.cls().nameSlot;
  const Word* word = slot == ClassData::kNoSlot ? nullptr : object.find(slot);
  return word && word->text;
}

const Instance* namingHolder(const Instance& object) noexcept {
  const Instance* holder = object.owner();
  while (holder && !isNamed(*holder)) holder = holder->owner();
  return holder;
}

bool isNamedBelow(const Instance& object, const Instance* holder) noexcept {
  const Instance* each = object.owner();
  while (each != holder) {
    if (!each || isNamed(*each)) return false;
    each = each->owner();
  }
  return true;
}

std::u16string qualifiedText(const Instance& object) {
  if (!isNamed(object)) return {};
  std::vector<std::u16string_view> names;
  for (const Instance* each = &object; each; each = namingHolder(*each)) names.push_back(ownName(*each));
  std::u16string result;
  for (auto name = names.rbegin(); name != names.rend(); ++name) (result += u'/').append(*name);
  return result;
}

std::string qualifiedName(const Instance& object) {
  return K7Q::String::to_string(std::u16string_view(qualifiedText(object)));
}

std::string_view shortName(const ClassData& cls) noexcept {
  const std::string_view name = cls.methods->className().name;
  const std::size_t last = name.rfind('.');
  const std::size_t before = last == 0 ? last : name.rfind('.', last - 1);
  return before == std::string_view::npos ? name : name.substr(before + 1);
}

}  // namespace Tarvelon::metamodel::native
