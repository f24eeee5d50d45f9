#pragma once

#include "tarvelon/arplatform/port/Names.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// The shape of each class and the texts of each enumeration in ARXML files (boundary/tarvelon/Shapes.h).
//
// The class of a port is told by its element and by the DEST of the reference to its interface. A port info
// is the element of its com spec or of its annotation, both of which are inlined. An info with both has two
// elements, which name the same element of the interface.
// clang-format off
namespace Tarvelon::metamodel::arplatform::port {

constexpr auto shape(Is<ClientPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "CLIENT-SERVER-INTERFACE")),
      places(
          inside("Info", "REQUIRED-COM-SPECS"),
          inside("Info", "CLIENT-SERVER-ANNOTATIONS")));
}

constexpr auto shape(Is<ClientPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ClientPortComSpec>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ClientPortInfo>) {
  return shapeOf(
      elements(
          element("CLIENT-COM-SPEC")         .with<ClientPortComSpec>   ("ComSpec"),
          element("CLIENT-SERVER-ANNOTATION").with<ClientPortAnnotation>("Annotation")),
      places(
          inlined("ComSpec"),
          inlined("Annotation")));
}

constexpr auto shape(Is<ClientServerPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ClientServerPortInfo>) {
  return shapeOf(
      noElement(),
      places(
          reference("Operations", "OPERATION-REF")));
}

constexpr auto shape(Is<DataFilter>) {
  return shapeOf(
      noElement(),
      places(
          text("DataFilterKind", "DATA-FILTER-TYPE"),
          text("Mask",           "MASK"),
          text("Max",            "MAX"),
          text("Min",            "MIN"),
          text("Offset",         "OFFSET"),
          text("Period",         "PERIOD"),
          text("X",              "X")));
}

constexpr auto shape(Is<DataPortInfo>) {
  return shapeOf(
      noElement(),
      places(
          reference("DataElements", "DATA-ELEMENT-REF")));
}

constexpr auto shape(Is<DataReceiverPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "SENDER-RECEIVER-INTERFACE")),
      places(
          inside("Info", "REQUIRED-COM-SPECS"),
          inside("Info", "SENDER-RECEIVER-ANNOTATIONS")));
}

constexpr auto shape(Is<DataReceiverPortAnnotation>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("SignalAge",
                  "SIGNAL-AGE is a count together with the code of its unit, from which one number cannot be told")));
}

constexpr auto shape(Is<DataReceiverPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          text("HandleOutOfRangeKind", "HANDLE-OUT-OF-RANGE")));
}

constexpr auto shape(Is<DataReceiverPortInfo>) {
  return shapeOf(
      elements(
          element("NONQUEUED-RECEIVER-COM-SPEC").with<DataReceiverNonqueuedPortComSpec>("ComSpec"),
          element("QUEUED-RECEIVER-COM-SPEC")   .with<DataReceiverQueuedPortComSpec>   ("ComSpec"),
          element("RECEIVER-ANNOTATION")        .with<DataReceiverPortAnnotation>      ("Annotation")),
      places(
          inlined("ComSpec"),
          inlined("Annotation")));
}

constexpr auto shape(Is<DataReceiverQueuedPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          text("QueueLength",            "QUEUE-LENGTH"),
          text("UsesEndToEndProtection", "USES-END-TO-END-PROTECTION")));
}

constexpr auto shape(Is<DataReceiverNonqueuedPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          text   ("AliveTimeout",           "ALIVE-TIMEOUT"),
          text   ("EnableUpdate",           "ENABLE-UPDATE"),
          text   ("HandleNeverReceived",    "HANDLE-NEVER-RECEIVED"),
          text   ("HandleTimeoutKind",      "HANDLE-TIMEOUT-TYPE"),
          role   ("Filter",                 "FILTER"),
          nowhere("InitialValue", "the same value as InitValue, which the file has"),
          inside ("InitValue",              "INIT-VALUE"),
          text   ("UsesEndToEndProtection", "USES-END-TO-END-PROTECTION")));
}

