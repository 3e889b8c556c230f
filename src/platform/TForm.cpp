#include "TForm.h"

TWindowState FormWindowState(const TForm* form) {
    const Qt::WindowStates s = form->windowState();
    if (s & Qt::WindowMinimized)
        return wsMinimized;
    if (s & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return wsMaximized;
    return wsNormal;
}

void SetFormWindowState(TForm* form, TWindowState state) {
    Qt::WindowStates s =
        form->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen);
    if (state == wsMinimized)
        s |= Qt::WindowMinimized;
    else if (state == wsMaximized)
        s |= Qt::WindowMaximized;
    form->setWindowState(s);
}
