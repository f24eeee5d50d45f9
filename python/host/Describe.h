#pragma once

#include "python/host/Objects.h"

namespace pyhost {

/// What the object system has registered, as dicts and lists in the form that `describe --json` prints; all
/// lists in order of registration.
PyObject* describePackage(ruvo::Package& package);
PyObject* describeClassRecords(ruvo::Class& cls);

}  // namespace pyhost
