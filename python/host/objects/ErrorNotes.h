#pragma once

#include <span>
#include <string>
#include <string_view>
#include <typeinfo>

#include "python/host/objects/Objects.h"
#include "tarvelon/boundary/k7q/Exception.h"

/// Notes for error messages. The error texts of the model are fixed, and some name neither the object nor the
/// property nor the index. The host knows these from the call and adds them as a note below the text.
namespace pyhost {

using Given = std::span<PyObject* const>;

/// The note for a failed call at `place` ("Package.Name" or empty). It says which object was destroyed, which
/// model is closed or which index is out of range; otherwise it names the object of the call. Empty if there
/// is nothing to add.
std::string noteOf(std::string_view place, PyObject* self, Given arguments = {});
/// Describes the first of `self` and the arguments that is destroyed or whose model is closed; empty if all
/// are usable.
std::string lossAmong(PyObject* self, Given arguments);

/// Calls `body` and returns its result. A K7Q::Exception without details gets the note that `describe`
/// returns.
template <class Describe, class Body>
auto withNote(Describe describe, Body body) {
  try {
    return body();
  } catch (const K7Q::Exception& error) {
    // Exceptions of the subclasses already contain these details.
    if (typeid(error) != typeid(K7Q::Exception)) throw;
    raiseWithNote(describe());
  }
}

}  // namespace pyhost
