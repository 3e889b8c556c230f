#pragma once

#include "QXExport.h"

#include <QString>

// The framework's assignable object: Assign asks the source to copy itself into this object
// (AssignTo), which fails with EConvertError "Cannot assign a X to a Y" unless a class knows how.
class QXT_EXPORT TPersistent {
public:
    // Frees the object.
    virtual ~TPersistent();
    // Copies source; by default asks source's AssignTo, which raises EConvertError.
    virtual void Assign(TPersistent* source);
    // The class name as user code spells it ("TBitmap").
    virtual QString ClassName() const = 0;

protected:
    // Copies this object into dest; by default raises EConvertError.
    virtual void AssignTo(TPersistent* dest);
    // Raises EConvertError "Cannot assign a X to a Y".
    [[noreturn]] void AssignError(TPersistent* source);
};
