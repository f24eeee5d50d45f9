#pragma once

namespace Tarvelon::files {

/// Gives a file what another one has besides its bytes: mode, owner, group, access control list and extended
/// attributes.
///
/// Only root gives a file away: else it stays with the user who makes it, in the group of the other one if
/// the user is in that. In another group its members may do what everybody may. Attributes of the system
/// alone, of the spaces `security` and `trusted`, are kept as far as the system lets.
///
/// Null once that is done. Else what cannot be kept, and errno says why: the file must not take the other's
/// place, since other people could read or write it then, or something of the person's would be lost.
/// Failure: std::bad_alloc.
const char* copyAttributes(int from, int to);

}  // namespace Tarvelon::files