constexpr auto shape(Is<DataSenderPort>) {
  return shapeOf(
      elements(element("P-PORT-PROTOTYPE").ifDest("PROVIDED-INTERFACE-TREF", "SENDER-RECEIVER-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "SENDER-RECEIVER-ANNOTATIONS")));
}

constexpr auto shape(Is<DataSenderPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<DataSenderPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          text("HandleOutOfRangeKind",   "HANDLE-OUT-OF-RANGE"),
          text("TransAcqRequestTimeout", "TRANSMISSION-ACKNOWLEDGE/TIMEOUT")));
}

// Since release 4.4.0 the com spec of a field may be a FIELD-SENDER-COM-SPEC.
constexpr auto shape(Is<DataSenderPortInfo>) {
  return shapeOf(
      elements(
          element("NONQUEUED-SENDER-COM-SPEC").with<DataSenderNonqueuedPortComSpec>("ComSpec"),
          element("QUEUED-SENDER-COM-SPEC")   .with<DataSenderQueuedPortComSpec>   ("ComSpec"),
          element("FIELD-SENDER-COM-SPEC").ifDest("DATA-ELEMENT-REF", "FIELD")
                                              .with<DataSenderNonqueuedPortComSpec>("ComSpec"),
          element("SENDER-ANNOTATION")        .with<DataSenderPortAnnotation>      ("Annotation")),
      places(
          inlined("ComSpec"),
          inlined("Annotation")));
}

constexpr auto shape(Is<DataSenderQueuedPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          text("UsesEndToEndProtection", "USES-END-TO-END-PROTECTION")));
}

constexpr auto shape(Is<DataSenderNonqueuedPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("InitialValue", "the same value as InitValue, which the file has"),
          inside ("InitValue",              "INIT-VALUE"),
          text   ("UsesEndToEndProtection", "USES-END-TO-END-PROTECTION")));
}

constexpr auto shape(Is<ModeReceiverPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "MODE-SWITCH-INTERFACE")),
      places(
          inside("Info", "MODE-PORT-ANNOTATIONS")));
}

constexpr auto shape(Is<ParameterPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ParameterReceiverPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "PARAMETER-INTERFACE")),
      places(
          inside("Info", "REQUIRED-COM-SPECS"),
          inside("Info", "PARAMETER-PORT-ANNOTATIONS")));
}

constexpr auto shape(Is<ParameterReceiverPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ParameterReceiverPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("InitialValue", "the same value as InitValue, which the file has"),
          inside ("InitValue", "INIT-VALUE")));
}

constexpr auto shape(Is<ParameterReceiverPortInfo>) {
  return shapeOf(
      elements(
          element("PARAMETER-REQUIRE-COM-SPEC").with<ParameterReceiverPortComSpec>   ("ComSpec"),
          element("PARAMETER-PORT-ANNOTATION") .with<ParameterReceiverPortAnnotation>("Annotation")),
      places(
          reference("DataElements", "PARAMETER-REF"),
          inlined  ("ComSpec"),
          inlined  ("Annotation")));
}

constexpr auto shape(Is<Port>) {
  return shapeOf(
      noElement(),
      places(
          role     ("VariationPoint", "VARIATION-POINT"),
          nowhere  ("PortAPIOption", "the opposite of PortAPIOption.Port, which the file has"),
          reference("Type", "REQUIRED-INTERFACE-TREF"),
          reference("Type", "PROVIDED-INTERFACE-TREF"),
          reference("Type", "PROVIDED-REQUIRED-INTERFACE-TREF")));
}

constexpr auto shape(Is<PortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<PortComSpec>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<PortInfo>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ProvidedPort>) {
  return shapeOf(
      noElement(),
      places(
          reference("Type", "PROVIDED-INTERFACE-TREF")));
}

constexpr auto shape(Is<RequiredPort>) {
  return shapeOf(
      noElement(),
      places(
          reference("Type", "REQUIRED-INTERFACE-TREF")));
}

constexpr auto shape(Is<SenderReceiverPortAnnotation>) {
  return shapeOf(
      noElement(),
      places(
          text("Computed",       "COMPUTED"),
          text("LimitKind",      "LIMIT-KIND"),
          text("ProcessingKind", "PROCESSING-KIND")));
}

