#pragma once

namespace Tarvelon::files {

/// Copies everything except the content from one file to another: mode, owner, group, access control list and
/// extended attributes.
///
/// Only root can change the owner. For other users the new file keeps its owner, and gets the group of the
/// old file if the user is a member of it. Otherwise the members of its group get no more permissions than
/// everybody has. System attributes, those in the namespaces `security` and `trusted`, are copied as far as
/// the system allows.
///
/// Returns null on success. Otherwise returns a text that says what cannot be kept, and errno says why. The
/// new file must then not replace the old one: other people could read or write it, or an attribute of the
/// user would be lost.
/// Failure: std::bad_alloc.
const char* copyAttributes(int from, int to);

}  // namespace Tarvelon::files
