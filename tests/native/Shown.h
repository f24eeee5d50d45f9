#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tarvelon/boundary/k7q/Introspection.h"

/// Functions with which tests compare models.
namespace shown {

/// The index of each object in the order of the model. Texts use it as the object's name.
using Places = std::unordered_map<const K7Q::NSInterface::ObjectIntf*, std::size_t>;
Places placesOf(const K7Q::Model& model);

/// Everything that can be seen of a model, as one text: all objects with all properties including derived
/// ones, their qualified names, and the references to them.
std::string everything(const K7Q::Model& model);

/// Compares a model with a walk over all its objects: owners, references and opposites, referrers, names,
/// instances of classes. Differences are failures of the test.
void checkAgreement(const K7Q::Model& model);

}  // namespace shown
