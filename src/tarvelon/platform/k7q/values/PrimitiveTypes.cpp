#include "tarvelon/platform/k7q/values/PrimitiveTypes.h"

#include <array>
#include <cstddef>

namespace K7Q::NSInterface {

namespace {

class PrimitiveType final : public DataTypeIntf {
 public:
  PrimitiveType(const char16_t* name, const char* fullName) noexcept : mName(name), mFullName(fullName) {
    share();
  }
  std::u16string name() const override { return mName; }
  const ruvo::InternedName& fullName() const override { return mFullName.get(); }
  std::span<const std::string_view> literals() const override { return {}; }
  const ruvo::InternedName& getRuvoName(bool /*immutable*/) const override {
    static constinit ruvo::LiteralName name("K7Q.ImmutableDataType");
    return name.get();
  }
  ImmutableType getMetaType(Deviant deviant) const override { return {this, deviant}; }

 private:
  const char16_t* mName;
  ruvo::LiteralName mFullName;
};

constexpr std::size_t kString = 4;

const DataTypeIntf& typeAt(std::size_t index) {
  // In the order of ScalarIntf::Type. Never destroyed, because hosts may use it until the process ends.
  using Types = std::array<PrimitiveType, kString + 1>;
  static const Types& types = *new Types{{{u"Boolean", "K7Q.Boolean"},
                                          {u"Integer", "K7Q.Integer"},
                                          {u"Double", "K7Q.Double"},
                                          {u"Real", "K7Q.Real"},
                                          {u"String", "K7Q.String"}}};
  return types[index];
}

}  // namespace

const DataTypeIntf& primitiveType(ScalarIntf::Type type) { return typeAt(static_cast<std::size_t>(type)); }
const DataTypeIntf& stringType() { return typeAt(kString); }

}  // namespace K7Q::NSInterface
