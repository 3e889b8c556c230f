#pragma once

// String, number and drawing helpers.

#include "QXExport.h"
