#include "platform/tarvelon/QualifiedName.h"

#include <vector>

#include "boundary/k7q/Primitives.h"
#include "platform/tarvelon/ClassData.h"
#include "platform/tarvelon/ClassMethods.h"
#include "platform/tarvelon/Instance.h"

namespace Tarvelon::metamodel::native {

bool hasName(const ClassData& cls) noexcept { return cls.nameSlot != ClassData::kNoSlot; }

std::u16string_view ownName(const Instance& object) noexcept {
  const std::uint8_t slot = object.cls().nameSlot;
  const Word* word = slot == ClassData::kNoSlot ? nullptr : object.find(slot);
  return word && word->text ? word->text->view() : std::u16string_view();
}

const Instance* namingHolder(const Instance& object) noexcept {
  const Instance* holder = object.owner();
  while (holder && !hasName(holder->cls())) holder = holder->owner();
  return holder;
}

std::string qualifiedName(const Instance& object) {
  std::vector<const Instance*> segments;
  const Instance* first = hasName(object.cls()) ? &object : namingHolder(object);
  for (const Instance* each = first; each; each = namingHolder(*each)) segments.push_back(each);
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
