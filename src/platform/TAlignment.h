#pragma once

#include "QXExport.h"
#include "TCanvas.h"

#include <QObject>

// Known to Qt's meta-object system so Designer offers the values.
namespace TAlignmentEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// Where text lines up between the left and the right edge.
enum TAlignment { taLeftJustify, taRightJustify, taCenter };
Q_ENUM_NS(TAlignment)

} // namespace TAlignmentEnums

using TAlignment = TAlignmentEnums::TAlignment;
using enum TAlignmentEnums::TAlignment;

// The DrawText flag that lines text up as the alignment says.
constexpr unsigned AlignmentFlag(TAlignment a) {
    return a == taRightJustify ? DT_RIGHT : a == taCenter ? DT_CENTER : DT_LEFT;
}
