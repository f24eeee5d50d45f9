#include "tarvelon/binding/Methods.h"

#include "tarvelon/boundary/ruvo/BindingRegistry.h"

namespace binding {

namespace {

using ruvo::factory::MethodAttributes;
using ruvo::factory::impl::Invoker;
using ruvo::factory::impl::MethodImpl;
using ruvo::factory::impl::RuvoConstructor;

/// Sets the flag bits that tell the kinds of methods apart. With a self, the kSelfAsArgument bit is cleared.
/// Without a self, the kStatic bit is set unless the kSelfAsArgument bit is set.
void settleFlags(GeneratedMethod& record, bool hasSelf) {
  auto& flags = record.flags();
  if (hasSelf) {
    flags &= ~static_cast<std::uint32_t>(ruvo::factory::kSelfAsArgument);
  } else if ((flags & ruvo::factory::kSelfAsArgument) == 0) {
    flags |= ruvo::factory::kStatic;
  }
}

}  // namespace

namespace invoker {

void bindConstructed(const GeneratedMethod& record, const K7Q::ClassObject& object, hx::hxArray* array) {
  try {
    void* id = K7Q::DeviantRegistry::getId(object.getInterface(), object.getDeviant(), false);
    ruvo::factory::basic::BindingRegistry::announceForConstructor(id, record.getName(), array, true);
  } catch (...) {
    if (!object.isNull()) object.getClassObject()->destroy(object.getDeviant());
    throw;
  }
  if (!object.isNull()) object.getInterface()->addRef();
}

}  // namespace invoker

void MethodTable::add(const MethodSpec& spec, std::span<const InternedName> arguments,
                      InvokerFunction invoker, NativeFunction native) {
  auto record = std::make_unique<MethodImpl>(named(spec.name), MethodAttributes(spec.attributes), "");
  settleFlags(*record, !spec.self.empty());
  Invoker::createSignature(spec.parameterNames, spec.result, spec.self, arguments, record->signature());
  record->native = native;
  record->invoker = invoker;
  mClass.addMethod(record.release());
}

void MethodTable::addConstructorRecord(std::span<const InternedName> arguments, InvokerFunction invoker,
                                       NativeFunction native) {
  const InternedName& name = mClass.getFullName();
  auto record = std::make_unique<RuvoConstructor>(name, MethodAttributes(0), "");
  settleFlags(*record, false);
  Invoker::createSignature("", name, InternedName(), arguments, record->signature());
  record->native = native;
  record->invoker = invoker;
  mClass.addMethod(record.release());
}

void addPackageFunctionRecord(ruvo::RVOPackage& package, const char* name, const char* resultType,
                              InvokerFunction invoker, NativeFunction native) {
  auto record = std::make_unique<ruvo::factory::FunctionInfo>(named(name), MethodAttributes(0));
  settleFlags(*record, false);
  Invoker::createSignature("", named(resultType), InternedName(), {}, record->signature());
  record->native = native;
  record->invoker = invoker;
  package.addFunction(record.release());
}

}  // namespace binding
