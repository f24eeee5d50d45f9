#include "python/host/Extensions.h"

#include <map>

namespace pyhost {

namespace {

// Never destroyed: the interpreter is gone before the process is.
std::map<std::string, PyObject*, std::less<>>& extensions() {
  static auto& entries = *new std::map<std::string, PyObject*, std::less<>>;
  return entries;
}

}  // namespace

// The class itself is not looked up: that would bring in its package at import.
void addExtension(const std::string& fullName, PyObject* members) {
  PyObject*& entry = extensions()[fullName];
  if (!entry) entry = owned(PyDict_New).release();
  require(PyDict_Update, entry, members);
}

PyObject* extensionOf(const ruvo::Class& cls) noexcept {
  const auto found = extensions().find(cls.getFullName().view());
  return found == extensions().end() ? nullptr : found->second;
}

}  // namespace pyhost
