#pragma once

namespace Tarvelon::metamodel::native {
class Instance;
}

/// What several rules ask of ports.
namespace Tarvelon::metamodel::native::validation {

/// The interface of a port, null for no port and for one without.
const Instance* interfaceOf(const Instance* port);
bool isProvided(const Instance& port);
bool isRequired(const Instance& port);
/// The port that an instance reference goes through, null for one that names none.
const Instance* portOf(const Instance& reference);
/// Whether the interface holds a group element of those modes.
bool hasModeGroup(const Instance& interface, const Instance& group);

}  // namespace Tarvelon::metamodel::native::validation
