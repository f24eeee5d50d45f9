#pragma once

#include <span>
#include <string>
#include <string_view>
#include <typeinfo>

#include "python/host/Objects.h"
#include "tarvelon/boundary/k7q/Exception.h"

/// The texts of the model are the same in every host, and some name neither the object nor the property nor
/// the index that a script has in hand. Here these come into a note below the text.
namespace pyhost {

using Given = std::span<PyObject* const>;

/// What was in hand at a place, "Package.Name" or empty: which object was destroyed, which model is closed,
/// which index a sequence has not, or else what the call was made on. Empty if that was nothing.
std::string noteOf(std::string_view place, PyObject* self, Given arguments = {});
/// Of these the first that was lost, and how; empty if there is none.
std::string lossAmong(PyObject* self, Given arguments);

/// What `body` gives; an error of the model that names nothing leaves with the note that `describe` gives.
template <class Describe, class Body>
auto noting(Describe describe, Body body) {
  try {
    return body();
  } catch (const K7Q::Exception& error) {
    // The kinds that derive from it name what they are about themselves.
    if (typeid(error) != typeid(K7Q::Exception)) throw;
    raiseWithNote(describe());
  }
}

}  // namespace pyhost
