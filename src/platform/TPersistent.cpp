#include "TPersistent.h"

#include "SysUtils.h"

TPersistent::~TPersistent() = default;

void TPersistent::Assign(TPersistent* source) {
    if (source)
        source->AssignTo(this);
    else
        AssignError(nullptr);
}

void TPersistent::AssignTo(TPersistent* dest) {
    dest->AssignError(this);
}

void TPersistent::AssignError(TPersistent* source) {
    const QString from = source ? source->ClassName() : QStringLiteral("nil");
    throw EConvertError(QStringLiteral("Cannot assign a %1 to a %2").arg(from, ClassName()));
}
