#pragma once

// The qxt function library: include this one header for all of it.

#include "QxutilFiles.h"
#include "QxutilPictures.h"
#include "QxutilSettings.h"
#include "QxutilSound.h"
#include "QxutilSysStat.h"
#include "QxutilSystem.h"
#include "QxutilText.h"
#include "QxutilVersion.h"
