#include "tarvelon/platform/model/changes/Construction.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/changes/Journal.h"
#include "tarvelon/platform/model/changes/Links.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::metamodel::native {

namespace {

using Values = std::array<Prepared, kMaxArguments>;

std::string dotted(const ClassData& cls) { return "class '" + std::string(cls.names[0].view()) + "'"; }

[[noreturn]] void refuseClass(const ClassData& cls) {
  if (!cls.methods->rows())
    throw K7Q::Exception(dotted(cls) +
                         " is not a class of model objects and cannot be constructed in a model");
  std::vector<std::string_view> below;
  for (const PackageRow& package : packageRows()) {
    for (const ClassMethods* each : package.classes) {
      if (each->isAbstract() || !each->data().isKindOf(cls.ordinal)) continue;
      below.push_back(each->data().names[0].view());
    }
  }
  throw K7Q::WrongType(ruvo::abstractText(cls.names[0].view(), below));
}

const ConstructorPlan& planOf(const ClassData& cls, unsigned constructor, std::size_t arguments) {
  if (cls.constructors.empty()) refuseClass(cls);
  if (constructor >= cls.constructors.size()) {
    throw K7Q::Exception(dotted(cls) + " has no constructor " + std::to_string(constructor) + "; it has " +
                         std::to_string(cls.constructors.size()) + ", counted from 0");
  }
  const ConstructorPlan& plan = cls.constructors[constructor];
  if (plan.size() != arguments) {
    throw K7Q::WrongType("constructor " + std::to_string(constructor) + " of " + dotted(cls) + ": expected " +
                         std::to_string(plan.size()) + " arguments after the model, got " +
                         std::to_string(arguments));
  }
  return plan;
}

/// Containment properties are set last. Then all memory has been allocated, so no contained object is taken
/// from its previous owner by an object that cannot be completed.
void fill(Instance& object, const ConstructorPlan& plan, const Values& values) {
  for (const bool isHeld : {false, true}) {
    for (std::size_t index = 0; index < plan.size(); ++index) {
      if (plan[index].property->holds() == isHeld && !values[index].isEmpty) {
        store(object, plan[index].slot, values[index]);
      }
    }
  }
}

}  // namespace

Instance& construct(NativeModel& model, const ClassData& cls, unsigned constructor,
                    std::span<const K7Q::Object> arguments) {
  const ConstructorPlan& plan = planOf(cls, constructor, arguments.size());
  Values values;
  for (std::size_t index = 0; index < plan.size(); ++index) {
    values[index] = prepare({cls, *plan[index].property, model}, arguments[index]);
  }
  Batch batch(model);
  batch.reserve(1);
  Instance& object = model.add(cls, static_cast<unsigned>(plan.size()));
  if (model.journal()) {
    make({&object, {}, {}, 0, 0, Step::Kind::Life, false, true});
    fill(object, plan, values);
  } else {
    try {
      fill(object, plan, values);
    } catch (...) {
      destroyTree(object);
      throw;
    }
  }
  Batch::noteMade(object);
  return object;
}

}  // namespace Tarvelon::metamodel::native
