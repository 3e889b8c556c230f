#pragma once

// File, directory, path, drive and volume functions.

#include "QXExport.h"
