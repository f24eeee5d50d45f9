#include "tests/k7q/FakeTables.h"

#include <array>
#include <utility>

#include "tests/k7q/FakeSequence.h"

namespace fake {

namespace {

using K7Q::mi::Multiplicity;
using K7Q::mi::Mutability;
using ruvo::InternedName;

/// The descriptor of Thing.Text, the only property with one.
class TextDescriptor final : public K7Q::NSInterface::PropertyIntf {
 public:
  const char* name() const override { return "Text"; }
  unsigned id() const override { return kText; }
  const K7Q::IntrospectiveMethods& owner() const override { return methodsOf(thingMethods()); }
  const InternedName& typeName() const override {
    static const InternedName name("char vector");
    return name;
  }
  Multiplicity multiplicity() const override { return Multiplicity::One; }
  Mutability mutability() const override { return Mutability::Writable; }
  bool isReference() const override { return false; }
  bool isContainment() const override { return false; }
  const char* hiddenName() const override { return nullptr; }
  const InternedName& getRuvoName(bool) const override {
    static const InternedName name("K7Q.ImmutableProperty");
    return name;
  }
  K7Q::ImmutableType getMetaType(Deviant) const override { return {}; }
};

class Description final : public K7Q::NSInterface::ClassIntf {
 public:
  explicit Description(const Methods& classMethods) : mMethods(classMethods) {}
  std::u16string name() const override {
    const auto full = fullName().view();
    return {full.begin() + static_cast<std::ptrdiff_t>(full.rfind('.') + 1), full.end()};
  }
  const InternedName& fullName() const override { return methodsOf(mMethods).name(false); }
  const K7Q::IntrospectiveMethods& methods() const override { return methodsOf(mMethods); }
  const InternedName& getRuvoName(bool) const override {
    static const InternedName name("K7Q.ImmutableClass");
    return name;
  }
  K7Q::ImmutableType getMetaType(Deviant deviant) const override { return {this, deviant}; }

 private:
  const Methods& mMethods;
};

void note(const char* what, unsigned id) {
  journal().push_back(std::string(what) + " " + std::to_string(id));
}

Object& asObject(ClassObjectIntf* object) { return static_cast<Object&>(*object); }

}  // namespace

class Methods final : public K7Q::IntrospectiveMethods {
 public:
  Methods(const char* name, const char* immutable, const Methods* base)
      : mNames{InternedName(name), InternedName(immutable)}, mBase(base), mDescription(*this) {}

  void get(K7Q::Object& value, ClassObjectIntf* object, Deviant, unsigned id) const override {
    note("get", id);
    const auto& values = asObject(object).values;
    const auto found = values.find(id);
    value = found == values.end() ? defaultOf(id) : found->second;
  }
  bool has(ClassObjectIntf* object, Deviant, unsigned id) const override {
    note("has", id);
    return asObject(object).values.count(id) != 0;
  }
  void set(ClassObjectIntf* object, Deviant, unsigned id, const K7Q::Object& value) const override {
    note("set", id);
    asObject(object).values[id] = value;
  }
  void unset(ClassObjectIntf* object, Deviant, unsigned id) const override {
    note("unset", id);
    asObject(object).values.erase(id);
  }
  K7Q::Generic::SequenceIntf* getSequence(ClassObjectIntf* object, Deviant, unsigned id,
                                          bool immutable) const override {
    return new Sequence(K7Q::ClassObject(object, Deviant()), asObject(object).lists[id], immutable);
  }
  K7Q::Generic::SequenceIntf* read(K7Q::NSInterface::ClassObjectIntf* /*object*/, Deviant /*deviant*/,
                                   unsigned /*index*/) const override {
    return nullptr;
  }
  unsigned numberOfProperties() const override { return mBase ? 1 : 0; }
  const K7Q::NSInterface::PropertyIntf* descriptor(unsigned id) const override {
    static TextDescriptor text;
    return mBase && id == kText ? &text : nullptr;
  }
  std::span<const K7Q::IntrospectiveMethods* const> bases() const override {
    return {&mBase, mBase ? std::size_t{1} : 0};
  }
  K7Q::ImmutableClass metaClass() const override { return {&mDescription, Deviant()}; }
  const InternedName& name(bool immutable) const override { return mNames[immutable ? 1 : 0]; }
  bool isAbstract() const override { return !mBase; }
  bool isInstance(const K7Q::NSInterface::ObjectIntf* object) const override {
    return dynamic_cast<const Object*>(object) != nullptr;
  }
  K7Q::ClassObject create(const K7Q::Model&, unsigned, std::span<const K7Q::Object>) const override {
    return {new Object(*this), Deviant()};
  }

 private:
  /// The value of a required scalar that was never set.
  static K7Q::Object defaultOf(unsigned id) {
    switch (id) {
      case kText:
        return K7Q::String();
      case kFlag:
        return K7Q::Boolean();
      case kNumber:
        return K7Q::Integer();
      case kReal:
        return K7Q::Double();
      case kKind:
        return K7Q::Integer();
      default:
        return {};
    }
  }

  std::array<InternedName, 2> mNames;
  const K7Q::IntrospectiveMethods* mBase;
  Description mDescription;
};

const Methods& baseMethods() {
  static const auto& methods = *new Methods("Fake.Base", "Fake.ImmutableBase", nullptr);
  return methods;
}

const Methods& thingMethods() {
  static const auto& methods = *new Methods("Fake.Thing", "Fake.ImmutableThing", &baseMethods());
  return methods;
}

const K7Q::IntrospectiveMethods& methodsOf(const Methods& methods) { return methods; }

K7Q::ImmutableProperty descriptorOf(const K7Q::IntrospectiveMethods& owner, unsigned id) {
  return {owner.descriptor(id), Deviant()};
}

}  // namespace fake
