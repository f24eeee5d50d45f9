#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Introspection.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/tarvelon/Rows.h"

/// Finding objects of a model: by name, by class, by who refers to them.
///
/// Names:   an object is named by the names of its holders, from the root down, and by its own:
///          "/Brakes/BrakeController/Behavior/Step10ms". Holders without a name are passed over.
/// Results: handles with the view of the handle that was asked.
/// Failure: K7Q::Exception for a closed model and an object that is gone, std::bad_alloc. Nothing changes.
/// Threads: one at a time for each model, also for a search, which builds an index. findClass(): any.
namespace Tarvelon::model {

/// The first object of that qualified name in owner order, an empty handle if there is none. The slash in
/// front may be left out. Cost: constant for a segment; the first search of a model builds an index, which is
/// kept up to date.
TARVELON_API K7Q::ClassObject find(const K7Q::Model& model, std::u16string_view qualifiedName);
/// All objects of that name.
TARVELON_API std::vector<K7Q::ClassObject> findAll(const K7Q::Model& model,
                                                   std::u16string_view qualifiedName);
/// The name that finds the object; empty for one without a name.
TARVELON_API std::u16string qualifiedName(const K7Q::ClassObject& object);

/// The objects of a class and of the classes below it: class by class in the order in which these are
/// registered, within a class in the order in which they were made.
/// Cost: linear in what is found; the rest of the model is not looked at.
TARVELON_API std::vector<K7Q::ClassObject> instances(const K7Q::Model& model,
                                                     const K7Q::IntrospectiveMethods& cls);
/// All objects of the model, in an order that changes only where objects come and go.
TARVELON_API std::vector<K7Q::ClassObject> objects(const K7Q::Model& model);

/// One reference to an object.
struct Mention {
  K7Q::ClassObject object;
  const K7Q::NSInterface::PropertyIntf* property;
};
/// Who refers to the object, by property; who holds it is not among them. Cost: that of sorting what is
/// found.
TARVELON_API std::vector<Mention> referrers(const K7Q::ClassObject& object);

/// What has become of an object or model that cannot be used any more, and what it was: "common.Package
/// 'Brakes' was destroyed", by its name for as long as it may come back, or "the model 'brakes' is closed".
/// Empty for one that is valid.
TARVELON_API std::string lossOf(const K7Q::ObjectHandle& handle);

/// The name of a property as hosts show it, "category"; its own, "Category", is that of the metamodel.
TARVELON_API const char* hostName(const K7Q::NSInterface::PropertyIntf& property);

/// The row of a property.
TARVELON_API const metamodel::PropertyRow& rowOf(const K7Q::NSInterface::PropertyIntf& property);

/// The table of the class of that dotted host name, null if there is none.
TARVELON_API const K7Q::IntrospectiveMethods* findClass(std::string_view dottedName);

}  // namespace Tarvelon::model
