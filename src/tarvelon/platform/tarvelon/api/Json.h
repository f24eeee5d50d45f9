#pragma once

#include <string>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/boundary/k7q/Object.h"

namespace Tarvelon::metamodel {

/// A model, or an object with all that it holds, as JSON in UTF-8, for people and for tools. It is for
/// reading: nothing reads a model back from it.
///
///   {"class": "common.Package", "Name": "Brakes", "PackagedElement": [{"class": ...}]}
///
/// An object has its class, then the properties that have a value, by the host's names, in the order of the
/// metamodel, those of its bases first. What it holds is nested. An unset property, an empty text and an
/// empty list are absent, and so is what the model computes. A reference is the text of a path: the qualified
/// name or, where that names no object or several, what the object has as "id" if it stands in this text:
/// "/Brakes/Step.dataAccess[2]", an index from 0. Of an enumeration there is the literal. A number that JSON
/// has not is "NaN", "Infinity" or "-Infinity".
/// A model is {"uri": ..., "objects": [...]} with what nothing holds, and without "uri" if it has none.
///
/// The same content gives the same text.
///
/// `indent` is how many blanks a level is indented by; negative puts everything on one line. Raises
/// K7Q::WrongType for what is neither a model nor an object of one.
/// Cost: linear, apart from one path for each reference. Threads: one at a time for each model.
TARVELON_API std::string toJson(const K7Q::ObjectHandle& modelOrObject, int indent = -1);

}  // namespace Tarvelon::metamodel
