#include "tarvelon/platform/ruvo/HostObject.h"

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/platform/hx/Blocks.h"
#include "tarvelon/platform/hx/ObjectScalar.h"
#include "tarvelon/platform/ruvo/Registry.h"

namespace ruvo {

namespace {

constexpr std::size_t kSize = hx::Blocks::sizeFor(sizeof(HostObject));
static_assert(kSize < hx::Blocks::kSizes);

}  // namespace

RVOClient::~RVOClient() = default;
RVOInterface::~RVOInterface() = default;
HostObject::~HostObject() = default;

void* HostObject::operator new(std::size_t /*size*/) {
  if (void* storage = hx::Blocks::take(kSize)) return storage;
  throw bedrock::core::except::bad_alloc();
}
void HostObject::operator delete(void* storage) noexcept { hx::Blocks::give(kSize, storage); }

void HostObject::dispose() {
  if (mBound) destroyBound();
  delete this;
}

void HostObject::destroyBound() noexcept {
  try {
    classOf(*this).info().destroyInstance(mClass, ObjectSystem::client(), mBound);
  } catch (...) {
    // An object may be destroyed anywhere, even while another exception is in flight, so the error is
    // dropped.
  }
  // destroyInstance() has removed the binding, unless it failed first.
  if (mBound) factory::basic::BindingRegistry::remove(mBound);
}

hx::hxArray* boxInterface(RVOInterface* object, const InternedName& className) {
  if (!object) return hx::hxCreateObjectMatrix(0, 0, className.c_str());
  // A new object has a reference count of 0. The holder destroys it if there is no memory for the array.
  const RVOInterfacePtr holder(object);
  return hx::createObjectScalar(object, className.c_str());
}

}  // namespace ruvo
