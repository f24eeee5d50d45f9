#pragma once

#include <deque>
#include <string>
#include <vector>

#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tests/fuzz/World.h"

namespace fuzz {

/// The arguments of one call, and the memory they refer to.
class Arguments {
 public:
  Arguments(World& world, Input& input) noexcept : mWorld(world), mInput(input) {}
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  /// Adds values for a record. Most have the expected types; sometimes there is one too many or too few.
  void addFor(const ruvo::RVOMethodInfo& record, bool isSelfGiven);
  void add(const ruvo::InternedName& type) { mValues.push_back(valueOf(type)); }
  std::span<const ruvo::HostValue> span() const noexcept { return mValues; }

 private:
  ruvo::HostValue valueOf(const ruvo::InternedName& type);
  ruvo::HostValue anything();
  ruvo::HostValue text();
  ruvo::HostValue number();
  ruvo::HostValue array();
  ruvo::HostValue object(const ruvo::InternedName& type);
  ruvo::HostValue literal(ruvo::Class& enumeration);
  ruvo::HostValue made(ruvo::Class& cls);
  ruvo::HostValue held(ruvo::RVOInterface* object);

  World& mWorld;
  Input& mInput;
  std::vector<ruvo::HostValue> mValues;
  std::deque<std::u16string> mTexts;
  std::vector<hx::ArrayPtr> mArrays;
  /// Keeps objects alive when the world drops them.
  std::vector<ruvo::RVOInterfacePtr> mObjects;
};

}  // namespace fuzz
