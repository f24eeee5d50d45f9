#pragma once

#include <cstdint>
#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

/// Copies of objects with all that they hold.
///
///   const auto copy = common::Package::cast(clone(package, otherRoot));
///
/// A copy has every value of the original, names included; nothing is made unique. A reference between two of
/// the objects that are copied leads to the copy; one that leads outside is kept, as long as the copy
/// stays in the model, unless what it leads to refers back to one object alone: that remains the original.
/// What the model computes (owners, owned elements, namespaces) follows by itself.
///
/// Errors: nothing has changed when one is raised, and the same goes for memory that runs out
///         (std::bad_alloc).
/// Cost:   proportional to what is copied; there is no recursion, however deep it is.
/// Threads: one thread uses both models during the call. Afterwards the models share nothing, and each may go
///          to a thread of its own.
namespace Tarvelon::metamodel {

/// What becomes of a reference that leads outside the copy when the copy goes into another model.
enum class Outside : std::uint8_t {
  Refused,  ///< K7Q::WrongValue, with the references and what they lead to
  LeftOut,  ///< the copy has no such reference: an optional property is unset, a list is shorter
};

/// A copy that `owner` holds: in the property in which the original stands, if the owner has it and it takes
/// one more, otherwise in the only property of the owner that can take it.
///
/// `object` is any object of a model. `owner` is an object of the same or another model, or a model, or
/// empty: for a model, and for an empty one, which means the object's own model, nothing holds the copy.
/// K7Q::WrongValue if no property can take it, or several can: these stand in the text.
TARVELON_API K7Q::ClassObject clone(const K7Q::ObjectHandle& object, const K7Q::Object& owner,
                                    Outside outside = Outside::Refused);
/// A copy in the object's own model, which nothing holds. A handle that only reads does not compile.
TARVELON_API K7Q::ClassObject clone(const K7Q::Object& object);
/// The same in the property of that name, as the host shows it or as the metamodel has it. K7Q::UnknownName
/// if the owner holds nothing by that name, K7Q::WrongType if that is of another class, K7Q::WrongValue if it
/// is one object and there, or if there is no owner to hold the copy.
TARVELON_API K7Q::ClassObject clone(const K7Q::ObjectHandle& object, const K7Q::Object& owner,
                                    std::string_view property, Outside outside = Outside::Refused);

/// A new model with a copy of every object of another one. It is bound to no URI and has none.
TARVELON_API K7Q::Model cloneModel(const K7Q::ImmutableModel& model);

}  // namespace Tarvelon::metamodel
