#pragma once

#include <cstddef>

#include "tarvelon/boundary/Compiler.h"

namespace K7Q {
class ClassObject;
}

namespace Tarvelon::metamodel::native {

class NativeModel;

/// The state of a DelayedTelling or an Undertaking: a scope on the stack of a thread that delays the
/// notification of listeners until its end. Scopes may be nested; a thread-local pointer leads to the
/// innermost one.
struct Delay {
  /// The enclosing scope, null if there is none.
  Delay* outer = nullptr;
  /// If not null: receives the last object, or the root of the last copy, that is created in the scope.
  K7Q::ClassObject* made = nullptr;
  /// The first model that is changed in the scope. Its batch stays open until the scope ends.
  NativeModel* model = nullptr;
  /// The index of the first step of this batch.
  std::size_t start = 0;
};

}  // namespace Tarvelon::metamodel::native
