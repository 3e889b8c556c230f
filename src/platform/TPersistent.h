#pragma once

#include "QXExport.h"

#include <QString>

// The framework's assignable object: Assign asks the source to copy itself into this object
// (AssignTo), which fails with EConvertError "Cannot assign a X to a Y" unless a class knows how.
class QXT_EXPORT TPersistent {
public:
    virtual ~TPersistent();
    virtual void Assign(TPersistent* source);
    // The class name as user code spells it ("TBitmap").
    virtual QString ClassName() const = 0;

protected:
    virtual void AssignTo(TPersistent* dest);
    [[noreturn]] void AssignError(TPersistent* source);
};
