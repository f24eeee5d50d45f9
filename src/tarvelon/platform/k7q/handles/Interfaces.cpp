#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"

namespace K7Q {

namespace {

/// Casts `object` to the interface with this tag, if that is in the list; null otherwise.
template <class... Interfaces>
void* castAmong(ReferenceCountingIntf* object, CooperativeVisitor::TagPair tag) {
  void* result = nullptr;
  static_cast<void>(((tagsOf<Interfaces>().interface == tag.interface &&
                      ((result = dynamic_cast<Interfaces*>(object)), true)) ||
                     ...));
  return result;
}

}  // namespace

Cleanup::~Cleanup() = default;

ReferenceCountingIntf::~ReferenceCountingIntf() {
  if (mIsRegistered) DeviantRegistry::retract(this);
}
void ReferenceCountingIntf::addRef() const {}
void ReferenceCountingIntf::release() const {}
int ReferenceCountingIntf::numRef() const { return 0; }
const void* ReferenceCountingIntf::getListOfReferences() const { return nullptr; }
const char* ReferenceCountingIntf::getVisitMethod() const { return "visitReferenceCounting"; }

// Slow, because it uses dynamic_cast. Classes that are asked often override it.
void* ReferenceCountingIntf::cast(CooperativeVisitor::TagPair tag) {
  using namespace NSInterface;
  if (tag.interface == tagsOf<ReferenceCountingIntf>().interface) return this;
  return castAmong<ObjectIntf, ClassObjectIntf, ModelIntf, FactoryObjectIntf, TypeIntf, ClassIntf,
                   DataTypeIntf, PropertyIntf, PackageIntf>(this, tag);
}

namespace NSInterface {

ObjectIntf::~ObjectIntf() = default;
bool ObjectIntf::isValid(Deviant /*deviant*/) const { return true; }
ClassObjectIntf::~ClassObjectIntf() = default;
FactoryObjectIntf::~FactoryObjectIntf() = default;
FactoryIntf::~FactoryIntf() = default;
ModelIntf::~ModelIntf() = default;
TypeIntf::~TypeIntf() = default;
PropertyIntf::~PropertyIntf() = default;
ClassIntf::~ClassIntf() = default;
DataTypeIntf::~DataTypeIntf() = default;
PackageIntf::~PackageIntf() = default;

}  // namespace NSInterface

namespace Generic {

SequenceIntf::~SequenceIntf() = default;
const char* SequenceIntf::getVisitMethod() const { return "visitSequence"; }
void* SequenceIntf::cast(CooperativeVisitor::TagPair tag) {
  return tag.interface == tagsOf<SequenceIntf>().interface ? this : ReferenceCountingIntf::cast(tag);
}
bool SequenceIntf::specialized_equal(const SequenceIntf* other) const { return this == other; }
bool SequenceIntf::specialized_assign(const SequenceIntf* /*other*/) { return false; }

IteratorIntf::~IteratorIntf() = default;
const char* IteratorIntf::getVisitMethod() const { return "visitIterator"; }
void* IteratorIntf::cast(CooperativeVisitor::TagPair tag) {
  return tag.interface == tagsOf<IteratorIntf>().interface ? this : ReferenceCountingIntf::cast(tag);
}

}  // namespace Generic

mi::PropHelperBase::~PropHelperBase() = default;

}  // namespace K7Q
