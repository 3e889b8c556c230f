#pragma once

// File, directory, path, drive and volume functions.

#include "QXExport.h"

#include <QString>

// The configuration directory ($XDG_CONFIG_HOME, else ~/.config/), where bare INI file names
// live; ends in "/".
QXT_EXPORT QString qxtWinDir();
// The system library directory "/usr/lib/".
QXT_EXPORT QString qxtSysDir();
// The directory for temporary files, ending in "/".
QXT_EXPORT QString qxtTMPDir();
