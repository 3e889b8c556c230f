#pragma once

// Public classes and functions of libQXTpack carry QXT_EXPORT; everything else stays hidden.
#if defined(QXT_BUILD_LIBRARY)
#define QXT_EXPORT __attribute__((visibility("default")))
#else
#define QXT_EXPORT
#endif
