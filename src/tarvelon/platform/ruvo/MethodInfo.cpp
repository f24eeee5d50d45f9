#include <new>

#include "tarvelon/boundary/bedrock/Except.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ut/Memory.h"

namespace ruvo {

RVOMethodSignaturePtr::RVOMethodSignaturePtr(const RVOMethodSignaturePtr& other) noexcept
    : mSignature(other.mSignature) {
  if (mSignature) ++mSignature->mReferences;
}

RVOMethodSignaturePtr::~RVOMethodSignaturePtr() {
  if (mSignature && --mSignature->mReferences == 0) utFree(mSignature);
}

RVOMethodSignaturePtr RVOMethodSignaturePtr::make(const char* parameterNames, const InternedName& result,
                                                  const InternedName& self,
                                                  std::span<const InternedName> arguments) {
  static_assert(sizeof(RVOMethodSignature) % alignof(InternedName) == 0);
  void* block = utMalloc(sizeof(RVOMethodSignature) + arguments.size_bytes());
  if (!block) throw bedrock::core::except::bad_alloc();
  auto* signature = ::new (block) RVOMethodSignature;
  signature->mParameterNames = parameterNames ? parameterNames : "";
  signature->mCount = static_cast<std::uint32_t>(arguments.size());
  signature->mReferences = 1;
  signature->mNames[0] = result;
  signature->mNames[1] = self;
  std::uninitialized_copy(arguments.begin(), arguments.end(), reinterpret_cast<InternedName*>(signature + 1));
  RVOMethodSignaturePtr pointer;
  pointer.mSignature = signature;
  return pointer;
}

RVOMethodInfo::~RVOMethodInfo() = default;
const char* RVOMethodInfo::getDetailedDescription() const { return getDescription(); }
bool RVOMethodInfo::isConstructor() const { return false; }
bool RVOMethodInfo::isLookupScope() const { return false; }
bool RVOMethodInfo::isFirstArgDispatch() const { return false; }
bool RVOMethodInfo::isExplicit() const { return false; }
int RVOMethodInfo::getExtendedAccess() const { return 0; }

void* RVOMethodInfo::operator new(std::size_t size) {
  if (void* storage = utMalloc(size)) return storage;
  throw bedrock::core::except::bad_alloc();
}
void RVOMethodInfo::operator delete(void* storage) noexcept { utFree(storage); }

namespace factory {

MethodAttributes::~MethodAttributes() = default;
bool MethodAttributes::isLocked() const { return (mWord & kUnlocked) == 0; }
bool MethodAttributes::doesMethodOverrideAllSignatures() const {
  return (mWord & kOverridesAllSignatures) != 0;
}

RuvoMethod::RuvoMethod(const InternedName& name, const MethodAttributes& attributes, const char* description)
    : mName(name), mDescription(description), mFlags(attributes.word()) {}
RuvoMethod::~RuvoMethod() = default;

int RuvoMethod::getMemberAccess() const noexcept {
  if (mFlags & kAccess1) return 1;
  if (mFlags & kAccess2) return 2;
  return mFlags & kAccess5 ? 5 : 0;
}

FunctionInfo::FunctionInfo(const InternedName& name, const MethodAttributes& attributes)
    : GeneratedMethod(name, attributes, "") {}
FunctionInfo::~FunctionInfo() = default;

namespace impl {

GeneratedMethod::~GeneratedMethod() = default;
MethodImpl::~MethodImpl() = default;
RuvoConstructor::~RuvoConstructor() = default;
bool RuvoConstructor::isConstructor() const { return true; }

void Invoker::createSignature(const char* parameterNames, const char* returnType, const char* selfType,
                              std::span<const char* const> argumentTypes, RVOMethodSignaturePtr& signature) {
  constexpr std::size_t kUsual = 8;
  std::array<InternedName, kUsual> usual;
  std::unique_ptr<InternedName[]> many;
  InternedName* names = usual.data();
  if (argumentTypes.size() > kUsual) {
    many = std::make_unique<InternedName[]>(argumentTypes.size());
    names = many.get();
  }
  for (std::size_t i = 0; i < argumentTypes.size(); ++i)
    names[i] = InternedName(internal::makeInterned(argumentTypes[i]));
  createSignature(parameterNames, InternedName(internal::makeInterned(returnType)),
                  InternedName(internal::makeInterned(selfType)), {names, argumentTypes.size()}, signature);
}

void throwNullSelf(const RuvoMethod* record) {
  const std::string method = record ? "method '" + std::string(record->getName().view()) + "'" : "the method";
  throw K7Q::WrongValue(method + ": expected an object to call it on, got an empty value");
}

}  // namespace impl
}  // namespace factory
}  // namespace ruvo
