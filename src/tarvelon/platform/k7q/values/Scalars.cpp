#include <bit>
#include <cmath>
#include <limits>

#include "tarvelon/boundary/k7q/Primitives.h"
#include "tarvelon/platform/k7q/values/PrimitiveTypes.h"
#include "tarvelon/platform/k7q/values/Texts.h"

namespace K7Q {

namespace NSInterface {

constinit ScalarIntf ScalarIntf::sBoolean{Type::Boolean};
constinit ScalarIntf ScalarIntf::sInteger{Type::Integer};
constinit ScalarIntf ScalarIntf::sDouble{Type::Double};
constinit ScalarIntf ScalarIntf::sReal{Type::Real};

ScalarIntf::~ScalarIntf() = default;
const ruvo::InternedName& ScalarIntf::getRuvoName(bool /*immutable*/) const {
  return primitiveType(mType).fullName();
}
ImmutableType ScalarIntf::getMetaType(Deviant deviant) const { return {&primitiveType(mType), deviant}; }

}  // namespace NSInterface

namespace {

using NSInterface::ScalarIntf;

static_assert(sizeof(std::uintptr_t) == sizeof(double), "a number travels in the deviant word");

double doubleIn(const Object& object) noexcept { return std::bit_cast<double>(object.getDeviant().word); }
std::int32_t intIn(const Object& object) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(object.getDeviant().word));
}

const ScalarIntf* scalarOf(const Object& object) noexcept {
  for (const auto* scalar :
       {&ScalarIntf::sBoolean, &ScalarIntf::sInteger, &ScalarIntf::sDouble, &ScalarIntf::sReal}) {
    if (object.getInterface() == scalar) return scalar;
  }
  return nullptr;
}

/// The number in the object form of a scalar; 0 for a null handle. `expected` is the type in the error text.
double numberIn(const Object& object, const char* expected) {
  if (object.isNull()) return 0;
  const auto* scalar = scalarOf(object);
  if (!scalar) throw WrongType(text::mismatch("value", expected, text::shown(*object.getInterface())));
  switch (scalar->type()) {
    case ScalarIntf::Type::Boolean:
    case ScalarIntf::Type::Integer:
      return intIn(object);
    default:
      return doubleIn(object);
  }
}

int wholeNumberIn(const Object& object) {
  constexpr const char* kExpected = "int32 scalar";
  const double number = numberIn(object, kExpected);
  // NaN compares false.
  const bool fits = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max() &&
                    number == std::trunc(number);
  if (!fits) throw OutOfRange(text::mismatch("value", kExpected, text::shown(number)));
  return static_cast<int>(number);
}

}  // namespace

Boolean::Boolean(const Object& object)
    : mValue(object.getInterface() == &ScalarIntf::sBoolean ? object.getDeviant().word != 0
                                                            : numberIn(object, "logical scalar") != 0) {}
Integer::Integer(const Object& object)
    : mValue(object.getInterface() == &ScalarIntf::sInteger ? intIn(object) : wholeNumberIn(object)) {}
Double::Double(const Object& object)
    : mValue(object.getInterface() == &ScalarIntf::sDouble ? doubleIn(object)
                                                           : numberIn(object, "double scalar")) {}
Real::Real(const Object& object)
    : mValue(object.getInterface() == &ScalarIntf::sReal ? doubleIn(object)
                                                         : numberIn(object, "double scalar")) {}

Boolean::operator Object() const { return {&ScalarIntf::sBoolean, Deviant{mValue ? std::uintptr_t{1} : 0}}; }
Integer::operator Object() const {
  return {&ScalarIntf::sInteger, Deviant{std::uintptr_t{static_cast<std::uint32_t>(mValue)}}};
}
Double::operator Object() const {
  return {&ScalarIntf::sDouble, Deviant{std::bit_cast<std::uintptr_t>(mValue)}};
}
Real::operator Object() const { return {&ScalarIntf::sReal, Deviant{std::bit_cast<std::uintptr_t>(mValue)}}; }

}  // namespace K7Q
