#pragma once

namespace Tarvelon::metamodel::native {
class Instance;
}

/// Queries about ports that several rules use.
namespace Tarvelon::metamodel::native::validation {

/// The interface of a port. Null for a null port and for a port without an interface.
const Instance* interfaceOf(const Instance* port);
bool isProvided(const Instance& port);
bool isRequired(const Instance& port);
/// The port that an instance reference goes through, null if it names none.
const Instance* portOf(const Instance& reference);
/// Whether the interface contains a group element with that mode group.
bool hasModeGroup(const Instance& interface, const Instance& group);

}  // namespace Tarvelon::metamodel::native::validation
