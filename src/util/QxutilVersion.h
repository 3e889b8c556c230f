#pragma once

// Version information and resources of files.

#include "QXExport.h"
