#include "tarvelon/platform/k7q/classes/KernelClasses.h"

#include "tarvelon/platform/k7q/classes/KernelDescriptions.h"
#include "tarvelon/platform/k7q/classes/KernelViews.h"

namespace K7Q::mi {

namespace {

using binding::asArgument;
using binding::classLevel;
using binding::kSelf;
using binding::member;

constexpr std::uint32_t kReplaces = ruvo::factory::kOverridesAllSignatures;

constexpr const char* kImmutableObject = "K7Q.ImmutableObject";
constexpr const char* kObject = "K7Q.Object";
constexpr const char* kImmutableClassObject = "K7Q.ImmutableClassObject";
constexpr const char* kClassObject = "K7Q.ClassObject";
constexpr const char* kImmutableModel = "K7Q.ImmutableModel";
constexpr const char* kModel = "K7Q.Model";
constexpr const char* kImmutableFactoryObject = "K7Q.ImmutableFactoryObject";
constexpr const char* kImmutableType = "K7Q.ImmutableType";
constexpr const char* kImmutableClass = "K7Q.ImmutableClass";
constexpr const char* kObjects = "K7Q.ImmutableSequenceOfImmutableObject";
constexpr const char* kTexts = "K7Q.ImmutableSequenceOfString";
constexpr const char* kLogical = "logical scalar";
constexpr const char* kNumber = "int32 scalar";
constexpr const char* kText = "char vector";
constexpr const char* kNone = "void";

// clang-format off
constexpr MethodRow kImmutableClassObjectRows[] = {
    member    <&isValid>              ("isvalid",       kLogical),
    member    <&asDeviantImmutable>   ("asDeviant",     kSelf,                 {kImmutableModel})
        .naming("deviant"),
    asArgument<&asImmutable>          ("asImmutable",   kSelf,                 {kSelf}),
    asArgument<&asMutable>            ("asMutable",     kClassObject,          {kSelf}),
    member    <&getImmutableModel>    ("getModel",      kImmutableModel),
    member    <&getImmutableContainer>("getContainer",  kSelf),
};
constexpr MethodRow kClassObjectRows[] = {
    member    <&isValid>              ("isvalid",       kLogical),
    member    <&destroy>              ("destroy",       kNone),
    member    <&asDeviant>            ("asDeviant",     kSelf,                 {kImmutableModel})
        .with(kReplaces).naming("deviant"),
    asArgument<&asImmutable>          ("asImmutable",   kImmutableClassObject, {kSelf}),
    member    <&getModel>             ("getModel",      kModel).with(kReplaces),
    member    <&getContainer>         ("getContainer",  kSelf).with(kReplaces),
};
constexpr MethodRow kImmutableModelRows[] = {
    member    <&isValid>              ("isvalid",       kLogical),
    member    <&getUri>               ("getUri",        kText),
};
constexpr MethodRow kModelRows[] = {
    classLevel<&createModel>          ("create",        kModel),
    classLevel<&findModel>            ("find",          kModel,                {kText}),
    classLevel<&boundUris>            ("uris",          kTexts),
    member    <&freeze>               ("frozen",        kImmutableModel),
    member    <&setUri>               ("setUri",        kNone,                 {kText}),
    member    <&close>                ("close",         kNone),
};
constexpr MethodRow kFactoryObjectRows[] = {
    member    <&isValid>              ("isvalid",       kLogical),
    member    <&asDeviant>            ("asDeviant",     kSelf,                 {kImmutableModel})
        .naming("deviant"),
    member    <&getFactoryModel>      ("getModel",      kModel),
};
constexpr MethodRow kTypeRows[] = {
    member    <&typeName>             ("name",          kText),
    member    <&typeFullName>         ("fullName",      kText),
};
constexpr MethodRow kClassRows[] = {
    member    <&classSuperclasses>    ("superclasses",  kObjects),
    member    <&classProperties>      ("properties",    kObjects),
    member    <&classIsAbstract>      ("isAbstract",    kLogical),
    member    <&classPackage>         ("package",       kText),
};
constexpr MethodRow kDataTypeRows[] = {
    member    <&dataTypeLiterals>     ("literals",      kTexts),
};
constexpr MethodRow kPropertyRows[] = {
    member    <&propertyName>         ("name",          kText),
    member    <&propertyId>           ("id",            kNumber),
    member    <&propertyOwner>        ("owner",         kImmutableClass),
    member    <&propertyType>         ("type",          kText),
    member    <&propertyLowerBound>   ("lowerBound",    kNumber),
    member    <&propertyUpperBound>   ("upperBound",    kNumber),
    member    <&propertyIsReadOnly>   ("isReadOnly",    kLogical),
    member    <&propertyIsContainment>("isContainment", kLogical),
};
constexpr MethodRow kPackageRows[] = {
    member    <&packageName>          ("name",          kText),
    member    <&packageFullName>      ("fullName",      kText),
    member    <&packageClasses>       ("classes",       kObjects),
    member    <&packageDataTypes>     ("dataTypes",     kObjects),
    member    <&packageSubPackages>   ("subPackages",   kObjects),
};

constexpr KernelClass kClasses[] = {
    {"ImmutableObject",        "An object that can be read",
     {},                                      {}},
    {"Object",                 "An object that can be changed",
     {kImmutableObject},                      {}},
    {"ImmutableClassObject",   "An object of a model that can be read",
     {kImmutableObject},                      kImmutableClassObjectRows},
    {"ClassObject",            "An object of a model that can be changed",
     {kImmutableClassObject, kObject},        kClassObjectRows},
    {"ImmutableModel",         "A model that can be read",
     {kImmutableObject},                      kImmutableModelRows},
    {"Model",                  "A model that can be changed",
     {kImmutableModel, kObject},              kModelRows},
    {"ImmutableFactoryObject", "A factory of objects that can be read",
     {kImmutableObject},                      {}},
    {"FactoryObject",          "A factory of objects",
     {kImmutableFactoryObject, kObject},      kFactoryObjectRows},
    {"ImmutableType",          "A type of a metamodel",
     {kImmutableObject},                      kTypeRows},
    {"ImmutableClass",         "A class of a metamodel",
     {kImmutableType, kImmutableClassObject}, kClassRows},
    {"ImmutableDataType",      "An enumeration or scalar type of a metamodel",
     {kImmutableType},                        kDataTypeRows},
    {"ImmutableProperty",      "A property of a class of a metamodel",
     {kImmutableObject},                      kPropertyRows},
    {"ImmutablePackage",       "A package of a metamodel",
     {kImmutableObject},                      kPackageRows},
};

constexpr const char* kChangeable = "A sequence whose values can be changed";
constexpr const char* kUnchangeable = "A sequence whose values cannot be changed";
constexpr const char* kModifiable = "An iterator for traversing a modifiable list";
constexpr const char* kNonModifiable = "An iterator for traversing a non-modifiable list";
constexpr const char* kObjectsIterator = "K7Q.ImmutableObjectImmutableIterator";

constexpr KernelCompanion kCompanions[] = {
    {&kSequenceOfString,
     "SequenceOfString",                   kText,            "K7Q.StringIterator",          kChangeable},
    {&kImmutableSequenceOfString,
     "ImmutableSequenceOfString",          kText,            "K7Q.StringImmutableIterator", kUnchangeable},
    {&kStringIterator,
     "StringIterator",                     kText,            "",                            kModifiable},
    {&kStringImmutableIterator,
     "StringImmutableIterator",            kText,            "",                            kModifiable},
    {&kImmutableSequenceOfImmutable,
     "ImmutableSequenceOfImmutableObject", kImmutableObject, kObjectsIterator,              kUnchangeable},
    {&kImmutableIteratorOfImmutable,
     "ImmutableObjectImmutableIterator",   kImmutableObject, "",                            kNonModifiable},
};
// clang-format on

}  // namespace

std::span<const KernelClass> kernelClasses() { return kClasses; }
std::span<const KernelCompanion> kernelCompanions() { return kCompanions; }

}  // namespace K7Q::mi
