#pragma once

// INI settings helpers: values, window placement, fonts, view styles.

#include "QXExport.h"
