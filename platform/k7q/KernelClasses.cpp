#include "platform/k7q/KernelClasses.h"

#include "platform/k7q/KernelDescriptions.h"
#include "platform/k7q/KernelViews.h"

namespace K7Q::mi {

namespace {

constexpr std::uint32_t kAsArgument = ruvo::factory::kSelfAsArgument;
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
    {"isvalid",       0,           "",        kLogical,              kSelf,   {},                &addRecord<&isValid>},
    {"asDeviant",     0,           "deviant", kSelf,                 kSelf,   {kImmutableModel}, &addRecord<&asDeviantImmutable>},
    {"asImmutable",   kAsArgument, "",        kSelf,                 nullptr, {kSelf},           &addRecord<&asImmutable>},
    {"asMutable",     kAsArgument, "",        kClassObject,          nullptr, {kSelf},           &addRecord<&asMutable>},
    {"getModel",      0,           "",        kImmutableModel,       kSelf,   {},                &addRecord<&getImmutableModel>},
    {"getContainer",  0,           "",        kSelf,                 kSelf,   {},                &addRecord<&getImmutableContainer>},
};
constexpr MethodRow kClassObjectRows[] = {
    {"isvalid",       0,           "",        kLogical,              kSelf,   {},                &addRecord<&isValid>},
    {"destroy",       0,           "",        kNone,                 kSelf,   {},                &addRecord<&destroy>},
    {"asDeviant",     kReplaces,   "deviant", kSelf,                 kSelf,   {kImmutableModel}, &addRecord<&asDeviant>},
    {"asImmutable",   kAsArgument, "",        kImmutableClassObject, nullptr, {kSelf},           &addRecord<&asImmutable>},
    {"getModel",      kReplaces,   "",        kModel,                kSelf,   {},                &addRecord<&getModel>},
    {"getContainer",  kReplaces,   "",        kSelf,                 kSelf,   {},                &addRecord<&getContainer>},
};
constexpr MethodRow kImmutableModelRows[] = {
    {"isvalid",       0,           "",        kLogical,              kSelf,   {},                &addRecord<&isValid>},
    {"getUri",        0,           "",        kText,                 kSelf,   {},                &addRecord<&getUri>},
};
constexpr MethodRow kModelRows[] = {
    {"create",        0,           "",        kSelf,                 nullptr, {},                &addRecord<&createModel>},
    {"frozen",        0,           "",        kImmutableModel,       kSelf,   {},                &addRecord<&freeze>},
    {"setUri",        0,           " aUri",   kNone,                 kSelf,   {kText},           &addRecord<&setUri>},
    {"close",         0,           "",        kNone,                 kSelf,   {},                &addRecord<&close>},
};
constexpr MethodRow kTypeRows[] = {
    {"name",          0,           "",        kText,                 kSelf,   {},                &addRecord<&typeName>},
    {"fullName",      0,           "",        kText,                 kSelf,   {},                &addRecord<&typeFullName>},
};
constexpr MethodRow kClassRows[] = {
    {"superclasses",  0,           "",        kObjects,              kSelf,   {},                &addRecord<&classSuperclasses>},
    {"properties",    0,           "",        kObjects,              kSelf,   {},                &addRecord<&classProperties>},
    {"isAbstract",    0,           "",        kLogical,              kSelf,   {},                &addRecord<&classIsAbstract>},
    {"package",       0,           "",        kText,                 kSelf,   {},                &addRecord<&classPackage>},
};
constexpr MethodRow kDataTypeRows[] = {
    {"literals",      0,           "",        kTexts,                kSelf,   {},                &addRecord<&dataTypeLiterals>},
};
constexpr MethodRow kPropertyRows[] = {
    {"name",          0,           "",        kText,                 kSelf,   {},                &addRecord<&propertyName>},
    {"id",            0,           "",        kNumber,               kSelf,   {},                &addRecord<&propertyId>},
    {"owner",         0,           "",        kImmutableClass,       kSelf,   {},                &addRecord<&propertyOwner>},
    {"type",          0,           "",        kText,                 kSelf,   {},                &addRecord<&propertyType>},
    {"lowerBound",    0,           "",        kNumber,               kSelf,   {},                &addRecord<&propertyLowerBound>},
    {"upperBound",    0,           "",        kNumber,               kSelf,   {},                &addRecord<&propertyUpperBound>},
    {"isReadOnly",    0,           "",        kLogical,              kSelf,   {},                &addRecord<&propertyIsReadOnly>},
    {"isContainment", 0,           "",        kLogical,              kSelf,   {},                &addRecord<&propertyIsContainment>},
};
constexpr MethodRow kPackageRows[] = {
    {"name",          0,           "",        kText,                 kSelf,   {},                &addRecord<&packageName>},
    {"fullName",      0,           "",        kText,                 kSelf,   {},                &addRecord<&packageFullName>},
    {"classes",       0,           "",        kObjects,              kSelf,   {},                &addRecord<&packageClasses>},
    {"dataTypes",     0,           "",        kObjects,              kSelf,   {},                &addRecord<&packageDataTypes>},
    {"subPackages",   0,           "",        kObjects,              kSelf,   {},                &addRecord<&packageSubPackages>},
};

constexpr KernelClass kClasses[] = {
    {"ImmutableObject",        "An object that can be read",                  {},                                         {}},
    {"Object",                 "An object that can be changed",               {kImmutableObject},                         {}},
    {"ImmutableClassObject",   "An object of a model that can be read",       {kImmutableObject},                         kImmutableClassObjectRows},
    {"ClassObject",            "An object of a model that can be changed",    {kImmutableClassObject, kObject},           kClassObjectRows},
    {"ImmutableModel",         "A model that can be read",                    {kImmutableObject},                         kImmutableModelRows},
    {"Model",                  "A model that can be changed",                 {kImmutableModel, kObject},                 kModelRows},
    {"ImmutableFactoryObject", "A factory of objects that can be read",       {kImmutableObject},                         {}},
    {"FactoryObject",          "A factory of objects",                        {kImmutableFactoryObject, kObject},         {}},
    {"ImmutableType",          "A type of the metamodel",                     {kImmutableObject},                         kTypeRows},
    {"ImmutableClass",         "A class of the metamodel",                    {kImmutableType, kImmutableClassObject},    kClassRows},
    {"ImmutableDataType",      "An enumeration or primitive type",            {kImmutableType},                           kDataTypeRows},
    {"ImmutableProperty",      "A property of a class of the metamodel",      {kImmutableObject},                         kPropertyRows},
    {"ImmutablePackage",       "A package of the metamodel",                  {kImmutableObject},                         kPackageRows},
};

constexpr const char* kChangeable   = "A sequence whose values can be changed";
constexpr const char* kUnchangeable = "A sequence whose values cannot be changed";
constexpr const char* kModifiable   = "An iterator for traversing a modifiable list";
constexpr const char* kNotModified  = "An iterator for traversing a non-modifiable list";

constexpr KernelCompanion kCompanions[] = {
    {&kSequenceOfString,             "SequenceOfString",                   kChangeable,   kText,            "K7Q.StringIterator"},
    {&kImmutableSequenceOfString,    "ImmutableSequenceOfString",          kUnchangeable, kText,            "K7Q.StringImmutableIterator"},
    {&kStringIterator,               "StringIterator",                     kModifiable,   kText,            ""},
    {&kStringImmutableIterator,      "StringImmutableIterator",            kModifiable,   kText,            ""},
    {&kImmutableSequenceOfImmutable, "ImmutableSequenceOfImmutableObject", kUnchangeable, kImmutableObject, "K7Q.ImmutableObjectImmutableIterator"},
    {&kImmutableIteratorOfImmutable, "ImmutableObjectImmutableIterator",   kNotModified,  kImmutableObject, ""},
};
// clang-format on

}  // namespace

std::span<const KernelClass> kernelClasses() { return kClasses; }
std::span<const KernelCompanion> kernelCompanions() { return kCompanions; }

}  // namespace K7Q::mi
