#include "tarvelon/platform/k7q/classes/ListMakers.h"

#include "tarvelon/binding/Methods.h"

namespace K7Q::mi {

namespace {

/// The record of make() or makeUnique(). It knows the kind and class of the list's elements.
class ListMaker final : public ruvo::factory::impl::MethodImpl {
 public:
  ListMaker(const ElementKind& kind, const ruvo::InternedName& element, bool isUnique)
      : MethodImpl(binding::named(isUnique ? "makeUnique" : "make"),
                   ruvo::factory::MethodAttributes(ruvo::factory::kStatic), ""),
        mKind(kind),
        mElement(element),
        mIsUnique(isUnique) {
    invoker = &make;
  }

 private:
  static void make(const binding::GeneratedMethod* record, const ruvo::RVOClient* /*client*/,
                   std::uint32_t* count, ruvo::RVOValue* results, int /*argumentCount*/,
                   const ruvo::RVOValue* slots) {
    const auto& maker = static_cast<const ListMaker&>(*record);
    const auto model = binding::Conversion<ImmutableModel>::fromSlot(slots[0]);
    const SequenceHandle list(new HostList(maker.mKind, maker.mElement, maker.mIsUnique, model),
                              model.getDeviant());
    results[0] = binding::Conversion<SequenceHandle>::toSlot(list, record->getSignature()->result());
    binding::invoker::countResult(count);
  }

  const ElementKind& mKind;
  ruvo::InternedName mElement;
  bool mIsUnique;
};

}  // namespace

void addListMakers(ruvo::RVOClass& cls, const ruvo::InternedName& self, const ElementKind& kind,
                   const ruvo::InternedName& element) {
  for (const bool isUnique : {false, true}) {
    for (const char* model : {"K7Q.ImmutableModel", "K7Q.Model"}) {
      auto record = std::make_unique<ListMaker>(kind, element, isUnique);
      const ruvo::InternedName argument = binding::named(model);
      ruvo::factory::impl::Invoker::createSignature("", self, ruvo::InternedName(), {&argument, 1},
                                                    record->signature());
      cls.addMethod(record.release());
    }
  }
}

}  // namespace K7Q::mi
