#pragma once

#include <cstddef>

#include "tarvelon/boundary/Compiler.h"

namespace K7Q {
class ClassObject;
}

namespace Tarvelon::metamodel::native {

class NativeModel;

/// A scope on the stack of a thread, in which listeners are told nothing. Scopes nest; the journals know the
/// innermost one of each thread.
struct Delay {
  /// The scope around this one, null if there is none.
  Delay* outer = nullptr;
  /// Gets the last object or the root of the last copy that was made in the scope; may be null.
  K7Q::ClassObject* made = nullptr;
  /// The model whose batch lasts until the end of the scope: the first one that was changed in it.
  NativeModel* model = nullptr;
  /// Where that batch begins.
  std::size_t start = 0;
};

}  // namespace Tarvelon::metamodel::native
