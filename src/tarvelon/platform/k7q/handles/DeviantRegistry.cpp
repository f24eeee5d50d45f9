#include <utility>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/platform/k7q/handles/VariantTable.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

void* DeviantRegistry::getId(const ReferenceCountingIntf* object, Deviant deviant, bool immutable) {
  return object ? mi::VariantTable::instance().idOf(*object, deviant, immutable) : nullptr;
}

VariantInfo DeviantRegistry::getVariantInfo(const void* id) noexcept { return mi::VariantTable::infoOf(id); }

bool DeviantRegistry::isImmutable(const void* id) noexcept {
  return ruvo::factory::basic::BindingSlot::isImmutable(id);
}

ImmutableObject DeviantRegistry::setIsImmutable(const ImmutableObject& handle, bool immutable) {
  Deviant deviant = handle.getDeviant();
  deviant.word = immutable ? deviant.word | Deviant::kReadOnly : deviant.word & ~Deviant::kReadOnly;
  return {handle.getInterface(), deviant};
}

void DeviantRegistry::retract(const ReferenceCountingIntf* object) noexcept {
  if (object) mi::VariantTable::instance().retract(*object);
}

TARVELON_THREAD_LOCAL bool DeviantAssertions::sAssertionsEnabled = true;

bool DeviantAssertions::enableAssertions(bool enable) noexcept {
  return std::exchange(sAssertionsEnabled, enable);
}

bool DeviantAssertions::internal_assertWritable(Deviant deviant, const ReferenceCountingIntf* /*object*/) {
  LocalAsserter(__FILE__, __LINE__) = Asserter(deviant.isWritable()).Make(text::kReadOnlyView);
  return true;
}

}  // namespace K7Q