constexpr auto shape(Is<ServerPort>) {
  return shapeOf(
      elements(element("P-PORT-PROTOTYPE").ifDest("PROVIDED-INTERFACE-TREF", "CLIENT-SERVER-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "CLIENT-SERVER-ANNOTATIONS")));
}

constexpr auto shape(Is<ServerPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ServerPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          text("QueueLength", "QUEUE-LENGTH")));
}

constexpr auto shape(Is<ServerPortInfo>) {
  return shapeOf(
      elements(
          element("SERVER-COM-SPEC")         .with<ServerPortComSpec>   ("ComSpec"),
          element("CLIENT-SERVER-ANNOTATION").with<ServerPortAnnotation>("Annotation")),
      places(
          inlined("ComSpec"),
          inlined("Annotation")));
}

// Schemas after 4.0.2 have no more NEW-IS-DIFFERENT, NEW-IS-EQUAL, NEW-IS-GREATER, NEW-IS-GREATER-OR-EQUAL,
// NEW-IS-LESS, NEW-IS-LESS-OR-EQUAL and MASKED-NEW-EQUALS-MASKED-OLD.
constexpr auto items(Is<DataFilterKind>) {
  return itemTexts("ALWAYS", "MASKED-NEW-EQUALS-MASKED-OLD", "MASKED-NEW-EQUALS-X",
                   "MASKED-NEW-DIFFERS-MASKED-OLD", "MASKED-NEW-DIFFERS-X", "NEVER", "NEW-IS-DIFFERENT",
                   "NEW-IS-EQUAL", "NEW-IS-WITHIN", "NEW-IS-OUTSIDE", "NEW-IS-GREATER", "NEW-IS-LESS-OR-EQUAL",
                   "NEW-IS-LESS", "NEW-IS-GREATER-OR-EQUAL", "ONE-EVERY-N");
}

constexpr auto items(Is<DataLimitKind>) {
  return itemTexts("NONE", "MIN", "MAX");
}

constexpr auto items(Is<HandleOutOfRangeKind>) {
  return itemTexts("NONE", "IGNORE", "SATURATE", "DEFAULT", "INVALID");
}

constexpr auto items(Is<HandleTimeoutKind>) {
  return itemTexts("REPLACE", "NONE");
}

constexpr auto items(Is<ProcessingKind>) {
  return itemTexts("NONE", "RAW", "FILTERED");
}

// An inner group is named through the component prototypes that lead to it. The prototypes (CONTEXT-REF) are
// not in the model.
constexpr auto shape(Is<PortGroup>) {
  return shapeOf(
      elements(element("PORT-GROUP")),
      places(
          reference("OuterPort",      "OUTER-PORTS/PORT-PROTOTYPE-REF-CONDITIONAL*/PORT-PROTOTYPE-REF"),
          reference("InnerGroup",     "INNER-GROUP-IREFS/INNER-GROUP-IREF*/TARGET-REF"),
          role     ("VariationPoint", "VARIATION-POINT")));
}

constexpr auto shape(Is<ModePortInfo>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("ModeGroup", "MODE-GROUP-REF refers to the mode group element of the interface, this property to "
                               "the mode declaration group that the element uses")));
}

constexpr auto shape(Is<ModeReceiverPortInfo>) {
  return shapeOf(
      elements(element("MODE-PORT-ANNOTATION").with<ModeReceiverPortAnnotation>("Annotation")),
      places(
          inlined("Annotation")));
}

constexpr auto shape(Is<ModeReceiverPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ParameterSenderPort>) {
  return shapeOf(
      elements(element("P-PORT-PROTOTYPE").ifDest("PROVIDED-INTERFACE-TREF", "PARAMETER-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "PARAMETER-PORT-ANNOTATIONS")));
}

constexpr auto shape(Is<ParameterSenderPortInfo>) {
  return shapeOf(
      elements(
          element("PARAMETER-PROVIDE-COM-SPEC").with<ParameterSenderPortComSpec>   ("ComSpec"),
          element("PARAMETER-PORT-ANNOTATION") .with<ParameterSenderPortAnnotation>("Annotation")),
      places(
          reference("DataElements", "PARAMETER-REF"),
          inlined  ("ComSpec"),
          inlined  ("Annotation")));
}

constexpr auto shape(Is<ParameterSenderPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ParameterSenderPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          nowhere("InitialValue", "the same value as InitValue, which the file has"),
          inside ("InitValue", "INIT-VALUE")));
}

constexpr auto shape(Is<ProvidedRequiredPort>) {
  return shapeOf(
      noElement(),
      places(
          reference("Type", "PROVIDED-REQUIRED-INTERFACE-TREF")));
}

constexpr auto shape(Is<DataSenderReceiverPort>) {
  return shapeOf(
      elements(element("PR-PORT-PROTOTYPE")
                   .ifDest("PROVIDED-REQUIRED-INTERFACE-TREF", "SENDER-RECEIVER-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "REQUIRED-COM-SPECS"),
          inside("Info", "SENDER-RECEIVER-ANNOTATIONS")));
}

constexpr auto shape(Is<DataSenderReceiverPortInfo>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<NvDataSenderPort>) {
  return shapeOf(
      elements(element("P-PORT-PROTOTYPE").ifDest("PROVIDED-INTERFACE-TREF", "NV-DATA-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "NV-DATA-PORT-ANNOTATIONS")));
}

constexpr auto shape(Is<NvDataReceiverPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "NV-DATA-INTERFACE")),
      places(
          inside("Info", "REQUIRED-COM-SPECS"),
          inside("Info", "NV-DATA-PORT-ANNOTATIONS")));
}

constexpr auto shape(Is<NvDataPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<NvDataReceiverPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<NvDataSenderPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<NvDataReceiverPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          inside ("InitValue", "INIT-VALUE"),
          nowhere("InitialValue", "the same value as InitValue, which the file has")));
}

