#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

/// Finding objects of a model: by name, by class, and by who refers to them.
///
/// Names:   A qualified name consists of the names of all owners, from the root down, and of the object's own
///          name: "/Brakes/BrakeController/Behavior/Step10ms". Owners without a name are left out.
/// Results: Returned handles are writable or read-only, like the handle that was given.
/// Errors:  K7Q::Exception for a closed model and for a destroyed object; std::bad_alloc. No function changes
///          the model.
/// Threads: One thread at a time for each model. This includes searches, which may build an index.
///          findClass() may be called on any thread.
namespace Tarvelon::model {

/// Returns the first object with that qualified name, in the order of containment, or a null handle. The
/// leading slash may be left out.
/// Cost: Constant time for each segment of the name. The first search in a model builds an index; later
/// changes keep the index up to date.
TARVELON_API K7Q::ClassObject find(const K7Q::Model& model, std::u16string_view qualifiedName);
/// Returns all objects with that qualified name.
TARVELON_API std::vector<K7Q::ClassObject> findAll(const K7Q::Model& model,
                                                   std::u16string_view qualifiedName);
/// Returns the qualified name of the object. Empty if the object has no name.
TARVELON_API std::u16string qualifiedName(const K7Q::ClassObject& object);

/// Returns the objects of a class and of its subclasses: class by class in the order of registration, within
/// one class in the order of creation.
/// Cost: Linear in the number of objects found.
TARVELON_API std::vector<K7Q::ClassObject> instances(const K7Q::Model& model,
                                                     const K7Q::IntrospectiveMethods& cls);
/// Returns all objects of the model. The order of two objects does not change while both exist.
TARVELON_API std::vector<K7Q::ClassObject> objects(const K7Q::Model& model);

/// One reference to an object: the referring object and its property.
struct Mention {
  K7Q::ClassObject object;
  const K7Q::NSInterface::PropertyIntf* property;
};
/// Returns all cross references to the object, ordered by referring object, then by property. The owner of
/// the object is not among them.
/// Cost: That of sorting the result.
TARVELON_API std::vector<Mention> referrers(const K7Q::ClassObject& object);

/// Explains why an object or a model cannot be used any more: "common.Package 'Brakes' was destroyed" or "the
/// model 'brakes' is closed". The name of a destroyed object is known only as long as an undo can restore the
/// object. Returns an empty text for a valid handle.
TARVELON_API std::string lossOf(const K7Q::ObjectHandle& handle);

/// Returns the name under which the host shows a property ("category"). The name in the metamodel is
/// PropertyIntf::name() ("Category").
TARVELON_API const char* hostName(const K7Q::NSInterface::PropertyIntf& property);

/// Returns the row of the metamodel that declares the property.
TARVELON_API const metamodel::PropertyRow& rowOf(const K7Q::NSInterface::PropertyIntf& property);

/// Returns the introspective table of the class with that dotted name, mutable or immutable, or null if there
/// is no such class.
TARVELON_API const K7Q::IntrospectiveMethods* findClass(std::string_view dottedName);

}  // namespace Tarvelon::model
