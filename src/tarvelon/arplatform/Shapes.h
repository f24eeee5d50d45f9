#pragma once

// The shapes of all classes, and the releases of the format.
#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/arplatform/behavior/Shapes.h"
#include "tarvelon/arplatform/common/Shapes.h"
#include "tarvelon/arplatform/component/Shapes.h"
#include "tarvelon/arplatform/composition/Shapes.h"
#include "tarvelon/arplatform/documentation/Shapes.h"
#include "tarvelon/arplatform/ecuc/Shapes.h"
#include "tarvelon/arplatform/instance/Shapes.h"
#include "tarvelon/arplatform/interface/Shapes.h"
#include "tarvelon/arplatform/manifest/Shapes.h"
#include "tarvelon/arplatform/port/Shapes.h"
#include "tarvelon/arplatform/system/Shapes.h"
#include "tarvelon/arplatform/timingExtension/Shapes.h"
#include "tarvelon/arplatform/variant/Shapes.h"
#include "tarvelon/boundary/tarvelon/Shapes.h"

// clang-format off
namespace Tarvelon::metamodel::arplatform {

/// All releases whose files are read and written, oldest first.
inline constexpr ReleaseRow kReleases[] = {
    { 1, "4.0.1",  "AUTOSAR_4-0-1.xsd", ""},
    { 2, "4.0.2",  "AUTOSAR_4-0-2.xsd", ""},
    { 3, "4.0.3",  "AUTOSAR_4-0-3.xsd", ""},
    { 4, "4.1.1",  "AUTOSAR_4-1-1.xsd", ""},
    { 5, "4.1.2",  "AUTOSAR_4-1-2.xsd", ""},
    { 6, "4.1.3",  "AUTOSAR_4-1-3.xsd", ""},
    { 7, "4.2.1",  "AUTOSAR_4-2-1.xsd", ""},
    { 8, "4.2.2",  "AUTOSAR_4-2-2.xsd", ""},
    { 9, "4.3.0",  "AUTOSAR_4-3-0.xsd", ""},
    {10, "R17-03", "AUTOSAR_00042.xsd", "17-03"},
    {11, "R17-10", "AUTOSAR_00043.xsd", "17-10"},
    {12, "4.3.1",  "AUTOSAR_00044.xsd", "AUTOSAR_4-3-1.xsd"},
    {13, "R18-03", "AUTOSAR_00045.xsd", "18-03"},
    {14, "4.4.0",  "AUTOSAR_00046.xsd", "AUTOSAR_4-4-0.xsd R18-10 18-10"},
    {15, "R19-03", "AUTOSAR_00047.xsd", "19-03"},
    {16, "R19-11", "AUTOSAR_00048.xsd", "AUTOSAR_4-5-0.xsd 4.5.0 19-11"},
    {17, "R20-11", "AUTOSAR_00049.xsd", "20-11"},
    {18, "R21-11", "AUTOSAR_00050.xsd", "21-11"},
    {19, "R22-11", "AUTOSAR_00051.xsd", "22-11"},
    {20, "R23-11", "AUTOSAR_00052.xsd", "23-11"},
    {21, "R24-11", "AUTOSAR_00053.xsd", "24-11"},
    {22, "R25-11", "AUTOSAR_00054.xsd", "25-11"},
};

/// The release in which a new model is saved.
inline constexpr unsigned kUsualRelease = 19;

}  // namespace Tarvelon::metamodel::arplatform
// clang-format on