constexpr auto shape(Is<NvDataSenderPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          inside ("InitValue",    "RAM-BLOCK-INIT-VALUE"),
          inside ("InitValueROM", "ROM-BLOCK-INIT-VALUE"),
          nowhere("InitialValue",    "the same value as InitValue, which the file has"),
          nowhere("InitialValueROM", "the same value as InitValueROM, which the file has")));
}

constexpr auto shape(Is<NvDataReceiverPortInfo>) {
  return shapeOf(
      elements(
          element("NV-REQUIRE-COM-SPEC")    .with<NvDataReceiverPortComSpec>   ("ComSpec"),
          element("NV-DATA-PORT-ANNOTATION").with<NvDataReceiverPortAnnotation>("Annotation")),
      places(
          inlined("ComSpec"),
          inlined("Annotation")));
}

constexpr auto shape(Is<NvDataSenderPortInfo>) {
  return shapeOf(
      elements(
          element("NV-PROVIDE-COM-SPEC")    .with<NvDataSenderPortComSpec>   ("ComSpec"),
          element("NV-DATA-PORT-ANNOTATION").with<NvDataSenderPortAnnotation>("Annotation")),
      places(
          inlined("ComSpec"),
          inlined("Annotation")));
}

constexpr auto shape(Is<NvDataSenderReceiverPortInfo>) {
  return shapeOf(
      noElement("an info that has neither a com spec nor an annotation has no element in files"),
      places(
          reference("DataElements", "VARIABLE-REF")));
}

// Annotations do not stand here: at a port of both directions an NV-DATA-PORT-ANNOTATION does not say whether
// it is one of the sender or of the receiver.
constexpr auto shape(Is<NvDataSenderReceiverPort>) {
  return shapeOf(
      elements(element("PR-PORT-PROTOTYPE").ifDest("PROVIDED-REQUIRED-INTERFACE-TREF", "NV-DATA-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "REQUIRED-COM-SPECS")));
}

constexpr auto shape(Is<ModeSenderPort>) {
  return shapeOf(
      elements(element("P-PORT-PROTOTYPE").ifDest("PROVIDED-INTERFACE-TREF", "MODE-SWITCH-INTERFACE")),
      places(
          nowhere("Info", "an info has nothing but its mode group, and no file has that")));
}

constexpr auto shape(Is<ModeSenderPortInfo>) {
  return shapeOf(
      noElement("an info has nothing but its mode group, and no file has that"),
      places());
}

constexpr auto shape(Is<TriggerReceiverPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "TRIGGER-INTERFACE")),
      places(
          inside("Info", "TRIGGER-PORT-ANNOTATIONS")));
}

constexpr auto shape(Is<TriggerReceiverPortInfo>) {
  return shapeOf(
      elements(element("TRIGGER-PORT-ANNOTATION").with<TriggerReceiverPortAnnotation>("Annotation")),
      places(
          nowhere("DataElements", "TRIGGER-REF refers to a trigger, and a trigger is no data element"),
          inlined("Annotation")));
}

constexpr auto shape(Is<TriggerReceiverPortAnnotation>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ServiceProvidedPort>) {
  return shapeOf(
      elements(element("P-PORT-PROTOTYPE").ifDest("PROVIDED-INTERFACE-TREF", "SERVICE-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS"),
          inside("Info", "SENDER-RECEIVER-ANNOTATIONS"),
          inside("Info", "CLIENT-SERVER-ANNOTATIONS")));
}

