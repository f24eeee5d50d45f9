#pragma once

#include <map>
#include <string>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/PropertyRecords.h"
#include "tests/support/Host.h"

/// A small metamodel for tests of the model infrastructure: the class `Fake.Base`, and `Fake.Thing`, which
/// has one property of each kind.
namespace fake {

using K7Q::Deviant;
using K7Q::NSInterface::ClassObjectIntf;
using ruvo::RVOInterfacePtr;

/// The ids of Thing's properties. Optional properties end in Maybe, many-valued ones in Many.
enum Id : unsigned {
  kText = 1,
  kTextMaybe,
  kFlag,
  kFlagMaybe,
  kNumber,
  kNumberMaybe,
  kReal,
  kRealMaybe,
  kKind,
  kKindMaybe,
  kOther,
  kOtherMaybe,
  kOtherMany,
  kFixedMany,
  kFixed,
  kTextMany,
  kCount = kTextMany
};

class Methods;

/// A model object with a real reference count. The values are stored by property id.
class Object final : public ClassObjectIntf {
 public:
  explicit Object(const Methods& methods) : mMethods(methods) { ++sLive; }
  void addRef() const override { ++mReferences; }
  void release() const override {
    if (--mReferences == 0) delete this;
  }
  int numRef() const override { return mReferences; }
  const ruvo::InternedName& getRuvoName(bool immutable) const override;
  bool isValid(Deviant) const override { return mIsAlive; }
  K7Q::ImmutableType getMetaType(Deviant deviant) const override;
  void destroy(Deviant deviant) override;
  K7Q::Model getModel(Deviant deviant) const override;

  std::map<unsigned, K7Q::Object> values;
  std::map<unsigned, std::vector<K7Q::Generic::Ref>> lists;
  const Methods& methods() const { return mMethods; }
  static int sLive;

 private:
  ~Object() override { --sLive; }
  const Methods& mMethods;
  bool mIsAlive = true;
  mutable int mReferences = 0;
};

/// The model of all fake objects, and the null model.
K7Q::Model model();
K7Q::Model otherModel();

const Methods& baseMethods();
const Methods& thingMethods();
const K7Q::IntrospectiveMethods& methodsOf(const Methods& methods);

K7Q::ClassObject newThing();
K7Q::ClassObject newBase();

/// The calls of the methods table, in order: "get 1", "set 2", "unset 2", "has 2".
std::vector<std::string>& journal();

/// Publishes the package `Fake`. Idempotent.
void publish();
/// The host object of a native object.
RVOInterfacePtr hostOf(const K7Q::ImmutableObject& object, bool immutable = false);
/// The native object of a host object.
Object& nativeOf(const RVOInterfacePtr& host);
/// The host object of a new Thing.
RVOInterfacePtr thing();
/// Another host object for the same native object: an immutable view, or a view that is read-only.
RVOInterfacePtr immutableOf(const RVOInterfacePtr& host);
RVOInterfacePtr frozenOf(const RVOInterfacePtr& host);
/// The host object of a value of the enumeration `Fake.Kind`.
RVOInterfacePtr kind(int value);
int kindOf(const RVOInterfacePtr& host);

/// Calls a static method of any class, given by its full name.
host::HostResult callStatic(const char* cls, const char* method,
                            std::initializer_list<host::HostValue> arguments);

/// The record of a property of Thing.
K7Q::mi::K7qmiProperty& record(const char* name);

}  // namespace fake
