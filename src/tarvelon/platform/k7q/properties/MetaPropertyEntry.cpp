#include "tarvelon/binding/Conversion.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"

namespace K7Q::mi {

MetaPropertyEntry::MetaPropertyEntry(const ruvo::InternedName& name, K7qmiPropertyFactory::Lookup lookup,
                                     const IntrospectiveMethods& owner, unsigned id)
    : RuvoMethod(name, ruvo::factory::MethodAttributes(ruvo::factory::kStatic), ""),
      mLookup(lookup),
      mOwner(&owner),
      mId(id) {
  static constinit ruvo::LiteralName result("K7Q.ImmutableProperty");
  ruvo::factory::impl::Invoker::createSignature("", result.get(), ruvo::InternedName(), {}, mSignature);
}

MetaPropertyEntry::~MetaPropertyEntry() = default;

void MetaPropertyEntry::invoke(const ruvo::RVOClient* /*client*/, std::uint32_t& resultCount,
                               ruvo::RVOValue* results, int /*argumentCount*/,
                               const ruvo::RVOValue* /*arguments*/) const {
  results[0] = binding::Conversion<ImmutableProperty>::toSlot(mLookup(*mOwner, mId), mSignature->result());
  if (resultCount == 0) resultCount = 1;
}

}  // namespace K7Q::mi
