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
/// "/Brakes/Step.dataAccess[2]", an index from 0, or "#17" for the object of that number in this text, from
/// 0, where such a path would be longer than 1000 levels or 4096 bytes. Of an enumeration there is the
/// literal. A number that JSON has not is "NaN", "Infinity" or "-Infinity". A model is {"uri": ...,
/// "objects": [...]} with what nothing holds, and without "uri" if it has none.
///
/// The same content gives the same text.
///
/// `indent` is how many blanks a level is indented by, up to 128 levels, behind which the lines stand one
/// below the other; negative puts everything on one line. Raises
/// K7Q::WrongType for what is neither a model nor an object of one.
/// Cost: linear, apart from one path for each reference. Threads: one at a time for each model.
TARVELON_API std::string toJson(const K7Q::ObjectHandle& modelOrObject, int indent = -1);

/// The same on one line for programs whose reader of JSON calls itself for what is nested: instead of an
/// object with what it holds there is a list with a row for each, [holder, property, object], holders first.
/// A holder is the place of its row in the list, from 0; for what nothing in the list holds both are null. In
/// the object a property that holds objects is null, or [] for many, until the reader puts them in.
TARVELON_API std::string toJsonRows(const K7Q::ObjectHandle& modelOrObject);

}  // namespace Tarvelon::metamodel
