#pragma once

#include <QImage>
#include <QString>
#include <QWidget>
#include <gtest/gtest.h>

namespace qxtest {

// The control painted into an image of its current size (magenta where nothing is drawn).
QImage renderControl(QWidget& control);

// Paints the control until a paint leaves its size alone (controls that size themselves while
// painting), then returns the last picture.
QImage renderSettled(QWidget& control);

// Compares the picture pixel for pixel with golden/<name>.png in this test directory. With
// QX_UPDATE_GOLDEN=1 in the environment the picture is written there instead.
::testing::AssertionResult matchesGolden(const QImage& image, const QString& name);

} // namespace qxtest
