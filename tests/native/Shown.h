#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"

/// What tests compare models by.
namespace shown {

/// The places of all objects of a model in its own order, by which a text names them.
using Places = std::unordered_map<const K7Q::NSInterface::ObjectIntf*, std::size_t>;
Places placesOf(const K7Q::Model& model);

/// All that can be seen of a model as one text: every object with every property that it has, derived ones
/// too, its qualified name and who refers to it.
std::string everything(const K7Q::Model& model);

/// Complains, as a test that fails, of whatever in a model does not agree with a walk over all of it: owners,
/// references and their opposites, referrers, names, the lists of each class.
void checkAgreement(const K7Q::Model& model);

}  // namespace shown
