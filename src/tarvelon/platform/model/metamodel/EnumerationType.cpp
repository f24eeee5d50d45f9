#include "tarvelon/platform/model/metamodel/EnumerationType.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "tarvelon/platform/model/metamodel/Described.h"
#include "tarvelon/platform/model/words/Memory.h"

namespace Tarvelon::metamodel::native {

const EnumerationType& EnumerationType::of(const EnumerationName& enumeration) {
  // The text is the key, since the addresses of names differ from library to library. Never freed:
  // descriptions are used until the process ends.
  using Types = std::unordered_map<std::string_view, std::unique_ptr<EnumerationType>>;
  static Types& types = *new Types;
  static std::mutex& guard = *new std::mutex;
  const std::scoped_lock lock(guard);
  const auto found = types.find(enumeration.name);
  if (found != types.end()) return *found->second;
  auto made = std::make_unique<EnumerationType>(enumeration);
  const std::string_view key = made->fullName().view();
  return *types.emplace(key, std::move(made)).first->second;
}

EnumerationType::EnumerationType(const EnumerationName& enumeration)
    : mFullName(enumeration.name), mPrefix(enumeration.prefix), mLiteralText(enumeration.literals) {
  share();
  constexpr std::string_view kSeparator = ", ";
  std::string_view rest = mLiteralText;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(kSeparator), rest.size());
    mLiterals.push_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + kSeparator.size(), rest.size()));
  }
}

const ruvo::InternedName& EnumerationType::sequenceName(bool isImmutable) const {
  return mSequenceNames[isImmutable ? 1 : 0].get([&] {
    std::string text(mFullName.view().substr(0, mPrefix));
    return text.append(isImmutable ? "ImmutableSequenceOf" : "SequenceOf")
        .append(mFullName.view().substr(mPrefix));
  });
}

std::u16string EnumerationType::name() const {
  const std::string_view text = mFullName.view().substr(mPrefix);
  return {text.begin(), text.end()};
}

const ruvo::InternedName& EnumerationType::getRuvoName(bool immutable) const {
  return ruvoNameOf(Described::DataType, immutable);
}

K7Q::ImmutableType EnumerationType::getMetaType(K7Q::Deviant deviant) const {
  return metaTypeOf(Described::DataType, deviant);
}

void* EnumerationType::cast(K7Q::CooperativeVisitor::TagPair tag) {
  using namespace K7Q::NSInterface;
  return castAmong<DataTypeIntf, TypeIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
}

std::string EnumerationType::text(std::int32_t value) const {
  return hasLiteral(value) ? std::string(mLiterals[static_cast<std::size_t>(value)]) : std::to_string(value);
}

std::string EnumerationType::literalList() const {
  std::string list;
  for (const std::string_view literal : mLiterals) {
    list.append(list.empty() ? "'" : ", '").append(literal).append("'");
  }
  return list;
}

K7Q::Object EnumerationType::box(std::int32_t value) const { return {new EnumerationCell(*this, value), {}}; }

void* EnumerationCell::operator new(std::size_t size) { return allocate(size); }
void EnumerationCell::operator delete(void* storage) noexcept { utFree(storage); }
EnumerationCell::~EnumerationCell() = default;

void* EnumerationCell::cast(K7Q::CooperativeVisitor::TagPair tag) {
  return castAmong<K7Q::NSInterface::ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
}

}  // namespace Tarvelon::metamodel::native
