// Prints qxtGetAppVersion() from a program that never creates an application object.
#include "QxutilVersion.h"

#include <cstdio>

int main() {
    std::puts(qxtGetAppVersion().toUtf8().constData());
    return 0;
}
