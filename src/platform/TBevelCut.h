#pragma once

#include "QXExport.h"

#include <QObject>

// Known to Qt's meta-object system so Designer offers the values.
namespace TBevelEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// How a bevel or frame is cut into its surface.
enum TBevelCut { bvNone, bvLowered, bvRaised, bvSpace };
Q_ENUM_NS(TBevelCut)

} // namespace TBevelEnums

using TBevelCut = TBevelEnums::TBevelCut;
using enum TBevelEnums::TBevelCut;
