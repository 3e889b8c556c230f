#pragma once

// Small editors the gallery sections share.

#include "TColor.h"

#include <QString>
#include <functional>

class QPushButton;
class QSpinBox;

namespace qxdemo {

// A button showing a colour; clicking it chooses another, starting from the one shown.
QPushButton* colourButton(const QString& text, TColor initial, std::function<void(TColor)> set);

// A spin box from low to high at value, its number after prefix.
QSpinBox* spin(const QString& prefix, int low, int high, int value);

} // namespace qxdemo
