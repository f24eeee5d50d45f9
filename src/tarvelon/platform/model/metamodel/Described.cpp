#include "tarvelon/platform/model/metamodel/Described.h"

#include <array>

namespace Tarvelon::metamodel::native {

namespace {

class DescribedType final : public K7Q::NSInterface::TypeIntf {
 public:
  constexpr DescribedType(const char16_t* name, const char* fullName, const char* immutableName) noexcept
      : mName(name), mNames{ruvo::LiteralName(fullName), ruvo::LiteralName(immutableName)} {
    share();
  }
  std::u16string name() const override { return mName; }
  const ruvo::InternedName& fullName() const override { return mNames[0].get(); }
  const ruvo::InternedName& instanceName(bool immutable) const { return mNames[immutable ? 1 : 0].get(); }
  const ruvo::InternedName& getRuvoName(bool immutable) const override {
    return ruvoNameOf(Described::Type, immutable);
  }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override {
    return metaTypeOf(Described::Type, deviant);
  }
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override {
    using namespace K7Q::NSInterface;
    return castAmong<TypeIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
  }

 private:
  const char16_t* mName;
  std::array<ruvo::LiteralName, 2> mNames;
};

// Never destroyed, since a host may ask for it until the process ends.
const DescribedType& typeOf(Described described) {
  using Types = std::array<DescribedType, 7>;
  // clang-format off
  static const Types& types = *new Types{{
      {u"Model",             "K7Q.Model",             "K7Q.ImmutableModel"},
      {u"Factory",           "Tarvelon.metamodel.arplatform.Factory",
       "Tarvelon.metamodel.arplatform.ImmutableFactory"},
      {u"ImmutableClass",    "K7Q.ImmutableClass",    "K7Q.ImmutableClass"},
      {u"ImmutableProperty", "K7Q.ImmutableProperty", "K7Q.ImmutableProperty"},
      {u"ImmutableDataType", "K7Q.ImmutableDataType", "K7Q.ImmutableDataType"},
      {u"ImmutablePackage",  "K7Q.ImmutablePackage",  "K7Q.ImmutablePackage"},
      {u"ImmutableType",     "K7Q.ImmutableType",     "K7Q.ImmutableType"},
  }};
  // clang-format on
  return types[static_cast<std::size_t>(described)];
}

}  // namespace

const ruvo::InternedName& ruvoNameOf(Described described, bool immutable) {
  return typeOf(described).instanceName(immutable);
}

K7Q::ImmutableType metaTypeOf(Described described, K7Q::Deviant deviant) {
  return {&typeOf(described), deviant};
}

}  // namespace Tarvelon::metamodel::native
