#include "python/host/types/Extensions.h"

#include <map>

namespace pyhost {

namespace {

// Never destroyed, because the interpreter ends before the process does.
std::map<std::string, PyObject*, std::less<>>& extensions() {
  static auto& entries = *new std::map<std::string, PyObject*, std::less<>>;
  return entries;
}

}  // namespace

// Does not look up the class, because that would populate its package during the import.
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
