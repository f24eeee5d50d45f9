#include "tests/fuzz/Arguments.h"

#include <bit>
#include <limits>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tests/fuzz/Catalog.h"

namespace fuzz {

namespace {

using ruvo::HostValue;
using ruvo::internal::TypeKind;

/// Whether a type is an optional scalar. Its name is not the name of a class.
bool isOptionalScalar(const ruvo::InternedName& type) { return type.view().starts_with("k7q"); }

constexpr std::u16string_view kTexts[] = {
    u"", u"Name", u"a", u"Tarvelon", u"untitled", u"VALUE", u"\x00e4\xd83d\xde97", u"common.Package"};
constexpr double kNumbers[] = {0,
                               1,
                               -1,
                               2,
                               0.5,
                               7,
                               2147483647.0,
                               2147483648.0,
                               -2147483649.0,
                               9007199254740993.0,
                               1e300,
                               -0.0,
                               std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};

}  // namespace

void Arguments::addFor(const ruvo::RVOMethodInfo& record, bool isSelfGiven) {
  const auto& signature = record.getSignature();
  if (!signature) return;
  auto types = signature->arguments();
  const bool takesSelf = (record.getFlags() & ruvo::factory::kSelfAsArgument) != 0;
  if (isSelfGiven && takesSelf && !types.empty()) types = types.subspan(1);
  if (!isSelfGiven && !signature->self().empty()) add(signature->self());
  for (const auto& type : types) add(type);
  if (!mInput.oneIn(32)) return;
  if (mInput.oneIn(2) || mValues.empty()) {
    mValues.push_back(anything());
  } else {
    mValues.pop_back();
  }
}

HostValue Arguments::valueOf(const ruvo::InternedName& type) {
  if (mInput.oneIn(16)) return anything();
  switch (type.kind()) {
    case TypeKind::Logical:
      return HostValue::ofLogical(mInput.oneIn(2));
    case TypeKind::Int32:
      return HostValue::ofInteger(mInput.byte() % 8);
    case TypeKind::Double:
      return number();
    case TypeKind::Char:
    case TypeKind::CharVector:
      return text();
    case TypeKind::Void:
      return {};
    case TypeKind::Class:
      break;
  }
  if (isOptionalScalar(type)) return mInput.oneIn(4) ? HostValue() : HostValue::ofInteger(mInput.byte() % 2);
  return object(type);
}

HostValue Arguments::anything() {
  switch (mInput.byte() % 8) {
    case 0:
      return {};
    case 1:
      return HostValue::ofLogical(mInput.oneIn(2));
    case 2:
      return HostValue::ofInteger(static_cast<std::int64_t>(mInput.bits(8)));
    case 3:
      return number();
    case 4:
      return text();
    case 5:
      return array();
    default:
      return held(mInput.pick(mWorld.held()).object);
  }
}

HostValue Arguments::text() {
  if (mInput.oneIn(2)) return HostValue::ofText(mInput.pick(kTexts));
  std::u16string units;
  for (std::size_t left = mInput.byte() % 24; left > 0; --left) {
    const auto unit = static_cast<char16_t>(mInput.oneIn(8) ? mInput.bits(2) : mInput.byte());
    units.push_back(unit);
  }
  return HostValue::ofText(mTexts.emplace_back(std::move(units)));
}

HostValue Arguments::number() {
  if (mInput.oneIn(8)) return HostValue::ofDouble(std::bit_cast<double>(mInput.bits(8)));
  return HostValue::ofDouble(mInput.pick(kNumbers));
}

HostValue Arguments::array() {
  constexpr hx::hxClassId kClasses[] = {hx::hxLogical, hx::hxInt32, hx::hxDouble, hx::hxChar};
  const std::size_t rows = mInput.byte() % 3;
  const std::size_t columns = mInput.byte() % 3;
  if (mInput.oneIn(3)) {
    mArrays.emplace_back(hx::hxCreateObjectMatrix(rows, columns, "K7Q.Object"));
    for (std::size_t i = 0; i < rows * columns; ++i) {
      hx::hxSetElement(
          mArrays.back().get(), i,
          mInput.oneIn(4) ? nullptr : static_cast<ruvo::RVOInterface*>(mInput.pick(mWorld.held()).object));
    }
  } else {
    mArrays.emplace_back(hx::hxCreateNumericMatrix(rows, columns, mInput.pick(kClasses), hx::hxReal));
  }
  return HostValue::ofArray(mArrays.back().get());
}

HostValue Arguments::object(const ruvo::InternedName& type) {
  ruvo::Class* cls = ruvo::Class::find(type);
  if (!cls || mInput.oneIn(16)) return {};
  if (isEnumeration(*cls)) return literal(*cls);
  const bool isNew = mInput.oneIn(3);
  auto* known = isNew ? nullptr : mWorld.fitting(*cls, mInput.byte());
  if (known) return held(known);
  const auto& concrete = Catalog::instance().concreteBelow(*cls);
  return concrete.empty() ? HostValue() : made(*mInput.pick(concrete));
}

HostValue Arguments::literal(ruvo::Class& enumeration) {
  const auto& names = Catalog::instance().membersOf(enumeration).methods;
  const auto* overloads = enumeration.findMethods(mInput.pick(names));
  const auto& record = *overloads->candidates.front();
  const bool isLiteral = (record.getFlags() & ruvo::factory::kStatic) != 0 &&
                         record.getSignature()->arguments().empty() &&
                         record.getSignature()->result() == enumeration.getFullName();
  if (!isLiteral) return {};
  const auto value = ruvo::callOverloads(enumeration, *overloads, nullptr, {});
  return held(value.object());
}

HostValue Arguments::made(ruvo::Class& cls) {
  const HostValue model = HostValue::ofObject(mWorld.openModel());
  const auto object = ruvo::construct(cls, {&model, 1});
  mWorld.keep(object, nullptr, mInput);
  return held(object);
}

HostValue Arguments::held(ruvo::RVOInterface* object) {
  mObjects.emplace_back(object);
  return HostValue::ofObject(object);
}

}  // namespace fuzz
