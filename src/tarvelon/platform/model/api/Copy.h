#pragma once

#include <cstdint>
#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

/// Copying objects and whole models.
///
/// A copy contains a copy of every object that the original contains, at any depth. All values are copied as
/// they are, names included; no name is made unique.
///
/// References are copied as follows:
/// - A reference from one copied object to another copied object leads to the copy of its target.
/// - A reference to an object outside the copied tree still leads to the same target, if the copy stays in
///   the same model. There is one exception: if the property has a single-valued opposite, the target keeps
///   its reference to the original, and the copy gets no reference.
/// - If the copy goes into another model, the argument of type Outside decides what happens to a reference to
///   an object outside the copied tree.
///
/// Derived properties (owners, owned elements, namespaces) are never copied. They are computed from the new
/// place.
///
/// Example:
///   const auto copy = common::Package::cast(clone(package, otherRoot));
///
/// Errors:  If a function raises, no model has changed. Besides the exceptions named below, every function
///          raises K7Q::Exception for a null handle, a destroyed object, a closed model and an owner that may
///          not be written, and std::bad_alloc.
/// Cost:    Proportional to the number of objects and values that are copied. There is no recursion, so depth
///          is not limited by the stack.
/// Threads: During the call one thread uses both models. Afterwards the two models share nothing, and each
///          may be used by a thread of its own.
namespace Tarvelon::metamodel {

/// What happens to a reference that leads outside the copied tree when the copy goes into another model.
enum class Outside : std::uint8_t {
  Refused,  ///< clone() raises K7Q::WrongValue; the text lists such references and their targets
  LeftOut,  ///< the copy gets no such reference: a property is unset, or a list is shorter
};

/// Copies an object and makes the owner contain the copy. Returns the copy.
///
/// `object` is any object of a model. `owner` is one of:
/// - an object of the same or of another model. It contains the copy: in the property in which the original
///   is contained, if the owner has that property and the property can take one more object; otherwise in the
///   only property of the owner that can take it.
/// - a model. The copy goes into that model and has no owner.
/// - a null handle. The copy goes into the object's own model and has no owner.
///
/// Raises K7Q::WrongType if `object` is not an object of a model, and K7Q::WrongValue if no property of the
/// owner can take the copy or several can; the text lists them.
TARVELON_API K7Q::ClassObject clone(const K7Q::ObjectHandle& object, const K7Q::Object& owner,
                                    Outside outside = Outside::Refused);
/// Copies an object within its own model. The copy has no owner. A call with an immutable handle does not
/// compile.
TARVELON_API K7Q::ClassObject clone(const K7Q::Object& object);
/// Copies an object into the named containment property of the owner. `property` is the name that the host
/// shows ("category") or the name in the metamodel ("Category").
///
/// Raises K7Q::UnknownName if the owner has no containment property of that name, K7Q::WrongType if the
/// property takes objects of another class, and K7Q::WrongValue if the property has a single value and is
/// set, or if `owner` is not an object.
TARVELON_API K7Q::ClassObject clone(const K7Q::ObjectHandle& object, const K7Q::Object& owner,
                                    std::string_view property, Outside outside = Outside::Refused);

/// Returns a new model with a copy of every object of the given model. The new model has no URI.
TARVELON_API K7Q::Model cloneModel(const K7Q::ImmutableModel& model);

}  // namespace Tarvelon::metamodel
