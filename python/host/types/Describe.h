#pragma once

#include "python/host/objects/Objects.h"

namespace pyhost {

/// Everything registered in the object system, as dicts and lists in the format of `describe --json`. All
/// lists are in order of registration.
PyObject* describePackage(ruvo::Package& package);
PyObject* describeClassRecords(ruvo::Class& cls);

}  // namespace pyhost
