#pragma once

// Program launching, windows of other programs and system information.

#include "QXExport.h"