constexpr auto shape(Is<ServiceRequiredPort>) {
  return shapeOf(
      elements(element("R-PORT-PROTOTYPE").ifDest("REQUIRED-INTERFACE-TREF", "SERVICE-INTERFACE")),
      places(
          inside("Info", "REQUIRED-COM-SPECS"),
          inside("Info", "SENDER-RECEIVER-ANNOTATIONS"),
          inside("Info", "CLIENT-SERVER-ANNOTATIONS")));
}

constexpr auto shape(Is<ServiceReceiverPortInfo>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<ServiceProviderPortInfo>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<AdaptivePort>) {
  return shapeOf(
      noElement(),
      places());
}

constexpr auto shape(Is<PersistencyRequiredPort>) {
  return shapeOf(
      elements(
          element("R-PORT-PROTOTYPE")
              .ifDest("REQUIRED-INTERFACE-TREF", "PERSISTENCY-KEY-VALUE-STORAGE-INTERFACE"),
          element("R-PORT-PROTOTYPE")
              .ifDest("REQUIRED-INTERFACE-TREF", "PERSISTENCY-KEY-VALUE-DATABASE-INTERFACE")),
      places(
          inside("Info", "REQUIRED-COM-SPECS")));
}

constexpr auto shape(Is<PersistencyProvidedPort>) {
  return shapeOf(
      elements(
          element("P-PORT-PROTOTYPE")
              .ifDest("PROVIDED-INTERFACE-TREF", "PERSISTENCY-KEY-VALUE-STORAGE-INTERFACE"),
          element("P-PORT-PROTOTYPE")
              .ifDest("PROVIDED-INTERFACE-TREF", "PERSISTENCY-KEY-VALUE-DATABASE-INTERFACE")),
      places(
          inside("Info", "PROVIDED-COM-SPECS")));
}

constexpr auto shape(Is<PersistencyReceiverPortInfo>) {
  return shapeOf(
      elements(element("PERSISTENCY-DATA-REQUIRED-COM-SPEC").with<PersistencyReceiverPortComSpec>("ComSpec")),
      places(
          inlined("ComSpec")));
}

constexpr auto shape(Is<PersistencyProvidedPortInfo>) {
  return shapeOf(
      elements(element("PERSISTENCY-DATA-PROVIDED-COM-SPEC").with<PersistencyProvidedPortComSpec>("ComSpec")),
      places(
          inlined("ComSpec")));
}

constexpr auto shape(Is<PersistencyProvidedRequiredPortInfo>) {
  return shapeOf(
      noElement("an info that has no com spec has no element in files"),
      places());
}

constexpr auto shape(Is<PersistencyProvidedPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          inside ("InitValue", "INIT-VALUE"),
          nowhere("InitialValue", "the same value as InitValue, which the file has")));
}

constexpr auto shape(Is<PersistencyReceiverPortComSpec>) {
  return shapeOf(
      noElement(),
      places(
          inside ("InitValue", "INIT-VALUE"),
          nowhere("InitialValue", "the same value as InitValue, which the file has")));
}

constexpr auto shape(Is<PersistencyProvidedRequiredPort>) {
  return shapeOf(
      elements(
          element("PR-PORT-PROTOTYPE")
              .ifDest("PROVIDED-REQUIRED-INTERFACE-TREF", "PERSISTENCY-KEY-VALUE-STORAGE-INTERFACE"),
          element("PR-PORT-PROTOTYPE")
              .ifDest("PROVIDED-REQUIRED-INTERFACE-TREF", "PERSISTENCY-KEY-VALUE-DATABASE-INTERFACE")),
      places(
          reference("Type", "PROVIDED-REQUIRED-INTERFACE-TREF"),
          inside   ("Info", "PROVIDED-COM-SPECS"),
          inside   ("Info", "REQUIRED-COM-SPECS")));
}

constexpr auto shape(Is<AdaptiveRequiredPort>) {
  return shapeOf(
      noElement(),
      places(
          reference("Type", "REQUIRED-INTERFACE-TREF")));
}

constexpr auto shape(Is<AdaptiveProvidedPort>) {
  return shapeOf(
      noElement(),
      places(
          reference("Type", "PROVIDED-INTERFACE-TREF")));
}

}  // namespace Tarvelon::metamodel::arplatform::port
// clang-format on
