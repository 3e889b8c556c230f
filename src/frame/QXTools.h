#pragma once

// Registration of the package with the design environment.

#include "QXExport.h"

#include <QString>
#include <array>

// The palette page of the package.
inline constexpr const char* QXPalettePage = "QX Tools";

// The classes the central registration puts on the palette, in this order. Classes that are
// not part of the build are left out; the rest keep their order.
inline constexpr std::array<const char*, 31> QXCentralPaletteOrder = {
    "TQXAnimate",   "TQXPicClip", "TQXScrollText", "TQXStars",    "TQXBounce",  "TQX3D",
    "TQXWAV",       "TQXGauge",   "TQXLCDPanel",   "TQXDOTPanel", "TQX3dLabel", "TQXPanel",
    "TQXPicBox",    "TQXIcoBox",  "TQXFontCombo",  "TQXDriveTab", "TQXBiBtn",   "TQXAutoButton",
    "TQXBlinker",   "TQXGrabBar", "TQXApp",        "TQXCopy",     "TQXFind",    "TQXForm",
    "TQXFillImage", "TQXFxImage", "TQXHint",       "TQXINI",      "TQXPrinter", "TQXDirList",
    "TQXImage"};

// One property-editor registration of the central procedure.
struct TQXEditorRow {
    // The type name the editor is registered for.
    const char* PropertyType;
    const char* ComponentClass; // "" for every class
    // The property edited.
    const char* PropertyName;
    // The editor's class name in the catalogue.
    const char* EditorClass;
};

// The central property-editor registrations, in this order; rows whose editor or component
// class is not part of the build are left out.
inline constexpr std::array<TQXEditorRow, 7> QXPropertyEditorOrder = {{
    {"TQXAboutString", "", "About_QXTools", "TQXAboutProperty"},
    {"TBitmap", "TQXAnimate", "Picture", "TQXAnimProperty"},
    {"TQXFillStyle", "TQXForm", "FillStyle", "TQXFillStyleProperty"},
    {"string", "TQXWAV", "Filename", "TWaveFileProperty"},
    {"string", "TQXIcoBox", "IconFilename", "TIcoFileProperty"},
    {"string", "TQXPicBox", "PicPattern", "TPicPatternProperty"},
    {"string", "TControl", "Hint", "THintProperty"},
}};

namespace QXTools {
// Puts the package's components on the "QX Tools" page and registers the property editors.
QXT_EXPORT void Register();
} // namespace QXTools

// Registers one class on a page by its catalogue name (the modules' own procedures use it);
// does nothing when the class is not part of the build.
QXT_EXPORT void QXRegisterOne(const QString& page, const char* className);
