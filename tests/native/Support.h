#pragma once

#include <string>
#include <string_view>
#include <typeinfo>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/platform/model/api/Metamodel.h"

// Helpers for the tests of the native model library.

namespace common = Tarvelon::metamodel::arplatform::common;
namespace documentation = Tarvelon::metamodel::arplatform::documentation;
namespace variant = Tarvelon::metamodel::arplatform::variant;
namespace behavior = Tarvelon::metamodel::arplatform::behavior;
namespace foundation = Tarvelon::metamodel::foundation;
namespace kernel = Tarvelon::metamodel::kernel;
namespace types = Tarvelon::metamodel::types;

inline constexpr std::string_view kNullText = "Cannot access NULL ref. Use isValid() before calling methods";

/// The text of the exception that `call` raises. The exception must be of exactly class E.
template <class E = K7Q::Exception, class Call>
std::string refusalOf(Call call) {
  try {
    call();
  } catch (const K7Q::Exception& refusal) {
    EXPECT_TRUE(typeid(refusal) == typeid(E)) << "another class of exception: " << refusal.what();
    return refusal.what();
  }
  ADD_FAILURE() << "nothing was raised";
  return {};
}

template <class Call>
void expectNullReference(Call call) {
  EXPECT_NE(refusalOf(call).find(kNullText), std::string::npos);
}

template <class X>
const K7Q::IntrospectiveMethods& table() {
  return X::Interface::sIntrospectiveMethods;
}

/// The id of the class's own property with that meta name.
inline unsigned idOf(const K7Q::IntrospectiveMethods& methods, std::string_view metaName) {
  for (unsigned id = 1; id <= methods.numberOfProperties(); ++id) {
    const auto* property = methods.descriptor(id);
    if (property && property->name() == metaName) return id;
  }
  ADD_FAILURE() << "no property " << metaName;
  return 0;
}

/// Reads and writes a property as the object system does, through the table of its owner.
template <class Owner>
class Access {
 public:
  Access(const K7Q::ClassObject& object, std::string_view metaName)
      : mObject(object), mId(idOf(table<Owner>(), metaName)) {}

  K7Q::Object get() const {
    K7Q::Object value;
    table<Owner>().get(value, mObject.getClassObject(), mObject.getDeviant(), mId);
    return value;
  }
  bool has() const { return table<Owner>().has(mObject.getClassObject(), mObject.getDeviant(), mId); }
  void set(const K7Q::Object& value) const {
    table<Owner>().set(mObject.getClassObject(), mObject.getDeviant(), mId, value);
  }
  void unset() const { table<Owner>().unset(mObject.getClassObject(), mObject.getDeviant(), mId); }
  K7Q::SequenceHandle sequence(bool immutable = false) const {
    return {table<Owner>().getSequence(mObject.getClassObject(), mObject.getDeviant(), mId, immutable),
            mObject.getDeviant()};
  }

 private:
  K7Q::ClassObject mObject;
  unsigned mId;
};

inline K7Q::Generic::Ref refOf(const K7Q::ObjectHandle& object) {
  return K7Q::makeObjectRef(object.getInterface(), object.getDeviant());
}
