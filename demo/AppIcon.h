#pragma once

#include <QIcon>

namespace qxdemo {

// The gallery's window icon: a small level meter on a navy tile, drawn for each usual size.
QIcon galleryIcon();

} // namespace qxdemo
