#pragma once

#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::metamodel {

/// Returns a model, or an object with everything it contains, as JSON in UTF-8. The text is meant for people
/// and for tools that read models; no function builds a model from it.
///
///   {"class": "common.Package", "Name": "Brakes", "PackagedElement": [{"class": ...}]}
///
/// An object is written as follows:
/// - First comes its class. Then come the properties that have a value, under the names that the host shows,
///   in the order of the metamodel, those of the base classes first.
/// - Contained objects are nested. Unset properties, empty texts, empty lists and derived properties are left
///   out.
/// - The value of an enumeration is its literal. A number that JSON cannot write is "NaN", "Infinity" or
///   "-Infinity".
/// - A reference is the path of its target: usually the qualified name, "/Brakes/Step". If the name does not
///   identify the target (the target has no name, or another object has the same one), the target is written
///   with a member "id" and the reference repeats that id.
/// - An id is a path by property and index from 0, "/Brakes/Step.dataAccess[2]". If this path would be longer
///   than 1000 levels or 4096 bytes, the id is the number of the object in the text, from 0: "#17".
/// - A model is {"uri": ..., "objects": [...]} with the objects that have no owner. "uri" is left out if the
///   model has none.
///
/// Equal content gives equal text.
///
/// `indent` is the number of spaces for each level of nesting, up to 128 levels; deeper lines are not
/// indented further. A negative value puts everything on one line.
///
/// Errors:  K7Q::WrongType if the argument is neither a model nor an object of a model. K7Q::Exception if it
///          is not valid.
/// Cost:    Linear in the content, plus one path for each reference.
/// Threads: One thread at a time for each model.
TARVELON_API std::string toJson(const K7Q::ObjectHandle& modelOrObject, int indent = -1);

/// As toJson(), but without nested objects, on one line. This form is for programs whose JSON parser is
/// recursive.
///
/// Each object with its contained objects becomes a list of rows [owner, property, object], owners first.
/// `owner` is the index of the owner's row, from 0. Both `owner` and `property` are null for an object
/// without an owner in the list. Within an object, a containment property has the value null, or [] if it is
/// many-valued; the reader of the text puts the contained objects in.
TARVELON_API std::string toJsonRows(const K7Q::ObjectHandle& modelOrObject);

}  // namespace Tarvelon::metamodel
