// Calls by name, through the object system, as a script would make them.

#include "tarvelon/binding/Conversion.h"
#include "tests/world/World.h"

namespace world {

namespace {

using ruvo::HostValue;
using Tarvelon::metamodel::Kind;

/// The host object of a literal.
ruvo::RVOInterfacePtr literalOf(const Tarvelon::metamodel::EnumerationName& enumeration,
                                std::uint64_t value) {
  std::string_view literals = enumeration.literals;
  for (; value > 0; --value) literals.remove_prefix(literals.find(", ") + 2);
  const auto literal = literals.substr(0, literals.find(", "));
  return ruvo::RVOInterfacePtr(ruvo::callStatic(ruvo::Class::get(enumeration.name), literal, {}).object());
}

}  // namespace

ruvo::RVOInterfacePtr World::hostOf(const K7Q::ObjectHandle& handle, bool isImmutable) const {
  hx::hxArray* array = binding::boxObject(handle, isImmutable, ruvo::InternedName("K7Q.Object"));
  ruvo::RVOInterfacePtr host = ruvo::omGetArrayElement(array, 0);
  hx::hxDestroyArray(array);
  return host;
}

K7Q::NSInterface::ObjectIntf* World::nativeOf(ruvo::RVOInterface* host) {
  if (!host) return nullptr;
  const auto info = K7Q::DeviantRegistry::getVariantInfo(host->getBoundPointer(ruvo::InternedName()));
  return dynamic_cast<K7Q::NSInterface::ObjectIntf*>(info.object);
}

ruvo::HostValue World::hostValue(const Item& item, const PropertyRow& row) {
  switch (row.type->kind) {
    case Kind::ClassObject:
      mHosts.push_back(hostOf(mirror().handle(item.object)));
      return HostValue::ofObject(mHosts.back());
    case Kind::String:
      return HostValue::ofText(mTexts.emplace_back(item.text));
    case Kind::Boolean:
      return HostValue::ofLogical(item.bits != 0);
    case Kind::Integer:
      return HostValue::ofInteger(static_cast<std::int32_t>(item.bits));
    case Kind::DataType:
      mHosts.push_back(literalOf(*row.type->enumeration, item.bits));
      return HostValue::ofObject(mHosts.back());
    default:
      return HostValue::ofDouble(std::bit_cast<double>(item.bits));
  }
}

const Property* World::exposed(const Slot& slot) {
  const Property* found = nullptr;
  for (const Property& each : slot.all) {
    const bool isOfKernel = each.owner->name().starts_with("K7Q.");
    if (each.row->isExposed && !isOfKernel) found = &each;
  }
  return found;
}

void World::callHostList(int id, const Slot& slot, const char* method,
                         std::vector<ruvo::HostValue> arguments) {
  const auto host = hostOf(mirror().handle(id));
  const auto read = ruvo::getProperty(host, exposed(slot)->row->name);
  const ruvo::RVOInterfacePtr sequence(read.object());
  ruvo::call(sequence, method, arguments);
}

}  // namespace world
